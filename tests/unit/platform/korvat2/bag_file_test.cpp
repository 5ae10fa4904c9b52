#include <korvat2/bag_file.h>
#include <korvat2/path.h>

#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using korvat2::error_code_t;
using korvat2::load_variant_bag;
using korvat2::save_variant_bag;
using korvat2::variant_bag_t;
using korvat2::variant_t;
using korvat2::_internal::save_step_t;
using korvat2::_internal::set_save_step_hook;
using test_support::read_bytes;
using test_support::scoped_cwd_t;
using test_support::temp_dir_t;
using test_support::write_bytes;
using names_t = std::set<std::string>;

const char* const utf8_text =
    "Gr\xC3\xBC\xC3\x9F"
    "e \xE2\x82\xAC \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80";

variant_bag_t item(int id, const char* label) {
  variant_bag_t bag;
  bag.put("id", id);
  bag.put("label", label);
  return bag;
}

// Every kind, the awkward texts, repeated and nested bags.
variant_bag_t sample_bag() {
  variant_bag_t bag;
  bag.put("markup", "<a href=\"x\">&amp; 'quoted' & \"double\"</a> ]]> <!-- -->");
  bag.put("lines", "one\ntwo\n");
  bag.put("crlf", "one\r\ntwo\r\n");
  bag.put("lone_cr", "a\rb");
  bag.put("tabs", "\tin\tdented\t");
  bag.put("blanks", "  padded both sides  ");
  bag.put("whitespace_only", " \t\r\n ");
  bag.put("one_blank", " ");
  bag.put("empty_text", "");
  bag.put("utf8", utf8_text);
  bag.put("wide", std::u16string(u"Gr\u00FC\u00DFe \u20AC \u65E5\u672C \U0001F600"));
  bag.put("wide_blank", std::u16string(u"  "));
  bag.put("zero", 0);
  bag.put("negative", -17);
  bag.put("min", INT_MIN);
  bag.put("max", INT_MAX);
  bag.put("yes", true);
  bag.put("no", false);
  bag.put<variant_t>("nothing", variant_t());
  bag.put("name with <>&\"' and \xC3\xBC", "odd name");
  bag.put("", "empty name");

  bag.add_variant_bag("item", item(1, "first"));
  bag.add_variant_bag("item", item(2, "second"));
  variant_bag_t third = item(3, "third");
  third.add_variant_bag("child", item(31, "deep one"));
  third.add_variant_bag("child", item(32, "deep two"));
  third.add_variant_bag("empty_child", variant_bag_t());
  bag.add_variant_bag("item", third);
  bag.add_variant_bag("empty", variant_bag_t());
  bag.put("after_bags", 5);
  return bag;
}

variant_bag_t small_bag(int marker) {
  variant_bag_t bag;
  bag.put("marker", marker);
  bag.add_variant_bag("list", item(marker, "small"));
  return bag;
}

void save_ok(const variant_bag_t& bag, const std::string& path) {
  const error_code_t result = save_variant_bag(bag, path.c_str());
  ASSERT_TRUE(result.succeeded()) << path << ": " << result.as_string(error_code_t::with_value);
}

variant_bag_t load_ok(const std::string& path, const char* extra = "") {
  variant_bag_t bag;
  const error_code_t result = load_variant_bag(bag, path.c_str(), extra);
  EXPECT_TRUE(result.succeeded()) << path << ": " << result.as_string(error_code_t::with_value);
  return bag;
}

// Loading `path` into a bag that holds something must fail and leave the bag as it was.
void expect_load_fails_and_keeps_bag(const std::string& path, const std::string& what,
                                     const char* extra = "") {
  const variant_bag_t before = small_bag(42);
  variant_bag_t bag = before;
  EXPECT_TRUE(load_variant_bag(bag, path.c_str(), extra).failed()) << what;
  EXPECT_EQ(bag, before) << what;
}

// Installs a save step hook for the life of the object.
class scoped_save_hook_t {
 public:
  explicit scoped_save_hook_t(korvat2::_internal::save_step_hook_t hook)
      : m_previous(set_save_step_hook(hook)) {}
  ~scoped_save_hook_t() { set_save_step_hook(m_previous); }
  scoped_save_hook_t(const scoped_save_hook_t&) = delete;
  scoped_save_hook_t& operator=(const scoped_save_hook_t&) = delete;

 private:
  korvat2::_internal::save_step_hook_t m_previous;
};

// The hooks are plain function pointers, so what they do is set here.
std::vector<save_step_t> g_steps_seen;
save_step_t g_chosen_step = korvat2::_internal::save_temp_written;

bool record_step(save_step_t step) {
  g_steps_seen.push_back(step);
  return true;
}

bool fail_at_chosen_step(save_step_t step) { return step != g_chosen_step; }

// What the watched folder held when the temporary file had been written.
const temp_dir_t* g_watched_dir = nullptr;
std::vector<names_t> g_names_seen;

bool note_names_when_written(save_step_t step) {
  if (step == korvat2::_internal::save_temp_written && g_watched_dir) {
    g_names_seen.push_back(g_watched_dir->names());
  }
  return true;
}

bool exit_at_chosen_step(save_step_t step) {
  if (step == g_chosen_step) {
    ::_exit(0);
  }
  return true;
}

