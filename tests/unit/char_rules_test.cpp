#include <tamsel3/char_rules.h>

#include <gtest/gtest.h>

namespace {

using namespace tamsel3;

TEST(char_rules_test, the_three_sets_hold_their_characters_in_order) {
  EXPECT_EQ(file_disabled_chars, "\\/:*?\"<>|");
  EXPECT_EQ(folder_disabled_chars, "*\"<>|");
  EXPECT_EQ(directory_disabled_chars, "\"<>|");
}

TEST(char_rules_test, empty_folder_name_is_not_a_good_name) { EXPECT_FALSE(check_folder_name_for_chars("")); }

TEST(char_rules_test, drive_path_is_a_good_folder_but_not_a_good_file_name) {
  EXPECT_TRUE(check_folder_name_for_chars("C:\\tmp"));
  EXPECT_FALSE(check_file_name_for_chars("C:\\tmp", file_disabled_chars));
}

TEST(char_rules_test, emptiness_is_tested_only_for_names) {
  EXPECT_TRUE(check_string_for_disabled_symbols("", "abc"));
  EXPECT_FALSE(check_file_name_for_chars("", "abc"));
}

TEST(char_rules_test, empty_set_forbids_nothing) {
  EXPECT_TRUE(check_string_for_disabled_symbols("a*b?c", ""));
  EXPECT_TRUE(check_file_name_for_chars("name", ""));
}

TEST(char_rules_test, each_forbidden_character_is_found) {
  for (const char c : file_disabled_chars) {
    EXPECT_FALSE(check_string_for_disabled_symbols(std::string("ab") + c + "cd", file_disabled_chars)) << c;
  }
  EXPECT_TRUE(check_string_for_disabled_symbols("plain-name_1.txt", file_disabled_chars));
  EXPECT_TRUE(check_string_for_disabled_symbols("/opt/*/src?", directory_disabled_chars));
  EXPECT_FALSE(check_string_for_disabled_symbols("/opt/src|x", directory_disabled_chars));
}

TEST(char_rules_test, a_wild_card_makes_an_empty_path_and_so_a_bad_name) {
  EXPECT_FALSE(check_file_name_for_chars("a*b", ""));
  EXPECT_FALSE(check_folder_name_for_chars("/tmp/*"));
}

TEST(char_rules_test, disabled_char_string_by_index) {
  EXPECT_EQ(create_disabled_char_string(-1), "");
  EXPECT_EQ(create_disabled_char_string(9), "");
  EXPECT_EQ(create_disabled_char_string(8), "|");
  EXPECT_EQ(create_disabled_char_string(0), "\\");
  EXPECT_EQ(create_disabled_folder_char_string(0), "*");
  EXPECT_EQ(create_disabled_folder_char_string(4), "|");
  EXPECT_EQ(create_disabled_folder_char_string(5), "");
  EXPECT_EQ(create_disabled_char_string(directory_disabled_chars, 1), "<");
  EXPECT_EQ(create_disabled_char_string("", 0), "");
}

TEST(char_rules_test, replace_without_forbidden_characters_changes_nothing) {
  std::string text = "clean name";
  EXPECT_FALSE(replace_disabled_chars(text));
  EXPECT_EQ(text, "clean name");
  EXPECT_FALSE(replace_disabled_chars(text, ""));
  EXPECT_EQ(text, "clean name");
}

TEST(char_rules_test, replace_deletes_forbidden_characters) {
  std::string text = "a*b";
  EXPECT_TRUE(replace_disabled_chars(text, folder_disabled_chars));
  EXPECT_EQ(text, "ab");

  std::string file = "C:\\dir/na:me?*.txt";
  EXPECT_TRUE(replace_disabled_chars(file));
  EXPECT_EQ(file, "Cdirname.txt");

  std::string folder = "C:\\dir/<na>me?|";
  EXPECT_TRUE(replace_disabled_chars_in_folder(folder));
  EXPECT_EQ(folder, "C:\\dir/name?");
}

}  // namespace
