#include <fathel2/result_directory_manager.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using fathel2::ResultDirectoryManager;

fathel2::error_t check(const std::string& pattern) {
  return ResultDirectoryManager::validateResultDirectoryPattern(pattern.c_str());
}

TEST(result_directory_pattern_test, ordinary_templates_pass) {
  for (const char* good : {"r@@@{at}", "r@@@", "@", "@@@@@@@@", "run-@@-{at}", "{at}@", "result @@@ of today",
                           "r@@@.old", "café@@"}) {
    EXPECT_EQ(check(good), fathel2::error_none) << good;
  }
}

TEST(result_directory_pattern_test, empty_or_blank_is_empty) {
  EXPECT_EQ(ResultDirectoryManager::validateResultDirectoryPattern(nullptr), fathel2::error_empty);
  EXPECT_EQ(check(""), fathel2::error_empty);
  EXPECT_EQ(check(" \t "), fathel2::error_empty);
}

TEST(result_directory_pattern_test, length_limit_is_120_bytes) {
  EXPECT_EQ(check("r@@@" + std::string(116, 'x')), fathel2::error_none);
  EXPECT_EQ(check("r@@@" + std::string(117, 'x')), fathel2::error_too_long);
}

TEST(result_directory_pattern_test, characters_a_folder_name_cant_hold_fail) {
  for (const char* bad :
       {"a/@", "a\\@", "a:@", "a*@", "a?@", "a\"@", "a<@", "a>@", "a|@", "a\t@", "a\x7f@"}) {
    EXPECT_EQ(check(bad), fathel2::error_bad_character) << bad;
  }
  EXPECT_EQ(check("a-b_c.d+e,f @"), fathel2::error_none);
}

TEST(result_directory_pattern_test, hidden_beginnings_fail) {
  EXPECT_EQ(check(".r@@@"), fathel2::error_hidden_name);
  EXPECT_EQ(check(" r@@@"), fathel2::error_hidden_name);
  EXPECT_EQ(check("r.@@@"), fathel2::error_none);
  EXPECT_EQ(check("r@@@ "), fathel2::error_none);  // the page trims what ends a template
}

TEST(result_directory_pattern_test, braces_only_for_one_tag) {
  EXPECT_EQ(check("{at}r@@@"), fathel2::error_none);
  EXPECT_EQ(check("r@@@{at}{at}"), fathel2::error_bad_placeholder);
  EXPECT_EQ(check("r@@@{xy}"), fathel2::error_bad_placeholder);
  EXPECT_EQ(check("r@@@{AT}"), fathel2::error_bad_placeholder);
  EXPECT_EQ(check("r@@@{at"), fathel2::error_bad_placeholder);
  EXPECT_EQ(check("r@@@}"), fathel2::error_bad_placeholder);
}

TEST(result_directory_pattern_test, exactly_one_run_of_one_to_eight_ats) {
  EXPECT_EQ(check("r{at}"), fathel2::error_no_number);
  EXPECT_EQ(check("r@@x@"), fathel2::error_several_numbers);
  EXPECT_EQ(check("@a@b@"), fathel2::error_several_numbers);
  EXPECT_EQ(check("r@@@@@@@@"), fathel2::error_none);
  EXPECT_EQ(check("r@@@@@@@@@"), fathel2::error_number_too_long);
}

TEST(result_directory_pattern_test, templates_that_can_give_a_reserved_name_fail) {
  EXPECT_EQ(check("data.@"), fathel2::error_reserved_name);  // result 0 is "data.0"
  EXPECT_EQ(check("DATA.@"), fathel2::error_reserved_name);
  EXPECT_EQ(check("@{at}"), fathel2::error_none);
  EXPECT_EQ(check("data.@@"), fathel2::error_none);  // numbers have two digits at least
  EXPECT_EQ(check("log@"), fathel2::error_none);     // a number always follows
  EXPECT_EQ(check("data.{at}@"), fathel2::error_none);
}

TEST(result_directory_pattern_test, first_fault_is_reported) {
  EXPECT_EQ(check("a/@@x@"), fathel2::error_bad_character);
  EXPECT_EQ(check(".@@x@"), fathel2::error_hidden_name);
}

TEST(result_directory_pattern_test, every_error_has_a_text) {
  EXPECT_STREQ(fathel2::toString(fathel2::error_none), "");
  for (int error = fathel2::error_empty; error <= fathel2::error_reserved_name; ++error) {
    const std::string text = fathel2::toString(static_cast<fathel2::error_t>(error));
    EXPECT_GT(text.size(), 20u) << error;
  }
  EXPECT_NE(std::string(fathel2::toString(static_cast<fathel2::error_t>(99))), "");
}

TEST(reserved_directory_name_test, the_five_upper_case_names_are_reserved) {
  for (const char* name : {"ARCHIVE", "CONFIG", "DATA.0", "LOG", "SQLITE-DB"}) {
    EXPECT_TRUE(ResultDirectoryManager::isReservedDirectoryName(name)) << name;
  }
}

TEST(reserved_directory_name_test, other_names_and_other_cases_are_not) {
  for (const char* name : {"log", "Config", "DATA", "DATA.1", "LOGS", "TMP", "", "R000HS"}) {
    EXPECT_FALSE(ResultDirectoryManager::isReservedDirectoryName(name)) << name;
  }
  EXPECT_FALSE(ResultDirectoryManager::isReservedDirectoryName(nullptr));
}

}  // namespace