// Saves `bag` to `path` in a child process that dies at `step`; returns the child's exit
// status, 0 when it died at the step as planned.
int save_in_child_dying_at(const variant_bag_t& bag, const std::string& path, save_step_t step) {
  g_chosen_step = step;
  const pid_t pid = ::fork();
  if (pid == 0) {
    set_save_step_hook(&exit_at_chosen_step);
    save_variant_bag(bag, path.c_str());
    ::_exit(3);  // the save never came to the step
  }
  int status = 0;
  if (pid < 0 || ::waitpid(pid, &status, 0) != pid) {
    return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -2;
}

std::string step_name(const testing::TestParamInfo<save_step_t>& info) {
  switch (info.param) {
    case korvat2::_internal::save_temp_written: return "temp_written";
    case korvat2::_internal::save_temp_synced: return "temp_synced";
    case korvat2::_internal::save_renamed: return "renamed";
  }
  return "unknown";
}

// ---------------------------------------------------------------- round trips

TEST(bag_file_test, round_trip_keeps_every_entry_kind_and_order) {
  temp_dir_t dir;
  const variant_bag_t bag = sample_bag();
  save_ok(bag, dir.file("bag.xml"));
  const variant_bag_t loaded = load_ok(dir.file("bag.xml"));
  EXPECT_EQ(loaded, bag);
}

TEST(bag_file_test, round_trip_keeps_awkward_texts_exactly) {
  temp_dir_t dir;
  save_ok(sample_bag(), dir.file("bag.xml"));
  const variant_bag_t loaded = load_ok(dir.file("bag.xml"));
  const auto text = [&](const char* name) {
    const variant_t* value = loaded.get<variant_t>(name);
    return value ? value->get<std::string>() : std::string("<missing>");
  };
  EXPECT_EQ(text("markup"), "<a href=\"x\">&amp; 'quoted' & \"double\"</a> ]]> <!-- -->");
  EXPECT_EQ(text("crlf"), "one\r\ntwo\r\n");
  EXPECT_EQ(text("lone_cr"), "a\rb");
  EXPECT_EQ(text("tabs"), "\tin\tdented\t");
  EXPECT_EQ(text("blanks"), "  padded both sides  ");
  EXPECT_EQ(text("whitespace_only"), " \t\r\n ");
  EXPECT_EQ(text("one_blank"), " ");
  EXPECT_EQ(text("empty_text"), "");
  EXPECT_EQ(text("utf8"), utf8_text);
  EXPECT_EQ(text("name with <>&\"' and \xC3\xBC"), "odd name");
  EXPECT_EQ(text(""), "empty name");
}

TEST(bag_file_test, round_trip_keeps_kinds_of_values) {
  temp_dir_t dir;
  save_ok(sample_bag(), dir.file("bag.xml"));
  const variant_bag_t loaded = load_ok(dir.file("bag.xml"));
  const auto kind = [&](const char* name) {
    const variant_t* value = loaded.get<variant_t>(name);
    return value ? value->kind() : static_cast<variant_t::kind_t>(-1);
  };
  EXPECT_EQ(kind("utf8"), variant_t::kind_text);
  EXPECT_EQ(kind("empty_text"), variant_t::kind_text);
  EXPECT_EQ(kind("wide"), variant_t::kind_wide_text);
  EXPECT_EQ(kind("wide_blank"), variant_t::kind_wide_text);
  EXPECT_EQ(kind("min"), variant_t::kind_int);
  EXPECT_EQ(kind("no"), variant_t::kind_bool);
  EXPECT_EQ(kind("nothing"), variant_t::kind_empty);
  EXPECT_EQ(loaded.get<variant_t>("min")->get<int>(), INT_MIN);
  EXPECT_EQ(loaded.get<variant_t>("max")->get<int>(), INT_MAX);
  EXPECT_EQ(loaded.get<variant_t>("negative")->get<int>(), -17);
  EXPECT_EQ(loaded.get<variant_t>("wide")->get<std::u16string>(),
            u"Gr\u00FC\u00DFe \u20AC \u65E5\u672C \U0001F600");
}

TEST(bag_file_test, round_trip_keeps_repeated_sub_bags_in_order) {
  temp_dir_t dir;
  save_ok(sample_bag(), dir.file("bag.xml"));
  variant_bag_t loaded = load_ok(dir.file("bag.xml"));
  std::vector<std::string> labels;
  for (auto it = loaded.begin_by_name<variant_bag_t>("item"); !it.at_end(); it.next()) {
    labels.push_back(it.get_value().get_variant("label", variant_t("?")).get<std::string>());
  }
  EXPECT_EQ(labels, (std::vector<std::string>{"first", "second", "third"}));
  const variant_bag_t* third = nullptr;
  for (auto it = loaded.begin_by_name<variant_bag_t>("item"); !it.at_end(); it.next()) {
    third = &it.get_value();
  }
  ASSERT_NE(third, nullptr);
  std::vector<int> children;
  for (auto it = third->begin_by_name<variant_bag_t>("child"); !it.at_end(); it.next()) {
    children.push_back(it.get_value().get_variant("id", variant_t(-1)).get<int>());
  }
  EXPECT_EQ(children, (std::vector<int>{31, 32}));
  EXPECT_TRUE(third->has<variant_bag_t>("empty_child"));
}

TEST(bag_file_test, names_with_blanks_tabs_and_newlines_round_trip) {
  temp_dir_t dir;
  variant_bag_t bag;
  bag.put(" lead and trail ", 1);
  bag.put("tab\there", 2);
  bag.put("new\nline", 3);
  bag.put("cr\r\nlf", 4);
  bag.add_variant_bag("sub\tbag\n", item(5, "x"));
  save_ok(bag, dir.file("bag.xml"));
  EXPECT_EQ(load_ok(dir.file("bag.xml")), bag);
}

TEST(bag_file_test, control_characters_in_text_round_trip) {
  temp_dir_t dir;
  variant_bag_t bag;
  bag.put("controls", "bell\a escape\x1B delete\x7F vt\v ff\f");
  save_ok(bag, dir.file("bag.xml"));
  EXPECT_EQ(load_ok(dir.file("bag.xml")), bag);
}

// The temporary file must lie beside the target for the rename to be atomic, whatever
// the working directory and whatever the name.
TEST(bag_file_test, temporary_file_is_written_beside_the_target) {
  temp_dir_t dir;
  temp_dir_t elsewhere;
  scoped_cwd_t cwd(elsewhere.path());
  for (const char* name : {"plain.xml", "odd*name.xml", "*"}) {
    const names_t before = dir.names();
    g_watched_dir = &dir;
    g_names_seen.clear();
    {
      scoped_save_hook_t hook(&note_names_when_written);
      save_ok(small_bag(1), dir.file(name));
    }
    ASSERT_EQ(g_names_seen.size(), 1u) << name;
    names_t added;
    for (const std::string& seen : g_names_seen.front()) {
      if (!before.count(seen)) {
        added.insert(seen);
      }
    }
    ASSERT_EQ(added.size(), 1u) << name << ": no temporary file beside the target";
    EXPECT_NE(*added.begin(), name);
    EXPECT_EQ(load_ok(dir.file(name)), small_bag(1)) << name;
    EXPECT_TRUE(elsewhere.names().empty()) << name;
  }
  EXPECT_EQ(dir.names(), (names_t{"plain.xml", "odd*name.xml", "*"}));
}

TEST(bag_file_test, file_with_a_byte_order_mark_loads) {
  temp_dir_t dir;
  write_bytes(dir.file("bag.xml"),
              "\xEF\xBB\xBF<?xml version=\"1.0\"?><bag><value name=\"a\" kind=\"int\">1</value></bag>");
  variant_bag_t expected;
  expected.put("a", 1);
  EXPECT_EQ(load_ok(dir.file("bag.xml")), expected);
}

TEST(bag_file_test, empty_bag_round_trips) {
  temp_dir_t dir;
  save_ok(variant_bag_t(), dir.file("bag.xml"));
  variant_bag_t loaded = small_bag(1);
  EXPECT_TRUE(load_variant_bag(loaded, dir.file("bag.xml").c_str(), "").succeeded());
  EXPECT_TRUE(loaded.empty());
}

TEST(bag_file_test, large_bag_round_trips) {
  temp_dir_t dir;
  variant_bag_t bag;
  for (int i = 0; i < 2000; ++i) {
    bag.add_variant_bag("row", item(i, std::to_string(i * 7).c_str()));
  }
  save_ok(bag, dir.file("bag.xml"));
  EXPECT_EQ(load_ok(dir.file("bag.xml")), bag);
}

TEST(bag_file_test, saving_a_loaded_bag_gives_the_same_bytes) {
  temp_dir_t dir;
  save_ok(sample_bag(), dir.file("first.xml"));
  save_ok(load_ok(dir.file("first.xml")), dir.file("second.xml"));
  EXPECT_EQ(read_bytes(dir.file("second.xml")), read_bytes(dir.file("first.xml")));
}

TEST(bag_file_test, load_replaces_what_the_bag_held) {
  temp_dir_t dir;
  save_ok(small_bag(1), dir.file("bag.xml"));
  variant_bag_t bag = sample_bag();
  ASSERT_TRUE(load_variant_bag(bag, dir.file("bag.xml").c_str(), "").succeeded());
  EXPECT_EQ(bag, small_bag(1));
}

TEST(bag_file_test, relative_path_saves_and_loads_in_the_working_directory) {
  temp_dir_t dir;
  {
    scoped_cwd_t cwd(dir.path());
    save_ok(small_bag(3), "relative.xml");
    EXPECT_EQ(load_ok("relative.xml"), small_bag(3));
  }
  EXPECT_EQ(dir.names(), names_t{"relative.xml"});
}

// ---------------------------------------------------------------- broken files

TEST(bag_file_test, missing_file_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  expect_load_fails_and_keeps_bag(dir.file("missing.xml"), "missing file");
  expect_load_fails_and_keeps_bag(dir.file("no_such_dir/missing.xml"), "missing folder");
}

TEST(bag_file_test, null_or_empty_path_fails) {
  variant_bag_t bag = small_bag(1);
  EXPECT_TRUE(load_variant_bag(bag, nullptr, "").failed());
  EXPECT_TRUE(load_variant_bag(bag, "", "").failed());
  EXPECT_EQ(bag, small_bag(1));
  EXPECT_TRUE(save_variant_bag(bag, nullptr).failed());
  EXPECT_TRUE(save_variant_bag(bag, "").failed());
}

TEST(bag_file_test, empty_file_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  write_bytes(dir.file("empty.xml"), "");
  expect_load_fails_and_keeps_bag(dir.file("empty.xml"), "empty file");
}

TEST(bag_file_test, folder_in_place_of_the_file_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  expect_load_fails_and_keeps_bag(dir.path(), "a folder");
}

TEST(bag_file_test, file_truncated_at_any_length_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  save_ok(sample_bag(), dir.file("full.xml"));
  const std::string full = read_bytes(dir.file("full.xml"));
  const std::size_t root_end = full.rfind("</bag>");
  ASSERT_NE(root_end, std::string::npos);
  const std::string cut_file = dir.file("cut.xml");
  for (std::size_t length = 0; length < root_end + 6; ++length) {
    write_bytes(cut_file, full.substr(0, length));
    expect_load_fails_and_keeps_bag(cut_file, "cut at " + std::to_string(length));
  }
}

TEST(bag_file_test, file_of_random_bytes_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  std::mt19937 random(20240611);
  std::uniform_int_distribution<int> byte(0, 255);
  const std::string path = dir.file("random.xml");
  for (std::size_t size : {1, 2, 7, 64, 500, 4096}) {
    std::string bytes(size, '\0');
    for (char& c : bytes) {
      c = static_cast<char>(byte(random));
    }
    write_bytes(path, bytes);
    expect_load_fails_and_keeps_bag(path, std::to_string(size) + " random bytes");
    // The same bytes behind a valid beginning.
    write_bytes(path, "<?xml version=\"1.0\"?>\n<bag version=\"1\">" + bytes);
    expect_load_fails_and_keeps_bag(path, std::to_string(size) + " random bytes in a bag");
  }
}

TEST(bag_file_test, file_that_is_not_xml_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  for (const char* content : {"plain text, no markup\n", "{\"bag\": {\"a\": 1}}", "[section]\nkey=value\n",
                              "<bag", "<bag version=\"1\">", "<bag><value name=\"a\" kind=\"int\">1</bag>",
                              "<bag></gab>", "<?xml version=\"1.0\"?>", "   \n\t  "}) {
    write_bytes(path, content);
    expect_load_fails_and_keeps_bag(path, content);
  }
}

TEST(bag_file_test, xml_with_another_root_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  for (const char* content :
       {"<?xml version=\"1.0\"?><settings><value name=\"a\" kind=\"int\">1</value></settings>",
        "<value name=\"a\" kind=\"int\">1</value>", "<Bag version=\"1\"/>"}) {
    write_bytes(path, content);
    expect_load_fails_and_keeps_bag(path, content);
  }
}

TEST(bag_file_test, unknown_elements_and_unreadable_values_are_skipped) {
  temp_dir_t dir;
  write_bytes(dir.file("bag.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!-- written by hand -->\n"
              "<bag version=\"7\">\n"
              "  <comment>ignored</comment>\n"
              "  <value name=\"a\" kind=\"int\">1</value>\n"
              "  <future name=\"f\" kind=\"int\">2</future>\n"
              "  <value kind=\"int\">3</value>\n"
              "  <value name=\"trailing\" kind=\"int\">12x</value>\n"
              "  <value name=\"leading\" kind=\"int\">x12</value>\n"
              "  <value name=\"spaced\" kind=\"int\"> 12</value>\n"
              "  <value name=\"too_big\" kind=\"int\">99999999999</value>\n"
              "  <value name=\"blank_int\" kind=\"int\"></value>\n"
              "  <value name=\"yes\" kind=\"bool\">yes</value>\n"
              "  <value name=\"one\" kind=\"bool\">1</value>\n"
              "  <value name=\"colour\" kind=\"colour\">red</value>\n"
              "  <value name=\"no_kind\">x</value>\n"
              "  <value name=\"t\" kind=\"text\">kept</value>\n"
              "  <value name=\"b\" kind=\"bool\">false</value>\n"
              "  <?processing instruction?>\n"
              "  <bag name=\"n\"><unknown name=\"u\"/><value name=\"x\" kind=\"int\">-5</value></bag>\n"
              "  <bag><value name=\"nameless\" kind=\"int\">1</value></bag>\n"
              "</bag>\n");
  variant_bag_t expected;
  expected.put("a", 1);
  expected.put("t", "kept");
  expected.put("b", false);
  variant_bag_t nested;
  nested.put("x", -5);
  expected.add_variant_bag("n", nested);
  EXPECT_EQ(load_ok(dir.file("bag.xml")), expected);
}

TEST(bag_file_test, hand_written_file_with_cdata_and_entities_loads) {
  temp_dir_t dir;
  write_bytes(dir.file("bag.xml"),
              "<bag version=\"1\">"
              "<value name=\"cdata\" kind=\"text\"><![CDATA[<raw & text>]]></value>"
              "<value name=\"entities\" kind=\"text\">&lt;&amp;&gt;&quot;&apos;&#233;&#x20AC;</value>"
              "<value name=\"wide\" kind=\"wtext\">&#x1F600;</value>"
              "</bag>");
  const variant_bag_t loaded = load_ok(dir.file("bag.xml"));
  EXPECT_EQ(loaded.get_variant("cdata", variant_t()), variant_t("<raw & text>"));
  EXPECT_EQ(loaded.get_variant("entities", variant_t()), variant_t("<&>\"'\xC3\xA9\xE2\x82\xAC"));
  EXPECT_EQ(loaded.get_variant("wide", variant_t()), variant_t(std::u16string(u"\U0001F600")));
}

// ---------------------------------------------------------------- nesting

// A file whose top bag holds a chain of nested bags, `depth` bags in all.
std::string nested_file(int depth) {
  std::string text = "<?xml version=\"1.0\"?>\n<bag version=\"1\">";
  for (int level = 1; level < depth; ++level) {
    text += "<bag name=\"c\">";
  }
  text += "<value name=\"v\" kind=\"int\">7</value>";
  for (int level = 1; level < depth; ++level) {
    text += "</bag>";
  }
  return text + "</bag>\n";
}

// The bag that nested_file(depth) holds.
variant_bag_t chain(int depth) {
  variant_bag_t bag;
  bag.put("v", 7);
  for (int level = 1; level < depth; ++level) {
    variant_bag_t outer;
    outer.add_variant_bag("c", std::move(bag));
    bag = std::move(outer);
  }
  return bag;
}

// Runs `work` on a thread of 256 KiB of stack, and waits for it.
void run_on_small_stack(const std::function<void()>& work) {
  pthread_attr_t attributes;
  ASSERT_EQ(::pthread_attr_init(&attributes), 0);
  ASSERT_EQ(::pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
  pthread_t thread;
  auto start = [](void* argument) -> void* {
    (*static_cast<const std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(::pthread_create(&thread, &attributes, start, const_cast<std::function<void()>*>(&work)), 0);
  ::pthread_join(thread, nullptr);
  ::pthread_attr_destroy(&attributes);
}

TEST(bag_file_test, file_nested_one_level_deeper_than_the_limit_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  const std::string path = dir.write("deep.xml", nested_file(korvat2::max_bag_depth + 1));
  expect_load_fails_and_keeps_bag(path, "one level too deep");
  variant_bag_t bag;
  EXPECT_EQ(load_variant_bag(bag, path.c_str(), ""), korvat2::error::FileFormat);
}

TEST(bag_file_test, very_deep_file_fails_on_a_small_stack) {
  temp_dir_t dir;
  const std::string path = dir.write("deep.xml", nested_file(100000));
  error_code_t result;
  run_on_small_stack([&] {
    variant_bag_t bag = small_bag(1);
    result = load_variant_bag(bag, path.c_str(), "");
  });
  EXPECT_EQ(result, korvat2::error::FileFormat);
}

TEST(bag_file_test, bag_at_the_limit_loads_copies_compares_saves_and_goes_on_a_small_stack) {
  temp_dir_t dir;
  const std::string path = dir.write("deep.xml", nested_file(korvat2::max_bag_depth));
  const std::string saved_path = dir.file("saved.xml");
  const variant_bag_t expected = chain(korvat2::max_bag_depth);
  bool loaded = false;
  bool equal = false;
  bool copy_equal = false;
  bool saved = false;
  run_on_small_stack([&] {
    variant_bag_t bag;
    loaded = load_variant_bag(bag, path.c_str(), "").succeeded();
    equal = bag == expected;
    const variant_bag_t copy = bag;
    variant_bag_t assigned;
    assigned = copy;
    copy_equal = assigned == expected;
    saved = save_variant_bag(assigned, saved_path.c_str()).succeeded();
  });
  EXPECT_TRUE(loaded);
  EXPECT_TRUE(equal);
  EXPECT_TRUE(copy_equal);
  EXPECT_TRUE(saved);
  EXPECT_EQ(load_ok(saved_path), expected);
}

TEST(bag_file_test, bag_at_the_limit_saves_and_loads_again) {
  temp_dir_t dir;
  const std::string path = dir.file("deep.xml");
  const variant_bag_t bag = chain(korvat2::max_bag_depth);
  save_ok(bag, path);
  EXPECT_EQ(load_ok(path), bag);
}

TEST(bag_file_test, save_refuses_a_bag_deeper_than_the_limit_and_keeps_the_old_file) {
  temp_dir_t dir;
  const std::string path = dir.file("deep.xml");
  save_ok(small_bag(1), path);
  const std::string old_bytes = read_bytes(path);
  const test_support::log_capture_t capture;
  EXPECT_EQ(save_variant_bag(chain(korvat2::max_bag_depth + 1), path.c_str()), korvat2::error::BagTooDeep);
  EXPECT_EQ(read_bytes(path), old_bytes);
  EXPECT_EQ(dir.names(), names_t{"deep.xml"});
  EXPECT_EQ(capture.count(40000, "cannot write " + path + ": the bag is nested deeper than 1000 levels"), 1u);
}

TEST(bag_file_test, deep_chain_saves_to_a_file_that_grows_with_its_content_only) {
  temp_dir_t dir;
  const std::string path = dir.file("deep.xml");
  save_ok(chain(korvat2::max_bag_depth), path);
  EXPECT_LT(read_bytes(path).size(), 100u * 1000u);
  save_ok(chain(korvat2::max_bag_depth / 2), path);
  const std::size_t half = read_bytes(path).size();
  save_ok(chain(korvat2::max_bag_depth), path);
  EXPECT_LT(read_bytes(path).size(), 2 * half + 200);
}

// ---------------------------------------------------------------- texts XML can't hold

TEST(bag_file_test, texts_with_nul_bytes_round_trip) {
  temp_dir_t dir;
  variant_bag_t bag;
  bag.put("narrow", std::string("before\0after\0", 13));
  bag.put("wide", std::u16string(u"before\0after", 12));
  bag.put("only_nul", std::u16string(1, u'\0'));
  save_ok(bag, dir.file("bag.xml"));
  const variant_bag_t loaded = load_ok(dir.file("bag.xml"));
  EXPECT_EQ(loaded, bag);
  EXPECT_EQ(loaded.get<variant_t>("narrow")->get<std::string>(), std::string("before\0after\0", 13));
  EXPECT_EQ(loaded.get<variant_t>("wide")->get<std::u16string>(), std::u16string(u"before\0after", 12));
  EXPECT_EQ(loaded.get<variant_t>("only_nul")->get<std::u16string>(), std::u16string(1, u'\0'));
}

// Saves one text per entry and checks that each comes back exactly, of its kind, in a file
// that is UTF-8 throughout.
template <class Text>
void expect_texts_round_trip(const std::vector<Text>& texts, variant_t::kind_t kind) {
  temp_dir_t dir;
  variant_bag_t bag;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    bag.put(std::to_string(i).c_str(), texts[i]);
  }
  save_ok(bag, dir.file("bag.xml"));
  const std::string bytes = read_bytes(dir.file("bag.xml"));
  EXPECT_EQ(zandor2::strings::to_utf8(zandor2::strings::to_utf16(bytes)), bytes);
  const variant_bag_t loaded = load_ok(dir.file("bag.xml"));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const variant_t* value = loaded.get<variant_t>(std::to_string(i).c_str());
    ASSERT_NE(value, nullptr) << i;
    EXPECT_EQ(value->kind(), kind) << i;
    EXPECT_EQ(value->get<Text>(), texts[i]) << i;
  }
}

TEST(bag_file_test, wide_texts_with_lone_surrogates_round_trip) {
  expect_texts_round_trip(
      std::vector<std::u16string>{std::u16string(1, char16_t(0xD800)), std::u16string(1, char16_t(0xDFFF)),
                                  u"a" + std::u16string(1, char16_t(0xDC00)) + u"\U0001F600",
                                  std::u16string{char16_t(0xDBFF), u'x'}, u"\uFFFD \uFFFF \uFFFE"},
      variant_t::kind_wide_text);
}

TEST(bag_file_test, narrow_texts_that_are_not_utf8_round_trip_in_a_utf8_file) {
  expect_texts_round_trip(
      std::vector<std::string>{"\xFF", "a\x80z", "\xC3", "\xED\xA0\x80", "\xC0\xAF", "ok \xE2\x82"},
      variant_t::kind_text);
}

TEST(bag_file_test, ordinary_texts_are_written_as_plain_text) {
  temp_dir_t dir;
  variant_bag_t bag;
  bag.put("word", "plain");
  bag.put("wide", std::u16string(u"wide"));
  save_ok(bag, dir.file("bag.xml"));
  const std::string bytes = read_bytes(dir.file("bag.xml"));
  EXPECT_NE(bytes.find(">plain<"), std::string::npos) << bytes;
  EXPECT_NE(bytes.find(">wide<"), std::string::npos) << bytes;
  EXPECT_EQ(bytes.find("base64"), std::string::npos) << bytes;
}

TEST(bag_file_test, texts_in_base64_that_dont_decode_are_skipped) {
  temp_dir_t dir;
  const std::string path =
      dir.write("bag.xml",
                "<bag version=\"1\">"
                "<value name=\"good\" kind=\"text\" encoding=\"base64\">YQBi</value>"
                "<value name=\"odd_wide\" kind=\"wtext\" encoding=\"base64\">YQBi</value>"
                "<value name=\"bad\" kind=\"text\" encoding=\"base64\">Y!==</value>"
                "<value name=\"short\" kind=\"text\" encoding=\"base64\">YQ=</value>"
                "<value name=\"unknown\" kind=\"text\" encoding=\"rot13\">n</value>"
                "</bag>");
  const variant_bag_t loaded = load_ok(path);
  ASSERT_NE(loaded.get<variant_t>("good"), nullptr);
  EXPECT_EQ(loaded.get<variant_t>("good")->get<std::string>(), std::string("a\0b", 3));
  EXPECT_FALSE(loaded.has<variant_t>("odd_wide"));
  EXPECT_FALSE(loaded.has<variant_t>("bad"));
  EXPECT_FALSE(loaded.has<variant_t>("short"));
  EXPECT_FALSE(loaded.has<variant_t>("unknown"));
}

// ---------------------------------------------------------------- more than one root

TEST(bag_file_test, file_with_anything_after_its_root_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  const std::string root =
      "<?xml version=\"1.0\"?>\n<bag version=\"1\"><value name=\"a\" kind=\"int\">1</value></bag>";
  const std::vector<std::pair<std::string, std::string>> cases{
      {"second root", root + "<bag version=\"1\"/>"}, {"element after the root", root + "\n<other/>"},
      {"nul padding", root + std::string(64, '\0')},  {"one nul", root + std::string(1, '\0') + "\n"},
      {"text after the root", root + "tail"},
  };
  for (const auto& [what, bytes] : cases) {
    const std::string path = dir.write("bag.xml", bytes);
    expect_load_fails_and_keeps_bag(path, what);
    variant_bag_t bag;
    EXPECT_EQ(load_variant_bag(bag, path.c_str(), ""), korvat2::error::FileFormat) << what;
  }
  // What may follow the root still loads.
  const std::string path = dir.write("bag.xml", root + "\n<!-- saved -->\n<?done?>\n");
  EXPECT_EQ(load_ok(path).get_variant("a", 0).get<int>(), 1);
}

// ---------------------------------------------------------------- extra

TEST(bag_file_test, extra_loads_the_first_nested_bag_of_that_name) {
  temp_dir_t dir;
  variant_bag_t file;
  file.put("top", 1);
  file.add_variant_bag("first", small_bag(1));
  file.add_variant_bag("second", small_bag(2));
  file.add_variant_bag("second", small_bag(3));
  save_ok(file, dir.file("bag.xml"));
  EXPECT_EQ(load_ok(dir.file("bag.xml"), "first"), small_bag(1));
  EXPECT_EQ(load_ok(dir.file("bag.xml"), "second"), small_bag(2));
  EXPECT_EQ(load_ok(dir.file("bag.xml"), ""), file);
  EXPECT_EQ(load_ok(dir.file("bag.xml"), nullptr), file);
}

TEST(bag_file_test, extra_naming_no_nested_bag_fails_and_keeps_the_bag) {
  temp_dir_t dir;
  variant_bag_t file;
  file.put("value_only", 1);
  file.add_variant_bag("outer", variant_bag_t());
  file.get<variant_bag_t>("outer")->add_variant_bag("inner", small_bag(1));
  save_ok(file, dir.file("bag.xml"));
  expect_load_fails_and_keeps_bag(dir.file("bag.xml"), "unknown name", "missing");
  expect_load_fails_and_keeps_bag(dir.file("bag.xml"), "a value's name", "value_only");
  expect_load_fails_and_keeps_bag(dir.file("bag.xml"), "a bag below the top", "inner");
}

// ---------------------------------------------------------------- saving

TEST(bag_file_test, save_over_an_existing_file_replaces_it_entirely) {
  temp_dir_t dir;
  save_ok(small_bag(1), dir.file("expected.xml"));
  write_bytes(dir.file("bag.xml"), std::string(20000, 'x'));
  save_ok(small_bag(1), dir.file("bag.xml"));
  EXPECT_EQ(read_bytes(dir.file("bag.xml")), read_bytes(dir.file("expected.xml")));
  EXPECT_EQ(load_ok(dir.file("bag.xml")), small_bag(1));
}

TEST(bag_file_test, save_over_an_existing_file_keeps_its_permission_bits) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  for (mode_t mode : {0600, 0640, 0604, 0755}) {
    save_ok(small_bag(1), path);
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    save_ok(small_bag(2), path);
    EXPECT_EQ(test_support::mode_of(path), static_cast<int>(mode)) << std::oct << mode;
  }
}

TEST(bag_file_test, new_file_gets_the_mode_allowed_by_the_umask) {
  temp_dir_t dir;
  const mode_t old_mask = ::umask(027);
  save_ok(small_bag(1), dir.file("masked.xml"));
  ::umask(022);
  save_ok(small_bag(1), dir.file("default.xml"));
  ::umask(old_mask);
  EXPECT_EQ(test_support::mode_of(dir.file("masked.xml")), 0640);
  EXPECT_EQ(test_support::mode_of(dir.file("default.xml")), 0644);
}

TEST(bag_file_test, saves_leave_no_temporary_file_behind) {
  temp_dir_t dir;
  save_ok(small_bag(1), dir.file("bag.xml"));
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
  save_ok(small_bag(2), dir.file("bag.xml"));
  save_ok(sample_bag(), dir.file("bag.xml"));
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
}

TEST(bag_file_test, save_into_a_missing_folder_fails_cleanly) {
  temp_dir_t dir;
  EXPECT_TRUE(save_variant_bag(small_bag(1), dir.file("missing/bag.xml").c_str()).failed());
  EXPECT_TRUE(dir.names().empty());
}

TEST(bag_file_test, save_over_a_folder_fails_and_leaves_no_temporary_file) {
  temp_dir_t dir;
  ASSERT_EQ(::mkdir(dir.file("taken").c_str(), 0755), 0);
  EXPECT_TRUE(save_variant_bag(small_bag(1), dir.file("taken").c_str()).failed());
  EXPECT_EQ(dir.names(), names_t{"taken"});
  EXPECT_TRUE(korvat2::path_t::is_directory(dir.file("taken")));
}

const int error_level = 40000;

TEST(bag_file_test, a_failed_write_is_logged_with_the_path_and_the_reason) {
  temp_dir_t dir;
  test_support::write_bytes(dir.file("plain"), "x");
  const std::string path = dir.file("plain/bag.xml");
  const test_support::log_capture_t capture;
  EXPECT_TRUE(save_variant_bag(small_bag(1), path.c_str()).failed());
  EXPECT_EQ(capture.count(error_level, "cannot write " + path + ": " + std::strerror(ENOTDIR)), 1u);
  EXPECT_EQ(read_bytes(dir.file("plain")), "x");
}

// The system cuts the write short, as a full disk would, whoever runs the test.
TEST(bag_file_test, a_write_cut_short_keeps_the_old_file_and_is_logged) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  save_ok(small_bag(1), path);
  const std::string old_bytes = read_bytes(path);
  const test_support::log_capture_t capture;
  {
    const test_support::scoped_file_size_limit_t limit(16);
    EXPECT_TRUE(save_variant_bag(sample_bag(), path.c_str()).failed());
  }
  EXPECT_EQ(read_bytes(path), old_bytes);
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
  EXPECT_EQ(capture.count(error_level, "cannot write " + path + ": " + std::strerror(EFBIG)), 1u);
}

TEST(bag_file_test, save_passes_its_steps_in_order) {
  temp_dir_t dir;
  g_steps_seen.clear();
  scoped_save_hook_t hook(&record_step);
  save_ok(small_bag(1), dir.file("bag.xml"));
  EXPECT_EQ(g_steps_seen, (std::vector<save_step_t>{korvat2::_internal::save_temp_written,
                                                    korvat2::_internal::save_temp_synced,
                                                    korvat2::_internal::save_renamed}));
}

TEST(bag_file_test, failure_after_the_rename_is_reported_and_leaves_the_new_file) {
  temp_dir_t dir;
  save_ok(small_bag(1), dir.file("bag.xml"));
  g_chosen_step = korvat2::_internal::save_renamed;
  scoped_save_hook_t hook(&fail_at_chosen_step);
  EXPECT_TRUE(save_variant_bag(small_bag(2), dir.file("bag.xml").c_str()).failed());
  EXPECT_EQ(load_ok(dir.file("bag.xml")), small_bag(2));
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
}

// ---------------------------------------------------------------- crash safety

class bag_file_failed_step_test : public testing::TestWithParam<save_step_t> {};

TEST_P(bag_file_failed_step_test, failure_before_the_rename_keeps_the_old_file) {
  temp_dir_t dir;
  const std::string path = dir.file("bag.xml");
  save_ok(small_bag(1), path);
  const std::string old_bytes = read_bytes(path);
  g_chosen_step = GetParam();
  const test_support::log_capture_t capture;
  {
    scoped_save_hook_t hook(&fail_at_chosen_step);
    EXPECT_TRUE(save_variant_bag(sample_bag(), path.c_str()).failed());
  }
  EXPECT_EQ(capture.count(error_level, "cannot write " + path + ": " + std::strerror(EIO)), 1u);
  EXPECT_EQ(read_bytes(path), old_bytes);
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
  save_ok(sample_bag(), path);  // the next save goes through
  EXPECT_EQ(load_ok(path), sample_bag());
  EXPECT_EQ(dir.names(), names_t{"bag.xml"});
}

TEST_P(bag_file_failed_step_test, failure_before_the_rename_creates_no_file) {
  temp_dir_t dir;
  g_chosen_step = GetParam();
  scoped_save_hook_t hook(&fail_at_chosen_step);
  EXPECT_TRUE(save_variant_bag(sample_bag(), dir.file("bag.xml").c_str()).failed());
  EXPECT_TRUE(dir.names().empty());
}

INSTANTIATE_TEST_SUITE_P(steps, bag_file_failed_step_test,
                         testing::Values(korvat2::_internal::save_temp_written,
                                         korvat2::_internal::save_temp_synced),
                         step_name);

class bag_file_crash_test : public testing::TestWithParam<save_step_t> {};

TEST_P(bag_file_crash_test, crash_leaves_exactly_the_old_or_the_new_file) {
  temp_dir_t dir;
  const variant_bag_t old_bag = small_bag(1);
  const variant_bag_t new_bag = sample_bag();
  save_ok(new_bag, dir.file("new.xml"));
  const std::string new_bytes = read_bytes(dir.file("new.xml"));
  const std::string path = dir.file("bag.xml");
  save_ok(old_bag, path);
  const std::string old_bytes = read_bytes(path);

  ASSERT_EQ(save_in_child_dying_at(new_bag, path, GetParam()), 0);

  const std::string bytes = read_bytes(path);
  const bool renamed = GetParam() == korvat2::_internal::save_renamed;
  EXPECT_EQ(bytes, renamed ? new_bytes : old_bytes);
  EXPECT_EQ(load_ok(path), renamed ? new_bag : old_bag);

  // A later save in the same folder still works.
  save_ok(small_bag(9), path);
  EXPECT_EQ(load_ok(path), small_bag(9));
}

TEST_P(bag_file_crash_test, crash_of_a_first_save_leaves_no_file_or_the_whole_new_one) {
  temp_dir_t dir;
  const variant_bag_t new_bag = sample_bag();
  const std::string path = dir.file("bag.xml");
  ASSERT_EQ(save_in_child_dying_at(new_bag, path, GetParam()), 0);
  if (GetParam() == korvat2::_internal::save_renamed) {
    EXPECT_EQ(load_ok(path), new_bag);
  } else {
    EXPECT_FALSE(korvat2::path_t::exists(path));
    expect_load_fails_and_keeps_bag(path, "no file after the crash");
  }
}

INSTANTIATE_TEST_SUITE_P(steps, bag_file_crash_test,
                         testing::Values(korvat2::_internal::save_temp_written,
                                         korvat2::_internal::save_temp_synced,
                                         korvat2::_internal::save_renamed),
                         step_name);

}  // namespace
