#include <HALLIN_2_13/search_dir_container.h>

#include <korvat2/bag_file.h>
#include <korvat2/variant_bag.h>

#include "fixtures.h"
#include "log_capture.h"
#include "refusing_search_dir_container.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

namespace {

using HALLIN_2_13::ObjectPtr;
using HALLIN_2_13::search_category_t;
using HALLIN_2_13::search_dir_container_t;
using korvat2::error_code_t;
using korvat2::_internal::save_step_t;
using test_support::read_bytes;
using test_support::temp_dir_t;
using entries_t = std::vector<search_dir_container_t::entry_t>;

constexpr search_category_t binaries = HALLIN_2_13::search_category_binaries;
constexpr search_category_t symbols = HALLIN_2_13::search_category_symbols;
constexpr search_category_t sources = HALLIN_2_13::search_category_sources;
constexpr search_category_t other = HALLIN_2_13::search_category_other;
constexpr int error_level = 40000;

// Every category, both flags either way, and texts that a file format could trip over.
void fill(search_dir_container_t& container) {
  container.add_search_dir(binaries, "/usr/lib", true, true);
  container.add_search_dir(binaries, "/opt/app/bin/*", false, true);
  container.add_search_dir(symbols, "/usr/lib/debug", true, false);
  container.add_search_dir(sources, "/home/u/src <&> \"q\" 'a'", false, false);
  container.add_search_dir(sources, " /lead and trail ", true, true);
  container.add_search_dir(sources,
                           "/home/u/Gr\xC3\xBC\xC3\x9F"
                           "e/*/src",
                           false, true);
  container.add_search_dir(sources, "relative/dir", true, false);
  container.add_search_dir(sources, "/usr/lib", true, true);
}

// All four lists, for comparisons of a whole container.
std::vector<entries_t> contents(const search_dir_container_t& container) {
  return {container.get_entries(binaries), container.get_entries(symbols), container.get_entries(sources),
          container.get_entries(other)};
}

ObjectPtr<search_dir_container_t> filled() {
  auto container = search_dir_container_t::create();
  fill(*container);
  return container;
}

// Loading `path` must fail with `expected` and leave a filled container as it was.
void expect_load_fails_and_changes_nothing(const std::string& path, error_code_t expected,
                                           const std::string& what) {
  const auto container = filled();
  const auto before = contents(*container);
  EXPECT_EQ(container->load(path), expected) << what << ": " << container->load(path).as_string(1);
  EXPECT_EQ(contents(*container), before) << what;
}

std::string saved_file(const temp_dir_t& dir) {
  std::string path = dir.file("search_dirs.xml");
  EXPECT_TRUE(filled()->save(path).succeeded());
  return path;
}

// A bag file of the container's shape with one "dir" entry made by the caller.
std::string file_with_entry(const temp_dir_t& dir, const korvat2::variant_bag_t& entry, int version = 1) {
  korvat2::variant_bag_t bag;
  bag.put("format", "search_dirs");
  bag.put("version", version);
  bag.add_variant_bag("dir", entry);
  std::string path = dir.file("made.xml");
  EXPECT_TRUE(korvat2::save_variant_bag(bag, path.c_str()).succeeded());
  return path;
}

korvat2::variant_bag_t good_entry() {
  korvat2::variant_bag_t entry;
  entry.put("category", 3);
  entry.put("text", "/src");
  entry.put("recursive", true);
  entry.put("flag", false);
  return entry;
}

// ---------------------------------------------------------------- editing

TEST(search_dir_container_test, entries_keep_their_order_flags_and_doubles) {
  const auto container = filled();
  EXPECT_EQ(container->get_count(sources), 5);
  const entries_t expected{{"/usr/lib", true, true}, {"/opt/app/bin/*", false, true}};
  EXPECT_EQ(container->get_entries(binaries), expected);
  EXPECT_EQ(container->get_entries(sources)[3],
            (search_dir_container_t::entry_t{"relative/dir", true, false}));
  EXPECT_TRUE(container->get_entries(other).empty());
}

TEST(search_dir_container_test, add_refuses_bad_categories_and_empty_texts) {
  const auto container = search_dir_container_t::create();
  EXPECT_FALSE(container->add_search_dir(static_cast<search_category_t>(0), "/a", false, false));
  EXPECT_FALSE(container->add_search_dir(static_cast<search_category_t>(5), "/a", false, false));
  EXPECT_FALSE(container->add_search_dir(sources, nullptr, false, false));
  EXPECT_FALSE(container->add_search_dir(sources, "", false, false));
  EXPECT_EQ(container->get_count(sources), 0);
  EXPECT_EQ(container->get_count(static_cast<search_category_t>(9)), 0);
  EXPECT_TRUE(container->get_entries(static_cast<search_category_t>(9)).empty());
}

TEST(search_dir_container_test, clear_category_empties_only_that_category) {
  const auto container = filled();
  container->clear_category(sources);
  container->clear_category(static_cast<search_category_t>(7));
  EXPECT_EQ(container->get_count(sources), 0);
  EXPECT_EQ(container->get_count(binaries), 2);
  EXPECT_EQ(container->get_count(symbols), 1);
}

TEST(search_dir_container_test, remove_takes_every_exact_match_of_one_category) {
  const auto container = filled();
  container->add_search_dir(sources, "/usr/lib", false, false);
  EXPECT_TRUE(container->remove_search_dir(sources, "/usr/lib"));
  EXPECT_EQ(container->get_count(sources), 4);
  EXPECT_EQ(container->get_count(binaries), 2);
  EXPECT_FALSE(container->remove_search_dir(sources, "/usr/lib"));
  EXPECT_FALSE(container->remove_search_dir(sources, "/USR/LIB"));
  EXPECT_FALSE(container->remove_search_dir(sources, nullptr));
  EXPECT_FALSE(container->remove_search_dir(static_cast<search_category_t>(0), "/usr/lib"));
}

TEST(search_dir_container_test, refusing_container_refuses_only_its_directory) {
  const auto refusing = test_support::refusing_search_dir_container_t::create("/no");
  const ObjectPtr<HALLIN_2_13::IEditableSearchDirContainer> container = refusing;
  EXPECT_TRUE(container->add_search_dir(sources, "/yes", false, true));
  EXPECT_FALSE(container->add_search_dir(sources, "/no", false, true));
  EXPECT_FALSE(container->add_search_dir(binaries, "/no", true, true));
  EXPECT_TRUE(container->add_search_dir(sources, "/no/sub", false, true));
  EXPECT_EQ(refusing->refusals(), 2);
  EXPECT_EQ(refusing->get_entries(sources), (entries_t{{"/yes", false, true}, {"/no/sub", false, true}}));
  EXPECT_EQ(container->get_count(binaries), 0);
}

// ---------------------------------------------------------------- files

TEST(search_dir_container_test, save_and_load_round_trip) {
  temp_dir_t dir;
  const auto original = filled();
  const std::string path = dir.file("dirs.xml");
  ASSERT_TRUE(original->save(path).succeeded());
  const auto loaded = search_dir_container_t::create();
  loaded->add_search_dir(other, "/replaced", false, false);
  ASSERT_EQ(loaded->load(path), korvat2::error::Success);
  EXPECT_EQ(contents(*loaded), contents(*original));
  // What was loaded saves to the same bytes.
  ASSERT_TRUE(loaded->save(dir.file("again.xml")).succeeded());
  EXPECT_EQ(read_bytes(dir.file("again.xml")), read_bytes(path));
}

TEST(search_dir_container_test, empty_container_round_trips_and_empties_on_load) {
  temp_dir_t dir;
  const std::string path = dir.file("empty.xml");
  ASSERT_TRUE(search_dir_container_t::create()->save(path).succeeded());
  const auto container = filled();
  ASSERT_TRUE(container->load(path).succeeded());
  EXPECT_EQ(contents(*container), std::vector<entries_t>(4));
}

TEST(search_dir_container_test, missing_file_is_not_found_and_changes_nothing) {
  temp_dir_t dir;
  expect_load_fails_and_changes_nothing(dir.file("none.xml"), korvat2::error::FileNotFound, "missing");
  expect_load_fails_and_changes_nothing("", korvat2::error::IsNotValidParameter, "empty path");
}

TEST(search_dir_container_test, truncated_file_fails_and_changes_nothing) {
  temp_dir_t dir;
  const std::string whole = read_bytes(saved_file(dir));
  ASSERT_GT(whole.size(), 100u);
  // Every cut that loses the closing of the root element, and the empty file.
  const std::size_t root_end = whole.rfind("</bag>");
  for (std::size_t size = 0; size <= root_end; size += 7) {
    const std::string path = dir.write("cut.xml", whole.substr(0, size));
    expect_load_fails_and_changes_nothing(path, korvat2::error::FileFormat, "cut at " + std::to_string(size));
  }
}

TEST(search_dir_container_test, foreign_files_fail_and_change_nothing) {
  temp_dir_t dir;
  const auto format = korvat2::error::FileFormat;
  expect_load_fails_and_changes_nothing(dir.write("random", "\x01\xff\x7fno xml at all"), format,
                                        "random bytes");
  expect_load_fails_and_changes_nothing(dir.write("html", "<html><body>hi</body></html>"), format,
                                        "other xml");
  // A bag file of something else: no format mark.
  korvat2::variant_bag_t editors;
  editors.put("editor", "vim");
  editors.add_variant_bag("dir", good_entry());
  ASSERT_TRUE(korvat2::save_variant_bag(editors, dir.file("editors.xml").c_str()).succeeded());
  expect_load_fails_and_changes_nothing(dir.file("editors.xml"), format, "other bag");
  korvat2::variant_bag_t other_format;
  other_format.put("format", "features");
  other_format.put("version", 1);
  ASSERT_TRUE(korvat2::save_variant_bag(other_format, dir.file("features.xml").c_str()).succeeded());
  expect_load_fails_and_changes_nothing(dir.file("features.xml"), format, "other format mark");
}

TEST(search_dir_container_test, later_version_is_not_supported) {
  temp_dir_t dir;
  expect_load_fails_and_changes_nothing(file_with_entry(dir, good_entry(), 2), korvat2::error::NotSupported,
                                        "version 2");
}

TEST(search_dir_container_test, one_bad_entry_refuses_the_whole_file) {
  temp_dir_t dir;
  ASSERT_TRUE(filled()->load(file_with_entry(dir, good_entry())).succeeded());
  const auto with = [](const char* name, const korvat2::variant_t& value) {
    korvat2::variant_bag_t entry = good_entry();
    entry.put<korvat2::variant_t>(name, value);
    return entry;
  };
  const auto without = [](const char* name) {
    korvat2::variant_bag_t entry = good_entry();
    entry.remove(name);
    return entry;
  };
  const std::vector<std::pair<std::string, korvat2::variant_bag_t>> bad{
      {"category 0", with("category", 0)},
      {"category 5", with("category", 5)},
      {"category as text", with("category", "3")},
      {"empty text", with("text", "")},
      {"text as number", with("text", 3)},
      {"recursive as text", with("recursive", "true")},
      {"flag as number", with("flag", 1)},
      {"no category", without("category")},
      {"no text", without("text")},
      {"no recursive", without("recursive")},
      {"no flag", without("flag")}};
  for (const auto& [what, entry] : bad) {
    expect_load_fails_and_changes_nothing(file_with_entry(dir, entry), korvat2::error::FileFormat, what);
  }
}

// ---------------------------------------------------------------- failed saves

// A container different from the one saved first, so that old and new can be told apart.
ObjectPtr<search_dir_container_t> changed() {
  auto container = search_dir_container_t::create();
  container->add_search_dir(other, "/new/one", true, true);
  return container;
}

save_step_t g_failing_step = korvat2::_internal::save_temp_written;
bool fail_at_step(save_step_t step) { return step != g_failing_step; }

TEST(search_dir_container_test, save_failing_before_the_rename_keeps_the_old_file_whole) {
  temp_dir_t dir;
  const std::string path = saved_file(dir);
  const std::string old_bytes = read_bytes(path);
  for (const save_step_t step :
       {korvat2::_internal::save_temp_written, korvat2::_internal::save_temp_synced}) {
    g_failing_step = step;
    const test_support::log_capture_t capture;
    const auto previous = korvat2::_internal::set_save_step_hook(&fail_at_step);
    const error_code_t result = changed()->save(path);
    korvat2::_internal::set_save_step_hook(previous);
    EXPECT_EQ(result, korvat2::error::FileWrite) << step;
    EXPECT_EQ(read_bytes(path), old_bytes) << step;
    EXPECT_EQ(capture.count(error_level, "cannot write " + path), 1u) << step;
    EXPECT_EQ(dir.names(), std::set<std::string>{"search_dirs.xml"}) << "temporary file left, step " << step;
    const auto reloaded = search_dir_container_t::create();
    EXPECT_TRUE(reloaded->load(path).succeeded());
    EXPECT_EQ(contents(*reloaded), contents(*filled()));
  }
}

TEST(search_dir_container_test, save_cut_short_by_a_full_disk_keeps_the_old_file_whole) {
  temp_dir_t dir;
  const std::string path = saved_file(dir);
  const std::string old_bytes = read_bytes(path);
  auto big = filled();
  for (int i = 0; i < 50; ++i) {
    big->add_search_dir(other, ("/a/rather/long/directory/line/number/" + std::to_string(i)).c_str(), true,
                        true);
  }
  const test_support::log_capture_t capture;
  {
    const test_support::scoped_file_size_limit_t limit(old_bytes.size() + 10);
    EXPECT_TRUE(big->save(path).failed());
  }
  EXPECT_EQ(read_bytes(path), old_bytes);
  EXPECT_EQ(capture.count(error_level, "cannot write " + path + ": " + std::strerror(EFBIG)), 1u);
}

TEST(search_dir_container_test, save_into_a_missing_folder_fails_and_is_logged) {
  temp_dir_t dir;
  const std::string path = dir.file("no/such/dir.xml");
  const test_support::log_capture_t capture;
  EXPECT_EQ(filled()->save(path), korvat2::error::FileWrite);
  EXPECT_EQ(capture.count(error_level, "cannot write " + path + ": " + std::strerror(ENOENT)), 1u);
}

bool exit_at_step(save_step_t step) {
  if (step == g_failing_step) {
    ::_exit(0);
  }
  return true;
}

TEST(search_dir_container_test, save_dying_at_any_step_leaves_the_old_or_the_new_file) {
  temp_dir_t dir;
  const std::string path = saved_file(dir);
  const auto old_contents = contents(*filled());
  const auto new_contents = contents(*changed());
  for (const save_step_t step : {korvat2::_internal::save_temp_written, korvat2::_internal::save_temp_synced,
                                 korvat2::_internal::save_renamed}) {
    g_failing_step = step;
    const pid_t pid = ::fork();
    if (pid == 0) {
      korvat2::_internal::set_save_step_hook(&exit_at_step);
      changed()->save(path);
      ::_exit(3);  // never came to the step
    }
    int status = -1;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << step;
    const auto reloaded = search_dir_container_t::create();
    ASSERT_TRUE(reloaded->load(path).succeeded()) << step;
    const auto found = contents(*reloaded);
    EXPECT_EQ(found, step == korvat2::_internal::save_renamed ? new_contents : old_contents) << step;
    // Put the old file back for the next step.
    ASSERT_TRUE(filled()->save(path).succeeded());
  }
}

}  // namespace
