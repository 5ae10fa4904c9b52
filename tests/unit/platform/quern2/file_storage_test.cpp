#include <quern2/storage.h>

#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <log4cplus/loglevel.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using korvat2::sptr_t;
using korvat2::variant_bag_t;
using korvat2::variant_t;
using quern2::IGlobalStorage;
using quern2::IPropertyStorage;
using quern2::makeFileStorage;
using test_support::read_bytes;
using test_support::temp_dir_t;
using test_support::write_bytes;

variant_bag_t sample_bag() {
  variant_bag_t bag;
  bag.put("text", variant_t("Grüße"));
  bag.put("number", variant_t(-42));
  bag.put("flag", variant_t(true));
  bag.put("wide", variant_t(std::u16string(u"wide ü")));
  variant_bag_t item;
  item.put("path", variant_t("/usr/bin/vi"));
  bag.add_variant_bag("item", item);
  item.put("path", variant_t("/usr/bin/emacs"));
  bag.add_variant_bag("item", item);
  return bag;
}

variant_bag_t bag_of(const char* name, const variant_t& value) {
  variant_bag_t bag;
  bag.put(name, value);
  return bag;
}

// A file storage in a private folder, removed after each test.
class file_storage_test : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(m_dir.path().empty());
    m_storage = makeFileStorage(korvat2::path_t(m_root.string()));
    ASSERT_TRUE(m_storage);
  }
  void TearDown() override { m_storage.reset(); }

  temp_dir_t m_dir;
  const fs::path m_root{m_dir.path()};
  sptr_t<IGlobalStorage> m_storage;
};

TEST_F(file_storage_test, written_bag_reads_back) {
  const variant_bag_t bag = sample_bag();
  ASSERT_TRUE(m_storage->writeBag("settings", bag).succeeded());
  const variant_bag_t read = m_storage->readBag("settings", variant_bag_t());
  EXPECT_EQ(read, bag);
  EXPECT_EQ(read.get<variant_t>("text")->get<std::string>(), "Grüße");
  EXPECT_EQ(read.get<variant_t>("number")->get<int>(), -42);
  EXPECT_TRUE(read.get<variant_t>("flag")->get<bool>());
  auto items = read.begin_by_name<variant_bag_t>("item");
  ASSERT_FALSE(items.at_end());
  EXPECT_EQ(items.get_value().get<variant_t>("path")->get<std::string>(), "/usr/bin/vi");
  items.next();
  ASSERT_FALSE(items.at_end());
  EXPECT_EQ(items.get_value().get<variant_t>("path")->get<std::string>(), "/usr/bin/emacs");
}

TEST_F(file_storage_test, bag_is_one_file_named_after_its_key) {
  ASSERT_TRUE(m_storage->writeBag("settings", bag_of("a", 1)).succeeded());
  EXPECT_EQ(m_dir.names(), std::set<std::string>{"settings.bag"});
}

TEST_F(file_storage_test, empty_bag_round_trip) {
  ASSERT_TRUE(m_storage->writeBag("empty", variant_bag_t()).succeeded());
  EXPECT_TRUE(m_storage->hasBag("empty"));
  EXPECT_EQ(m_storage->readBag("empty", bag_of("default", 1)), variant_bag_t());
}

TEST_F(file_storage_test, missing_key_gives_the_default_without_a_warning) {
  test_support::log_capture_t capture;
  const variant_bag_t fallback = bag_of("default", "yes");
  EXPECT_FALSE(m_storage->hasBag("nothing"));
  EXPECT_EQ(m_storage->readBag("nothing", fallback), fallback);
  EXPECT_EQ(m_storage->readBag("nothing", variant_bag_t()), variant_bag_t());
  EXPECT_TRUE(capture.lines().empty());
}

TEST_F(file_storage_test, missing_folder_gives_the_default) {
  const auto storage = makeFileStorage(korvat2::path_t((m_root / "not" / "made").string()));
  EXPECT_FALSE(storage->hasBag("k"));
  EXPECT_EQ(storage->readBag("k", bag_of("d", 1)), bag_of("d", 1));
  EXPECT_FALSE(fs::exists(m_root / "not"));  // reading makes no folder
}

TEST_F(file_storage_test, writing_replaces_the_whole_bag) {
  variant_bag_t first;
  first.put("a", variant_t(1));
  first.put("b", variant_t(2));
  ASSERT_TRUE(m_storage->writeBag("k", first).succeeded());
  ASSERT_TRUE(m_storage->writeBag("k", bag_of("c", 3)).succeeded());
  EXPECT_EQ(m_storage->readBag("k", variant_bag_t()), bag_of("c", 3));
  EXPECT_EQ(m_dir.names(), std::set<std::string>{"k.bag"});  // no temporary left behind
}

