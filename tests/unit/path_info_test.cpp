#include <tamsel3/path_info.h>

#include "fixtures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using korvat2::path_t;
using tamsel3::path_info_t;
using test_support::temp_dir_t;

// What every question answers for a line without a usable path.
void expect_unusable(const path_info_t& info) {
  EXPECT_FALSE(info.is_ok());
  EXPECT_FALSE(info.is_exists());
  EXPECT_FALSE(info.is_file());
  EXPECT_FALSE(info.is_directory());
  EXPECT_EQ(info.get_extension(), "");
  EXPECT_TRUE(info.extract_path().is_empty());
}

TEST(path_info_test, asterisk_is_a_one_character_string) {
  EXPECT_EQ(path_info_t::Asterisk, '*');
  EXPECT_STREQ(&path_info_t::Asterisk, "*");
}

TEST(path_info_test, empty_text_is_raw_and_unusable) {
  const path_info_t info{std::string()};
  EXPECT_TRUE(info.is_str_path());
  EXPECT_EQ(info.as_string(), "");
  EXPECT_TRUE(info.get_path().is_empty());
  expect_unusable(info);
}

TEST(path_info_test, empty_path_answers_like_the_empty_text) {
  const path_info_t info{path_t()};
  EXPECT_TRUE(info.is_str_path());
  EXPECT_EQ(info.as_string(), "");
  expect_unusable(info);
  const path_info_t made;
  EXPECT_TRUE(made.is_str_path());
  expect_unusable(made);
}

TEST(path_info_test, absolute_text_is_held_as_a_path) {
  const path_info_t info{std::string("/opt/src")};
  EXPECT_FALSE(info.is_str_path());
  EXPECT_EQ(info.get_path(), path_t("/opt/src"));
  EXPECT_EQ(info.as_string(), "/opt/src");
  EXPECT_TRUE(info.is_ok());
}

TEST(path_info_test, relative_text_stays_raw_and_fails) {
  const path_info_t info{std::string("src")};
  EXPECT_TRUE(info.is_str_path());
  EXPECT_TRUE(info.get_path().is_empty());
  EXPECT_EQ(info.as_string(), "src");
  expect_unusable(info);
}

TEST(path_info_test, leading_blank_makes_a_text_relative) {
  const path_info_t info{std::string(" /opt")};
  EXPECT_TRUE(info.is_str_path());
  EXPECT_EQ(info.as_string(), " /opt");
  expect_unusable(info);
}

TEST(path_info_test, relative_path_object_is_kept_as_given) {
  const path_info_t info{path_t("src")};
  EXPECT_FALSE(info.is_str_path());
  EXPECT_EQ(info.get_path(), path_t("src"));
  EXPECT_EQ(info.as_string(), "src");
  // Not inspected, so it is answered from as it stands.
  EXPECT_TRUE(info.is_ok());
  EXPECT_EQ(info.extract_path(), path_t("src"));
}

struct asterisk_row_t {
  const char* text;
  const char* extracted;  // empty: no path
};

class path_info_asterisk_test : public testing::TestWithParam<asterisk_row_t> {};

TEST_P(path_info_asterisk_test, first_absolute_piece_is_extracted_and_the_text_kept) {
  const asterisk_row_t row = GetParam();
  const path_info_t info{std::string(row.text)};
  EXPECT_TRUE(info.is_str_path());
  EXPECT_EQ(info.as_string(), row.text);
  EXPECT_EQ(info.extract_path().as_string(false), row.extracted);
  EXPECT_EQ(info.is_ok(), std::strlen(row.extracted) > 0);
  EXPECT_TRUE(info.get_path().is_empty());
}

INSTANTIATE_TEST_SUITE_P(rows, path_info_asterisk_test,
                         testing::Values(asterisk_row_t{"/opt/src/*", "/opt/src/"},
                                         asterisk_row_t{"/opt/*/src", "/opt/"},
                                         asterisk_row_t{"src/*/opt", "/opt"}, asterisk_row_t{"*/opt", "/opt"},
                                         asterisk_row_t{"src/*", ""}, asterisk_row_t{"*", ""},
                                         asterisk_row_t{"", ""}, asterisk_row_t{"***", ""},
                                         asterisk_row_t{"/a/*/b", "/a/"}, asterisk_row_t{"a/*/b", "/b"},
                                         asterisk_row_t{"a/**/b/*/c", "/b/"}, asterisk_row_t{" /opt/*", ""}));

TEST(path_info_test, text_of_asterisks_only_gives_no_path) {
  const path_info_t info{std::string("****")};
  expect_unusable(info);
  EXPECT_EQ(info.as_string(), "****");
}

TEST(path_info_test, file_system_questions_answer_for_the_piece_before_the_asterisk) {
  temp_dir_t dir;
  const path_info_t info{dir.path() + "/*"};
  EXPECT_TRUE(info.is_exists());
  EXPECT_TRUE(info.is_directory());
  EXPECT_FALSE(info.is_file());
  EXPECT_EQ(info.as_string(), dir.path() + "/*");
}

