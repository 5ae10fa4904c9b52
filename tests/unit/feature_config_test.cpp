#include "fixtures.h"
#include "log_capture.h"

#include <korvat2/bag_file.h>
#include <quern2/product_locations.h>
#include <tamsel3/feature_config.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

namespace {

using korvat2::variant_bag_t;
using tamsel3::active_features_config_impl_t;
using tamsel3::feature_list_config_impl_t;
using test_support::read_bytes;
using test_support::temp_dir_t;

const char* const list_name = "evaluation_features.cfg";
const char* const choice_name = "active_evaluation_features.cfg";

struct feature_t {
  std::string env_variable;
  std::string name;
  std::string description;
};

variant_bag_t features_bag(const std::vector<feature_t>& features) {
  variant_bag_t list;
  for (const feature_t& f : features) {
    variant_bag_t feature;
    if (!f.env_variable.empty()) {
      feature.put("env_variable", f.env_variable);
    }
    if (!f.name.empty()) {
      feature.put("name", f.name);
    }
    if (!f.description.empty()) {
      feature.put("description", f.description);
    }
    list.add_variant_bag("feature", feature);
  }
  variant_bag_t bag;
  bag.add_variant_bag("features", list);
  return bag;
}

void write_bag(const std::string& path, const variant_bag_t& bag) {
  ASSERT_TRUE(korvat2::save_variant_bag(bag, path.c_str()).succeeded()) << path;
}

// The names in a choice file, in order, as the file holds them.
std::vector<std::string> names_in(const std::string& path) {
  variant_bag_t bag;
  EXPECT_TRUE(korvat2::load_variant_bag(bag, path.c_str(), "").succeeded()) << path;
  std::vector<std::string> names;
  variant_bag_t* features = bag.get<variant_bag_t>("features");
  EXPECT_NE(features, nullptr) << "no features bag in " << path;
  for (auto it = features ? features->begin_by_name<variant_bag_t>("feature")
                          : variant_bag_t::iterator_t<variant_bag_t>();
       !it.at_end(); it.next()) {
    const korvat2::variant_t* value = it.get_value().get<korvat2::variant_t>("env_variable");
    names.push_back(value ? value->get<std::string>() : std::string("<none>"));
  }
  return names;
}

class feature_config_test : public ::testing::Test {
 protected:
  temp_dir_t m_dir;
  korvat2::path_t dir() const { return korvat2::path_t(m_dir.path()); }
  std::string list_file() const { return m_dir.file(list_name); }
  std::string choice_file() const { return m_dir.file(choice_name); }
};

// --- the list ----------------------------------------------------------------------------

TEST_F(feature_config_test, no_list_file_loads_false_and_empty) {
  feature_list_config_impl_t list(dir());
  EXPECT_FALSE(list.load());
  EXPECT_EQ(list.get_count(), 0);
}

TEST_F(feature_config_test, list_reads_the_features_in_order) {
  write_bag(list_file(), features_bag({{"TAM_FAST", "Faster search", "Uses the new index."},
                                       {"TAM_DARK", "Dark charts", ""}}));
  feature_list_config_impl_t list(dir());
  ASSERT_TRUE(list.load());
  ASSERT_EQ(list.get_count(), 2);
  EXPECT_EQ(list.get_feature(0).env_variable, "TAM_FAST");
  EXPECT_EQ(list.get_feature(0).name, "Faster search");
  EXPECT_EQ(list.get_feature(0).description, "Uses the new index.");
  EXPECT_EQ(list.get_feature(1).env_variable, "TAM_DARK");
  EXPECT_EQ(list.get_feature(1).description, "");
}

TEST_F(feature_config_test, list_without_features_bag_is_true_and_empty) {
  variant_bag_t bag;
  bag.put("something", std::string("else"));
  write_bag(list_file(), bag);
  feature_list_config_impl_t list(dir());
  EXPECT_TRUE(list.load());
  EXPECT_EQ(list.get_count(), 0);
}

TEST_F(feature_config_test, features_bag_without_feature_is_true_and_empty) {
  variant_bag_t bag;
  bag.add_variant_bag("features", variant_bag_t());
  write_bag(list_file(), bag);
  feature_list_config_impl_t list(dir());
  EXPECT_TRUE(list.load());
  EXPECT_EQ(list.get_count(), 0);
}

TEST_F(feature_config_test, out_of_range_index_gives_empty_record) {
  write_bag(list_file(), features_bag({{"TAM_FAST", "Faster search", "Uses the new index."}}));
  feature_list_config_impl_t list(dir());
  ASSERT_TRUE(list.load());
  for (int index : {-1, list.get_count(), 1000}) {
    const auto info = list.get_feature(index);
    EXPECT_EQ(info.env_variable, "") << index;
    EXPECT_EQ(info.name, "") << index;
    EXPECT_EQ(info.description, "") << index;
  }
}

TEST_F(feature_config_test, second_load_doubles_the_list) {
  write_bag(list_file(), features_bag({{"TAM_FAST", "Faster search", ""}}));
  feature_list_config_impl_t list(dir());
  ASSERT_TRUE(list.load());
  ASSERT_TRUE(list.load());
  EXPECT_EQ(list.get_count(), 2);
}

TEST_F(feature_config_test, feature_with_only_a_variable_loads_with_empty_name) {
  write_bag(list_file(), features_bag({{"TAM_BARE", "", ""}}));
  feature_list_config_impl_t list(dir());
  ASSERT_TRUE(list.load());
  ASSERT_EQ(list.get_count(), 1);
  EXPECT_EQ(list.get_feature(0).env_variable, "TAM_BARE");
  EXPECT_EQ(list.get_feature(0).name, "");
}

TEST_F(feature_config_test, values_that_are_not_text_read_as_empty) {
  variant_bag_t feature;
  feature.put("env_variable", std::string("TAM_NUM"));
  feature.put("name", 42);
  variant_bag_t features;
  features.add_variant_bag("feature", feature);
  variant_bag_t bag;
  bag.add_variant_bag("features", features);
  write_bag(list_file(), bag);
  feature_list_config_impl_t list(dir());
  ASSERT_TRUE(list.load());
  ASSERT_EQ(list.get_count(), 1);
  EXPECT_EQ(list.get_feature(0).name, "");
}

// --- bad files: false (unreadable) or true and empty (wrong shape), never a change ------

struct bad_file_t {
  const char* what;
  std::string bytes;
  bool loads;
};

std::vector<bad_file_t> bad_files() {
  std::string random;
  unsigned seed = 12345;
  for (int i = 0; i < 512; ++i) {
    seed = seed * 1103515245u + 12345u;
    random.push_back(static_cast<char>(seed >> 16));
  }
  return {
      {"empty", "", false},
      {"random bytes", random, false},
      {"truncated", "<?xml version=\"1.0\"?>\n<bag><bag name=\"features\"><bag name=\"feat", false},
      {"other XML", "<?xml version=\"1.0\"?>\n<html><body>hello</body></html>\n", false},
      {"features as a value",
       "<?xml version=\"1.0\"?>\n<bag version=\"1\"><value name=\"features\" kind=\"text\">x</value></bag>\n",
       true},
      {"feature as values",
       "<?xml version=\"1.0\"?>\n<bag version=\"1\"><bag name=\"features\">"
       "<value name=\"feature\" kind=\"text\">TAM_FAST</value></bag></bag>\n",
       true},
      {"unknown elements only",
       "<?xml version=\"1.0\"?>\n<bag version=\"1\"><bag name=\"features\"><thing/>"
       "<bag name=\"other\"><value name=\"env_variable\" kind=\"text\">TAM_FAST</value></bag>"
       "</bag></bag>\n",
       true}};
}

TEST_F(feature_config_test, bad_list_files_load_nothing_and_stay_as_they_are) {
  for (const bad_file_t& bad : bad_files()) {
    const std::string path = m_dir.write(list_name, bad.bytes);
    feature_list_config_impl_t list(dir());
    EXPECT_EQ(list.load(), bad.loads) << bad.what;
    EXPECT_EQ(list.get_count(), 0) << bad.what;
    EXPECT_EQ(read_bytes(path), bad.bytes) << bad.what;
  }
}

TEST_F(feature_config_test, bad_choice_files_turn_nothing_on_and_stay_as_they_are) {
  for (const bad_file_t& bad : bad_files()) {
    const std::string path = m_dir.write(choice_name, bad.bytes);
    active_features_config_impl_t active(dir());
    EXPECT_EQ(active.load(), bad.loads) << bad.what;
    EXPECT_FALSE(active.is_turned_on("TAM_FAST")) << bad.what;
    EXPECT_EQ(read_bytes(path), bad.bytes) << bad.what;
  }
}

TEST_F(feature_config_test, choice_file_that_is_a_folder_loads_false) {
  ASSERT_EQ(::mkdir(choice_file().c_str(), 0700), 0);
  active_features_config_impl_t active(dir());
  EXPECT_FALSE(active.load());
  EXPECT_FALSE(active.is_turned_on("TAM_FAST"));
}

TEST_F(feature_config_test, unreadable_choice_file_loads_false) {
  write_bag(choice_file(), features_bag({{"TAM_FAST", "", ""}}));
  ASSERT_EQ(::chmod(choice_file().c_str(), 0), 0);
  const std::string before = read_bytes(choice_file());
  if (!before.empty()) {
    GTEST_SKIP() << "the file stays readable (running as root)";
  }
  active_features_config_impl_t active(dir());
  EXPECT_FALSE(active.load());
  EXPECT_FALSE(active.is_turned_on("TAM_FAST"));
  ::chmod(choice_file().c_str(), 0600);
}

// --- the choice --------------------------------------------------------------------------

TEST_F(feature_config_test, no_choice_file_loads_false_and_nothing_on) {
  active_features_config_impl_t active(dir());
  EXPECT_FALSE(active.load());
  EXPECT_FALSE(active.is_turned_on("TAM_FAST"));
}

TEST_F(feature_config_test, turn_on_twice_keeps_one_entry) {
  active_features_config_impl_t active(dir());
  active.turn_on("TAM_FAST");
  active.turn_on("TAM_FAST");
  active.turn_on("");
  ASSERT_TRUE(active.save());
  EXPECT_EQ(names_in(choice_file()), std::vector<std::string>{"TAM_FAST"});
}

TEST_F(feature_config_test, choice_file_with_a_name_twice_loads_both) {
  write_bag(choice_file(), features_bag({{"TAM_FAST", "", ""}, {"TAM_FAST", "", ""}}));
  active_features_config_impl_t active(dir());
  ASSERT_TRUE(active.load());
  EXPECT_TRUE(active.is_turned_on("TAM_FAST"));
  ASSERT_TRUE(active.save());
  EXPECT_EQ(names_in(choice_file()), (std::vector<std::string>{"TAM_FAST", "TAM_FAST"}));
}

TEST_F(feature_config_test, is_turned_on_compares_exactly) {
  active_features_config_impl_t active(dir());
  active.turn_on("TAM_FAST");
  EXPECT_TRUE(active.is_turned_on("TAM_FAST"));
  EXPECT_FALSE(active.is_turned_on("tam_fast"));
  EXPECT_FALSE(active.is_turned_on("TAM_FAS"));
  EXPECT_FALSE(active.is_turned_on(""));
}

TEST_F(feature_config_test, save_after_clear_writes_empty_features_and_loads_back_true) {
  write_bag(choice_file(), features_bag({{"TAM_FAST", "", ""}}));
  active_features_config_impl_t active(dir());
  ASSERT_TRUE(active.load());
  active.clear();
  EXPECT_TRUE(read_bytes(choice_file()).find("TAM_FAST") != std::string::npos) << "clear touched the file";
  ASSERT_TRUE(active.save());
  EXPECT_TRUE(names_in(choice_file()).empty());
  active_features_config_impl_t again(dir());
  EXPECT_TRUE(again.load());
  EXPECT_FALSE(again.is_turned_on("TAM_FAST"));
}

TEST_F(feature_config_test, empty_variable_in_choice_file_is_dropped) {
  write_bag(choice_file(), features_bag({{"", "named only", ""}, {"TAM_DARK", "", ""}}));
  active_features_config_impl_t active(dir());
  ASSERT_TRUE(active.load());
  EXPECT_FALSE(active.is_turned_on(""));
  EXPECT_TRUE(active.is_turned_on("TAM_DARK"));
  active.save();
  EXPECT_EQ(names_in(choice_file()), std::vector<std::string>{"TAM_DARK"});
}

TEST_F(feature_config_test, load_appends_to_what_is_on) {
  write_bag(choice_file(), features_bag({{"TAM_DARK", "", ""}}));
  active_features_config_impl_t active(dir());
  active.turn_on("TAM_FAST");
  ASSERT_TRUE(active.load());
  active.save();
  EXPECT_EQ(names_in(choice_file()), (std::vector<std::string>{"TAM_FAST", "TAM_DARK"}));
}

TEST_F(feature_config_test, save_makes_a_missing_folder) {
  const korvat2::path_t nested(m_dir.file("a/b"));
  active_features_config_impl_t active(nested);
  active.turn_on("TAM_FAST");
  EXPECT_TRUE(active.save());
  EXPECT_EQ(names_in(m_dir.file("a/b/") + choice_name), std::vector<std::string>{"TAM_FAST"});
}

bool fail_at_write(korvat2::_internal::save_step_t step) {
  return step != korvat2::_internal::save_temp_written;
}
bool fail_at_sync(korvat2::_internal::save_step_t step) {
  return step != korvat2::_internal::save_temp_synced;
}

// The ERROR lines of a capture that name `path`.
std::vector<std::string> errors_about(const test_support::log_capture_t& log, const std::string& path) {
  std::vector<std::string> found;
  for (const test_support::log_line_t& line : log.lines()) {
    if (line.level == 40000 && line.text.find(path) != std::string::npos) {
      found.push_back(line.text);
    }
  }
  return found;
}

TEST_F(feature_config_test, save_failing_part_way_leaves_the_old_file_whole_and_says_so) {
  write_bag(choice_file(), features_bag({{"TAM_OLD", "", ""}}));
  const std::string before = read_bytes(choice_file());
  for (auto hook : {&fail_at_write, &fail_at_sync}) {
    active_features_config_impl_t active(dir());
    active.turn_on("TAM_NEW");
    test_support::log_capture_t log;
    const auto previous = korvat2::_internal::set_save_step_hook(hook);
    EXPECT_TRUE(active.save()) << "the result doesn't depend on the write";
    korvat2::_internal::set_save_step_hook(previous);
    EXPECT_EQ(read_bytes(choice_file()), before);
    EXPECT_EQ(m_dir.names(), (std::set<std::string>{choice_name})) << "a temporary file was left";
    EXPECT_EQ(errors_about(log, choice_file()).size(), 1u);
  }
}

// A file where the folder should be stops the write for root as well.
TEST_F(feature_config_test, save_into_a_folder_that_is_a_file_logs_the_path_and_reason) {
  const std::string blocker = m_dir.write("blocked", "not a folder");
  active_features_config_impl_t active{korvat2::path_t(blocker)};
  active.turn_on("TAM_FAST");
  test_support::log_capture_t log;
  EXPECT_TRUE(active.save()) << "the result doesn't depend on the write";
  EXPECT_EQ(read_bytes(blocker), "not a folder");
  const std::vector<std::string> errors = errors_about(log, active.get_config_filename());
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_NE(errors[0].find(std::strerror(ENOTDIR)), std::string::npos) << errors[0];
}

TEST_F(feature_config_test, save_over_a_folder_of_that_name_logs_the_path_and_reason) {
  ASSERT_EQ(::mkdir(choice_file().c_str(), 0700), 0);
  active_features_config_impl_t active(dir());
  active.turn_on("TAM_FAST");
  test_support::log_capture_t log;
  EXPECT_TRUE(active.save());
  EXPECT_TRUE(std::filesystem::is_directory(choice_file())) << "the folder in the way was replaced";
  EXPECT_EQ(m_dir.names(), (std::set<std::string>{choice_name})) << "a temporary file was left";
  const std::vector<std::string> errors = errors_about(log, choice_file());
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_NE(errors[0].find(std::strerror(EISDIR)), std::string::npos) << errors[0];
}

TEST_F(feature_config_test, a_good_save_logs_no_error) {
  active_features_config_impl_t active(dir());
  active.turn_on("TAM_FAST");
  test_support::log_capture_t log;
  EXPECT_TRUE(active.save());
  EXPECT_TRUE(errors_about(log, choice_file()).empty());
}

// --- where the files are -----------------------------------------------------------------

TEST_F(feature_config_test, config_filename_is_in_the_given_folder) {
  active_features_config_impl_t active(dir());
  EXPECT_EQ(active.get_config_filename(), m_dir.file(choice_name));
}

TEST(feature_config_locations_test, empty_folder_means_the_features_folder_of_the_product) {
  temp_dir_t config;
  test_support::scoped_env_t xdg("XDG_CONFIG_HOME", config.path());
  quern2::IProductLocations::set(nullptr);  // the defaults read the variable anew
  const std::string expected = config.path() + "/tamsel3/features/" + choice_name;
  EXPECT_EQ(active_features_config_impl_t(korvat2::path_t()).get_config_filename(), expected);
  active_features_config_impl_t active{korvat2::path_t()};
  active.turn_on("TAM_FAST");
  active.save();
  EXPECT_EQ(names_in(expected), std::vector<std::string>{"TAM_FAST"});
  quern2::IProductLocations::set(nullptr);
}

class host_locations_t : public quern2::DefaultProductLocations {
 public:
  explicit host_locations_t(std::string dir) : m_dir(std::move(dir)) {}
  const char* getFeaturesDirectory() const override { return m_dir.c_str(); }

 private:
  std::string m_dir;
};

TEST(feature_config_locations_test, a_host_gives_its_own_features_folder) {
  temp_dir_t host_dir;
  write_bag(host_dir.file(list_name), features_bag({{"TAM_HOST", "From the host", ""}}));
  host_locations_t host(host_dir.path());
  quern2::IProductLocations::set(&host);
  feature_list_config_impl_t list{korvat2::path_t()};
  EXPECT_TRUE(list.load());
  EXPECT_EQ(list.get_count(), 1);
  EXPECT_EQ(active_features_config_impl_t(korvat2::path_t()).get_config_filename(),
            host_dir.file(choice_name));
  quern2::IProductLocations::set(nullptr);
}

}  // namespace