TEST_F(file_storage_test, has_bag_after_writing) {
  EXPECT_FALSE(m_storage->hasBag("k"));
  ASSERT_TRUE(m_storage->writeBag("k", bag_of("a", 1)).succeeded());
  EXPECT_TRUE(m_storage->hasBag("k"));
  EXPECT_FALSE(m_storage->hasBag("K"));
}

TEST_F(file_storage_test, corrupt_bag_file_gives_the_default_and_stays_as_it_was) {
  const fs::path file = m_root / "broken.bag";
  const std::string garbage = "this is <not> a bag file \x01\x02\xFF";
  write_bytes(file, garbage);
  test_support::log_capture_t capture;
  const variant_bag_t fallback = bag_of("default", 7);
  EXPECT_EQ(m_storage->readBag("broken", fallback), fallback);
  EXPECT_EQ(read_bytes(file), garbage);
  EXPECT_TRUE(m_storage->hasBag("broken"));
  bool warned = false;
  for (const auto& line : capture.lines()) {
    warned = warned ||
             (line.level == log4cplus::WARN_LOG_LEVEL && line.text.find(file.string()) != std::string::npos);
  }
  EXPECT_TRUE(warned);
}

TEST_F(file_storage_test, truncated_bag_file_gives_the_default_and_stays_as_it_was) {
  ASSERT_TRUE(m_storage->writeBag("cut", sample_bag()).succeeded());
  const fs::path file = m_root / "cut.bag";
  const std::string whole = read_bytes(file);
  ASSERT_GT(whole.size(), 10u);
  const std::string half = whole.substr(0, whole.size() / 2);
  write_bytes(file, half);
  test_support::log_capture_t capture;
  EXPECT_EQ(m_storage->readBag("cut", bag_of("d", 1)), bag_of("d", 1));
  EXPECT_EQ(read_bytes(file), half);
}

TEST_F(file_storage_test, empty_bag_file_gives_the_default) {
  write_bytes(m_root / "zero.bag", "");
  test_support::log_capture_t capture;
  EXPECT_EQ(m_storage->readBag("zero", bag_of("d", 1)), bag_of("d", 1));
  EXPECT_EQ(read_bytes(m_root / "zero.bag"), "");
}

TEST_F(file_storage_test, corrupt_file_can_be_overwritten) {
  write_bytes(m_root / "mend.bag", "garbage");
  ASSERT_TRUE(m_storage->writeBag("mend", bag_of("ok", true)).succeeded());
  EXPECT_EQ(m_storage->readBag("mend", variant_bag_t()), bag_of("ok", true));
}

TEST_F(file_storage_test, child_storage_is_a_subfolder_made_when_first_written) {
  sptr_t<IPropertyStorage> child = m_storage->getChild("editors");
  ASSERT_TRUE(child);
  EXPECT_FALSE(fs::exists(m_root / "editors"));
  ASSERT_TRUE(child->writeBag("list", bag_of("count", 2)).succeeded());
  EXPECT_TRUE(fs::is_directory(m_root / "editors"));
  EXPECT_TRUE(fs::is_regular_file(m_root / "editors" / "list.bag"));
  EXPECT_FALSE(m_storage->hasBag("list"));
  EXPECT_EQ(m_storage->getChild("editors")->readBag("list", variant_bag_t()), bag_of("count", 2));
}

TEST_F(file_storage_test, grandchildren_nest_and_make_every_folder) {
  sptr_t<IPropertyStorage> deep = m_storage->getChild("a")->getChild("b")->getChild("c");
  ASSERT_TRUE(deep);
  ASSERT_TRUE(deep->writeBag("k", bag_of("x", 1)).succeeded());
  EXPECT_TRUE(fs::is_regular_file(m_root / "a" / "b" / "c" / "k.bag"));
}

TEST_F(file_storage_test, storage_in_a_folder_not_yet_made_makes_it_when_written) {
  const auto storage = makeFileStorage(korvat2::path_t((m_root / "x" / "y").string()));
  ASSERT_TRUE(storage->writeBag("k", bag_of("v", 1)).succeeded());
  EXPECT_TRUE(fs::is_regular_file(m_root / "x" / "y" / "k.bag"));
}