TEST(path_info_test, missing_absolute_path_is_a_file_that_does_not_exist) {
  temp_dir_t dir;
  const path_info_t info{dir.file("nothing/here")};
  EXPECT_TRUE(info.is_ok());
  EXPECT_FALSE(info.is_exists());
  EXPECT_FALSE(info.is_directory());
  EXPECT_TRUE(info.is_file());
}

TEST(path_info_test, existing_file_and_directory) {
  temp_dir_t dir;
  const path_info_t file{dir.write("a.cpp", "x")};
  EXPECT_TRUE(file.is_exists());
  EXPECT_TRUE(file.is_file());
  EXPECT_FALSE(file.is_directory());
  const path_info_t folder{dir.path()};
  EXPECT_TRUE(folder.is_exists());
  EXPECT_TRUE(folder.is_directory());
  EXPECT_FALSE(folder.is_file());
}

TEST(path_info_test, text_without_absolute_piece_is_no_file) {
  EXPECT_FALSE(path_info_t{std::string("src/*")}.is_file());
  EXPECT_FALSE(path_info_t{std::string("a.cpp")}.is_file());
}

TEST(path_info_test, extension_comes_from_the_extracted_path) {
  EXPECT_EQ(path_info_t{std::string("/opt/main.cpp")}.get_extension(), "cpp");
  EXPECT_EQ(path_info_t{std::string("/opt/main.cpp*")}.get_extension(), "cpp");
  EXPECT_EQ(path_info_t{std::string("main.cpp")}.get_extension(), "");
  EXPECT_EQ(path_info_t{std::string("/opt/Makefile")}.get_extension(), "");
}

TEST(path_info_test, check_extension_is_exact_and_case_sensitive) {
  path_info_t info{std::string("/opt/main.cpp")};
  EXPECT_FALSE(info.check_extension({}));
  EXPECT_FALSE(info.check_extension({"CPP", "Cpp"}));
  EXPECT_FALSE(info.check_extension({"cp", "cppx", ".cpp"}));
  EXPECT_TRUE(info.check_extension({"h", "cpp"}));
  path_info_t raw{std::string("main.cpp")};
  EXPECT_FALSE(raw.check_extension({"cpp"}));
}

TEST(path_info_test, path_wins_over_a_later_raw_text) {
  path_info_t info{std::string("/opt/first")};
  info.set_path(std::string("/opt/*"));
  EXPECT_EQ(info.as_string(), "/opt/first");
  EXPECT_FALSE(info.is_str_path());
  EXPECT_EQ(info.extract_path(), path_t("/opt/first"));
  info.set_path(std::string("relative"));
  EXPECT_EQ(info.as_string(), "/opt/first");
}

TEST(path_info_test, parsable_text_leaves_an_earlier_raw_text_unseen) {
  path_info_t info{std::string("src/*")};
  info.set_path(std::string("/opt/second"));
  EXPECT_EQ(info.as_string(), "/opt/second");
  // The raw text is still there: it shows again once the path is emptied.
  info.set_path(path_t());
  EXPECT_EQ(info.as_string(), "src/*");
  EXPECT_TRUE(info.is_str_path());
}

TEST(path_info_test, set_path_with_a_path_keeps_the_raw_text) {
  path_info_t info{std::string("one*")};
  info.set_path(path_t("/opt"));
  EXPECT_EQ(info.as_string(), "/opt");
  EXPECT_EQ(info.get_path(), path_t("/opt"));
}

TEST(path_info_test, later_raw_text_replaces_an_earlier_one) {
  path_info_t info{std::string("one*")};
  info.set_path(std::string("*/two"));
  EXPECT_EQ(info.as_string(), "*/two");
  EXPECT_EQ(info.extract_path(), path_t("/two"));
}

// A derived class that finds its path elsewhere changes every question at once.
class fixed_path_info_t : public path_info_t {
 public:
  explicit fixed_path_info_t(std::string path) : path_info_t(std::string("raw")), m_fixed(std::move(path)) {}
  korvat2::path_t extract_path() const override { return korvat2::path_t(m_fixed); }

 private:
  std::string m_fixed;
};

TEST(path_info_test, questions_go_through_the_virtual_extraction) {
  temp_dir_t dir;
  const fixed_path_info_t info(dir.write("x.txt", "x"));
  EXPECT_TRUE(info.is_ok());
  EXPECT_TRUE(info.is_exists());
  EXPECT_TRUE(info.is_file());
  EXPECT_FALSE(info.is_directory());
  EXPECT_EQ(info.get_extension(), "txt");
  EXPECT_EQ(info.as_string(), "raw");
}

TEST(path_info_test, copies_are_values) {
  path_info_t first{std::string("src/*")};
  path_info_t copy = first;
  first.set_path(std::string("/opt"));
  EXPECT_EQ(copy.as_string(), "src/*");
  EXPECT_EQ(first.as_string(), "/opt");
}

}  // namespace
