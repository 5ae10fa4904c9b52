#include <tamsel3/result_saving_data.h>

#include <gtest/gtest.h>

namespace {

using tamsel3::result_saving_data_t;

result_saving_data_t sample() {
  return result_saving_data_t(static_cast<result_saving_data_t::temp_storing_t>(3),
                              result_saving_data_t::proj_storing_on_disk, true, "r@@@{at}", "/tmp/results");
}

TEST(result_saving_data_test, constructor_stores_five_values_and_no_default_folder) {
  const result_saving_data_t data = sample();
  EXPECT_EQ(data.get_temp_storing(), 3);
  EXPECT_EQ(data.get_proj_storing(), result_saving_data_t::proj_storing_on_disk);
  EXPECT_TRUE(data.get_vs_accessibility());
  EXPECT_EQ(data.get_name_template(), "r@@@{at}");
  EXPECT_EQ(data.get_folder(), "/tmp/results");
  EXPECT_EQ(data.get_proj_default_folder(), "");
}

TEST(result_saving_data_test, setters_store_what_they_get_untested) {
  result_saving_data_t data = sample();
  data.set_temp_storing(static_cast<result_saving_data_t::temp_storing_t>(-7));
  data.set_proj_storing(result_saving_data_t::proj_storing_in_project);
  data.set_vs_accessibility(false);
  data.set_name_template("a/b*");
  data.set_folder("relative dir");
  data.set_proj_default_folder("/home/ann/project");
  EXPECT_EQ(data.get_temp_storing(), -7);
  EXPECT_EQ(data.get_proj_storing(), 0);
  EXPECT_FALSE(data.get_vs_accessibility());
  EXPECT_EQ(data.get_name_template(), "a/b*");
  EXPECT_EQ(data.get_folder(), "relative dir");
  EXPECT_EQ(data.get_proj_default_folder(), "/home/ann/project");
}

TEST(result_saving_data_test, copies_are_independent) {
  result_saving_data_t data = sample();
  data.set_proj_default_folder("/p");
  result_saving_data_t copy = data;
  copy.set_name_template("x@");
  copy.set_proj_default_folder("/q");
  EXPECT_EQ(data.get_name_template(), "r@@@{at}");
  EXPECT_EQ(data.get_proj_default_folder(), "/p");
  EXPECT_EQ(copy.get_folder(), "/tmp/results");
}

}  // namespace