TEST_F(file_storage_test, child_and_key_of_the_same_name_do_not_meet) {
  ASSERT_TRUE(m_storage->writeBag("same", bag_of("as", "key")).succeeded());
  ASSERT_TRUE(m_storage->getChild("same")->writeBag("same", bag_of("as", "child")).succeeded());
  EXPECT_EQ(m_storage->readBag("same", variant_bag_t()), bag_of("as", "key"));
  EXPECT_EQ(m_storage->getChild("same")->readBag("same", variant_bag_t()), bag_of("as", "child"));
}

TEST_F(file_storage_test, child_with_an_empty_name_is_null) { EXPECT_FALSE(m_storage->getChild("")); }

TEST_F(file_storage_test, child_names_with_odd_characters_stay_one_folder_each) {
  const std::vector<std::string> names = {"a/b", "..", ".", "a b", "ü", "a.b"};
  for (const std::string& name : names) {
    sptr_t<IPropertyStorage> child = m_storage->getChild(name);
    ASSERT_TRUE(child) << name;
    ASSERT_TRUE(child->writeBag("k", bag_of("name", name)).succeeded()) << name;
  }
  EXPECT_EQ(m_dir.names().size(), names.size());
  for (const auto& entry : fs::directory_iterator(m_root)) {
    EXPECT_TRUE(entry.is_directory()) << entry.path();
  }
  for (const std::string& name : names) {
    EXPECT_EQ(m_storage->getChild(name)->readBag("k", variant_bag_t()), bag_of("name", name)) << name;
  }
  EXPECT_FALSE(fs::exists(m_root / "a" / "b"));
}

TEST_F(file_storage_test, keys_with_odd_characters_map_to_distinct_files_in_the_folder) {
  const std::vector<std::string> keys = {".",   "..",  "/",     "a/b", "../escape", "a b",  "a.b",
                                         "a_b", "a-b", "a%2Eb", "ü",   "u",         "日本", "tab\there",
                                         "A",   "a",   "a\\b",  "*?",  "%",         "a:b"};
  for (std::size_t i = 0; i < keys.size(); ++i) {
    ASSERT_TRUE(m_storage->writeBag(keys[i], bag_of("index", static_cast<int>(i))).succeeded()) << keys[i];
  }
  // One plain file per key, all in the storage's own folder.
  const std::set<std::string> names = m_dir.names();
  EXPECT_EQ(names.size(), keys.size());
  for (const auto& entry : fs::directory_iterator(m_root)) {
    EXPECT_TRUE(entry.is_regular_file()) << entry.path();
  }
  EXPECT_FALSE(fs::exists(m_root.parent_path() / "escape.bag"));
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_TRUE(m_storage->hasBag(keys[i])) << keys[i];
    EXPECT_EQ(m_storage->readBag(keys[i], variant_bag_t()), bag_of("index", static_cast<int>(i))) << keys[i];
  }
}

TEST_F(file_storage_test, file_names_escape_all_but_letters_digits_dash_and_underscore) {
  const std::vector<std::pair<std::string, std::string>> expected = {{"Plain-Key_9", "Plain-Key_9.bag"},
                                                                     {"a b", "a%20b.bag"},
                                                                     {".", "%2E.bag"},
                                                                     {"a/b", "a%2Fb.bag"},
                                                                     {"ü", "%C3%BC.bag"},
                                                                     {"%", "%25.bag"}};
  for (const auto& [key, file] : expected) {
    ASSERT_TRUE(m_storage->writeBag(key, bag_of("k", 1)).succeeded()) << key;
    EXPECT_TRUE(fs::is_regular_file(m_root / file)) << key << " -> " << file;
  }
  ASSERT_TRUE(m_storage->getChild("x y")->writeBag("k", bag_of("k", 1)).succeeded());
  EXPECT_TRUE(fs::is_directory(m_root / "x%20y"));
}

std::string repeated(const std::string& part, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += part;
  }
  return text;
}

const char* const cjk = "\xE6\x97\xA5";  // three bytes, nine when escaped

