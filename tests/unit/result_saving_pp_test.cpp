#include <tamsel3/result_saving_pp.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using tamsel3::result_saving_pp_t;

std::string ats(const std::string& text, bool expect_change) {
  std::string copy = text;
  EXPECT_EQ(result_saving_pp_t::replace_wrong_ats(copy), expect_change) << text;
  return copy;
}

std::string filtered(const std::string& text, bool expect_news) {
  std::string copy = text;
  EXPECT_EQ(result_saving_pp_t::filter_result_template(copy), expect_news) << text;
  return copy;
}

TEST(replace_wrong_ats_test, stray_ats_after_the_first_run_go) {
  EXPECT_EQ(ats("ab@@cd@@ef", true), "ab@@cdef");
  EXPECT_EQ(ats("@a@b@", true), "@ab");
}

TEST(replace_wrong_ats_test, one_run_of_up_to_eight_stays) {
  EXPECT_EQ(ats("r@@@", false), "r@@@");
  EXPECT_EQ(ats("@@@@@@@@x", false), "@@@@@@@@x");
  EXPECT_EQ(ats("no number", false), "no number");
  EXPECT_EQ(ats("", false), "");
}

TEST(replace_wrong_ats_test, long_run_is_cut_to_eight_keeping_what_follows) {
  EXPECT_EQ(ats("r@@@@@@@@@", true), "r@@@@@@@@");
  EXPECT_EQ(ats("r" + std::string(12, '@') + "{at}", true), "r@@@@@@@@{at}");
}

TEST(replace_wrong_ats_test, stray_ats_after_a_full_run_go_too) {
  EXPECT_EQ(ats("@@@@@@@@x@", true), "@@@@@@@@x");
  EXPECT_EQ(ats("@x@@@@@@@@@@", true), "@x");
}

TEST(filter_result_template_test, trailing_blanks_go_without_news) {
  EXPECT_EQ(filtered("r@@@{at}  \t", false), "r@@@{at}");
}

TEST(filter_result_template_test, forbidden_characters_and_stray_ats_are_news) {
  EXPECT_EQ(filtered("r/@@@", true), "r@@@");
  EXPECT_EQ(filtered("r@@@x@", true), "r@@@x");
}

TEST(filter_result_template_test, unmendable_templates_become_the_default) {
  EXPECT_EQ(filtered("", true), "r@@@{at}");
  EXPECT_EQ(filtered("   ", true), "r@@@{at}");
  EXPECT_EQ(filtered("results", true), "r@@@{at}");
  EXPECT_EQ(filtered(".r@@@", true), "r@@@{at}");
  EXPECT_EQ(filtered("data.@", true), "r@@@{at}");
}

TEST(filter_result_template_test, good_template_stays_without_news) {
  EXPECT_EQ(filtered("run-@@@@-{at}", false), "run-@@@@-{at}");
}

}  // namespace