// Any text is a key: one whose escaped name would pass the longest file name gets a shortened
// name with a hash of the whole key.
TEST_F(file_storage_test, long_keys_round_trip_each_in_a_file_of_its_own) {
  const std::vector<std::string> keys = {repeated("!", 82),        repeated("!", 83),
                                         repeated("!", 90),        repeated(cjk, 27),
                                         repeated(cjk, 28),        repeated(cjk, 1000),
                                         std::string(251, 'a'),    std::string(252, 'a'),
                                         std::string(5000, 'a'),   std::string(5000, 'a') + "b",
                                         repeated("!", 200) + "x", repeated("!", 200) + "y"};
  for (std::size_t i = 0; i < keys.size(); ++i) {
    ASSERT_TRUE(m_storage->writeBag(keys[i], bag_of("index", static_cast<int>(i))).succeeded()) << i;
  }
  EXPECT_EQ(m_dir.names().size(), keys.size());
  for (const std::string& name : m_dir.names()) {
    EXPECT_LE(name.size(), 255u) << name;
  }
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_TRUE(m_storage->hasBag(keys[i])) << i;
    EXPECT_EQ(m_storage->readBag(keys[i], variant_bag_t()), bag_of("index", static_cast<int>(i))) << i;
  }
  const std::string unwritten = repeated("!", 200) + "z";
  EXPECT_FALSE(m_storage->hasBag(unwritten));
  EXPECT_EQ(m_storage->readBag(unwritten, bag_of("d", 1)), bag_of("d", 1));
}

// Names that fitted before keep their files: what older runs stored is still found.
TEST_F(file_storage_test, keys_whose_escaped_name_fits_keep_the_plain_file_name) {
  const std::string key = repeated("!", 82) + "a";  // 247 characters escaped
  write_bytes(m_root / (repeated("%21", 82) + "a.bag"),
              "<bag version=\"1\"><value name=\"v\" kind=\"int\">7</value></bag>");
  EXPECT_TRUE(m_storage->hasBag(key));
  EXPECT_EQ(m_storage->readBag(key, variant_bag_t()), bag_of("v", 7));
  const std::string longest(251, 'k');
  ASSERT_TRUE(m_storage->writeBag(longest, bag_of("v", 8)).succeeded());
  EXPECT_TRUE(fs::is_regular_file(m_root / (longest + ".bag")));
}

TEST_F(file_storage_test, long_child_names_make_folders_of_their_own) {
  const std::vector<std::string> names = {std::string(255, 'c'), std::string(256, 'c'), repeated(cjk, 200),
                                          repeated(cjk, 201)};
  for (std::size_t i = 0; i < names.size(); ++i) {
    ASSERT_TRUE(
        m_storage->getChild(names[i])->writeBag("k", bag_of("index", static_cast<int>(i))).succeeded())
        << i;
  }
  EXPECT_TRUE(fs::is_directory(m_root / names[0]));  // a name that fitted stays as it was
  EXPECT_EQ(m_dir.names().size(), names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(m_storage->getChild(names[i])->readBag("k", variant_bag_t()),
              bag_of("index", static_cast<int>(i)))
        << i;
  }
}

TEST_F(file_storage_test, a_folder_in_place_of_a_bag_file_is_no_bag) {
  fs::create_directory(m_root / "k.bag");
  EXPECT_FALSE(m_storage->hasBag("k"));
  EXPECT_EQ(m_storage->readBag("k", bag_of("d", 1)), bag_of("d", 1));
}

TEST_F(file_storage_test, two_storages_of_one_folder_share_their_bags) {
  const auto other = makeFileStorage(korvat2::path_t(m_root.string()));
  ASSERT_TRUE(m_storage->writeBag("shared", bag_of("v", 3)).succeeded());
  EXPECT_TRUE(other->hasBag("shared"));
  EXPECT_EQ(other->readBag("shared", variant_bag_t()), bag_of("v", 3));
}

TEST_F(file_storage_test, writing_where_no_folder_can_be_made_fails) {
  write_bytes(m_root / "plain_file", "x");
  const std::string below = (m_root / "plain_file" / "sub").string();
  const auto below_a_file = makeFileStorage(korvat2::path_t(below));
  const test_support::log_capture_t capture;
  EXPECT_TRUE(below_a_file->writeBag("k", bag_of("v", 1)).failed());
  EXPECT_EQ(capture.count(log4cplus::ERROR_LOG_LEVEL, "cannot write " + below + "/k.bag: folder " + below +
                                                          ": " + std::strerror(ENOTDIR)),
            1u);
  const auto at_a_file = makeFileStorage(korvat2::path_t((m_root / "plain_file").string()));
  EXPECT_TRUE(at_a_file->writeBag("k", bag_of("v", 1)).failed());
  EXPECT_EQ(read_bytes(m_root / "plain_file"), "x");
}

TEST_F(file_storage_test, child_keeps_working_after_its_parent_is_gone) {
  sptr_t<IPropertyStorage> child = m_storage->getChild("orphan");
  m_storage.reset();
  ASSERT_TRUE(child->writeBag("k", bag_of("v", 1)).succeeded());
  EXPECT_EQ(child->readBag("k", variant_bag_t()), bag_of("v", 1));
}

}  // namespace
