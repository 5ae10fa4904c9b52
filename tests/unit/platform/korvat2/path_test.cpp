#include <korvat2/path.h>

#include "fixtures.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace {

using korvat2::path_t;
using test_support::temp_dir_t;

std::string text_of(const path_t& path) { return path.as_string(false); }

std::string appended(const char* left, const char* right) {
  path_t path(left);
  path.append(path_t(right));
  return text_of(path);
}

std::string branch(const char* text) { return path_t(text).get_branch(); }
std::string leaf(const char* text) { return path_t(text).get_leaf(); }
std::string ext(const char* text) { return path_t(text).get_ext(); }

// The normalized text, or "<false>" with the text left behind when normalize refused.
std::string normalized(const char* text) {
  path_t path(text);
  const path_t before = path;
  if (!path.normalize()) {
    return path == before ? "<false>" : "<false, changed to " + text_of(path) + ">";
  }
  return text_of(path);
}

// The error that validate gives, -1 when it accepts the text.
int validation_error(const std::string& text, bool must_be_absolute) {
  int error = -1;
  const bool valid = path_t::validate(text, must_be_absolute, error);
  EXPECT_EQ(valid, error == -1) << "for \"" << text << "\"";
  return error;
}

// ---------------------------------------------------------------- construction

TEST(path_test, default_path_is_empty) {
  const path_t path;
  EXPECT_TRUE(path.is_empty());
  EXPECT_EQ(text_of(path), "");
  EXPECT_EQ(path.as_string(true), "");
  EXPECT_FALSE(path.is_absolute());
}

TEST(path_test, constructor_keeps_text_as_written) {
  EXPECT_EQ(text_of(path_t("/a//b/./c/")), "/a//b/./c/");
  EXPECT_EQ(text_of(path_t(std::string("rel/path"))), "rel/path");
  EXPECT_EQ(text_of(path_t(" spaced name ")), " spaced name ");
  EXPECT_EQ(text_of(path_t("C:\\tmp")), "C:\\tmp");
  EXPECT_EQ(text_of(path_t("a?b[c]")), "a?b[c]");
  EXPECT_FALSE(path_t(" ").is_empty());
}

TEST(path_test, constructor_rejects_empty_nul_and_wildcard_texts) {
  const char* no_text = nullptr;
  EXPECT_TRUE(path_t(no_text).is_empty());
  EXPECT_TRUE(path_t("").is_empty());
  EXPECT_TRUE(path_t(std::string()).is_empty());
  EXPECT_TRUE(path_t(std::string("/a\0b", 4)).is_empty());
  EXPECT_TRUE(path_t(std::string(1, '\0')).is_empty());
  EXPECT_TRUE(path_t("*").is_empty());
  EXPECT_TRUE(path_t("/home/*/docs").is_empty());
  EXPECT_TRUE(path_t(std::string("/home/*.txt")).is_empty());
}

TEST(path_test, assign_copies_the_text) {
  path_t path("/old");
  path.assign(path_t("new/one"));
  EXPECT_EQ(text_of(path), "new/one");
  path.assign(path_t());
  EXPECT_TRUE(path.is_empty());
}

TEST(path_test, equality_compares_the_text_as_written) {
  EXPECT_EQ(path_t("/a/b"), path_t(std::string("/a/b")));
  EXPECT_NE(path_t("/a/b"), path_t("/a/b/"));
  EXPECT_EQ(path_t("*"), path_t());
}

// ---------------------------------------------------------------- as_string, is_absolute

TEST(path_test, as_string_adds_a_trailing_separator_only_when_asked) {
  EXPECT_EQ(path_t("/a/b").as_string(false), "/a/b");
  EXPECT_EQ(path_t("/a/b").as_string(true), "/a/b/");
  EXPECT_EQ(path_t("/a/b/").as_string(false), "/a/b/");
  EXPECT_EQ(path_t("/a/b/").as_string(true), "/a/b/");
  EXPECT_EQ(path_t("/").as_string(true), "/");
  EXPECT_EQ(path_t("a").as_string(true), "a/");
}

TEST(path_test, is_absolute_means_a_leading_separator) {
  EXPECT_TRUE(path_t("/").is_absolute());
  EXPECT_TRUE(path_t("/a").is_absolute());
  EXPECT_TRUE(path_t("//net").is_absolute());
  EXPECT_FALSE(path_t("a/b").is_absolute());
  EXPECT_FALSE(path_t("./a").is_absolute());
  EXPECT_FALSE(path_t("~/a").is_absolute());
  EXPECT_FALSE(path_t(" /a").is_absolute());
}

// ---------------------------------------------------------------- append

TEST(path_test, append_puts_one_separator_between) {
  EXPECT_EQ(appended("a", "b"), "a/b");
  EXPECT_EQ(appended("/a", "b/c"), "/a/b/c");
  EXPECT_EQ(appended("a/", "b"), "a/b");
  EXPECT_EQ(appended("a", "/b"), "a/b");
  EXPECT_EQ(appended("a/", "/b"), "a/b");
  EXPECT_EQ(appended("a/", "//b/"), "a/b/");
  EXPECT_EQ(appended("/", "b"), "/b");
  EXPECT_EQ(appended("/", "/b"), "/b");
}

TEST(path_test, append_with_an_empty_side_keeps_the_other) {
  EXPECT_EQ(appended("a/b", ""), "a/b");
  EXPECT_EQ(appended("", "c/d"), "c/d");
  EXPECT_EQ(appended("", "/abs"), "/abs");
  EXPECT_EQ(appended("", ""), "");
  EXPECT_EQ(appended("a", "*"), "a");  // the wild-card text is the empty path
}

TEST(path_test, append_of_a_lone_separator_ends_the_path_in_one) {
  EXPECT_EQ(appended("a", "/"), "a/");
  EXPECT_EQ(appended("a/", "/"), "a/");
}

TEST(path_test, repeated_append_builds_a_path) {
  path_t path("/root");
  for (const char* part : {"one", "two/", "three"}) {
    path.append(path_t(part));
  }
  EXPECT_EQ(text_of(path), "/root/one/two/three");
}

// ---------------------------------------------------------------- branch, leaf, ext

TEST(path_test, get_branch_gives_the_parent) {
  EXPECT_EQ(branch("/a/b"), "/a");
  EXPECT_EQ(branch("/a"), "/");
  EXPECT_EQ(branch("/"), "");
  EXPECT_EQ(branch("a"), "");
  EXPECT_EQ(branch("/a/b/"), "/a");
  EXPECT_EQ(branch("/a/b//"), "/a");
  EXPECT_EQ(branch("/a//b"), "/a");
  EXPECT_EQ(branch("a/b/c"), "a/b");
  EXPECT_EQ(branch("a/"), "");
  EXPECT_EQ(branch("//a"), "/");
  EXPECT_EQ(branch("//"), "");
  EXPECT_EQ(branch(""), "");
}

TEST(path_test, get_leaf_gives_the_last_component) {
  EXPECT_EQ(leaf("/a/b"), "b");
  EXPECT_EQ(leaf("/a/b/"), "b");
  EXPECT_EQ(leaf("/a"), "a");
  EXPECT_EQ(leaf("a"), "a");
  EXPECT_EQ(leaf("/"), "");
  EXPECT_EQ(leaf("//"), "");
  EXPECT_EQ(leaf(""), "");
  EXPECT_EQ(leaf("dir/file.txt"), "file.txt");
}

TEST(path_test, branch_and_leaf_make_the_path_again) {
  for (const char* text : {"/a/b", "/a", "a/b/c", "/usr/share/doc"}) {
    path_t joined(branch(text));
    joined.append(path_t(leaf(text)));
    EXPECT_EQ(text_of(joined), text);
  }
}

TEST(path_test, get_ext_gives_the_text_after_the_last_dot_of_the_leaf) {
  EXPECT_EQ(ext("a.c++"), "c++");
  EXPECT_EQ(ext("Makefile"), "");
  EXPECT_EQ(ext("orlane_test"), "");
  EXPECT_EQ(ext(".profile"), "");
  EXPECT_EQ(ext("x.tar.gz"), "gz");
  EXPECT_EQ(ext("dir.d/file"), "");
  EXPECT_EQ(ext("/home/user/report.PDF"), "PDF");
  EXPECT_EQ(ext("/dir/file.txt/"), "txt");
  EXPECT_EQ(ext("trailing."), "");
  EXPECT_EQ(ext(".."), "");
  EXPECT_EQ(ext("."), "");
  EXPECT_EQ(ext(""), "");
}

// ---------------------------------------------------------------- normalize

TEST(path_test, normalize_drops_dots_and_repeated_separators) {
  EXPECT_EQ(normalized("/a/./b//c/"), "/a/b/c");
  EXPECT_EQ(normalized("//a///b"), "/a/b");
  EXPECT_EQ(normalized("./a/."), "a");
  EXPECT_EQ(normalized("/"), "/");
  EXPECT_EQ(normalized("/./"), "/");
  EXPECT_EQ(normalized("."), ".");
  EXPECT_EQ(normalized("./"), ".");
}

TEST(path_test, normalize_lets_dot_dot_take_away_the_component_before_it) {
  EXPECT_EQ(normalized("/a/b/../c"), "/a/c");
  EXPECT_EQ(normalized("/a/b/../../c"), "/c");
  EXPECT_EQ(normalized("/a/.."), "/");
  EXPECT_EQ(normalized("a/../b"), "b");
  EXPECT_EQ(normalized("a/.."), ".");
  EXPECT_EQ(normalized("a/b/../../.."), "..");
}

TEST(path_test, normalize_keeps_leading_dot_dot_of_a_relative_path) {
  EXPECT_EQ(normalized("../a"), "../a");
  EXPECT_EQ(normalized("../../a/./b"), "../../a/b");
  EXPECT_EQ(normalized(".."), "..");
}

TEST(path_test, normalize_refuses_dot_dot_above_the_root_and_keeps_the_path) {
  EXPECT_EQ(normalized("/.."), "<false>");
  EXPECT_EQ(normalized("/../a"), "<false>");
  EXPECT_EQ(normalized("/a/../../b"), "<false>");
  EXPECT_EQ(normalized("//a/./../.."), "<false>");
}

TEST(path_test, normalize_of_the_empty_path_is_false) {
  path_t path;
  EXPECT_FALSE(path.normalize());
  EXPECT_TRUE(path.is_empty());
}

TEST(path_test, normalize_keeps_names_that_only_look_like_dots) {
  EXPECT_EQ(normalized("/a/.hidden/..."), "/a/.hidden/...");
  EXPECT_EQ(normalized("/a/..b/c."), "/a/..b/c.");
}

TEST(path_test, normalize_twice_changes_nothing_more) {
  for (const char* text : {"/a/./b//../c/", "x/../../y", "./."}) {
    path_t path(text);
    ASSERT_TRUE(path.normalize()) << text;
    const path_t once = path;
    ASSERT_TRUE(path.normalize()) << text;
    EXPECT_EQ(path, once) << text;
  }
}

// ---------------------------------------------------------------- file system

TEST(path_test, exists_and_is_directory_look_at_the_file_system) {
  temp_dir_t dir;
  const std::string file = dir.file("file.txt");
  test_support::write_bytes(file, "x");
  const std::string missing = dir.file("missing");

  EXPECT_TRUE(path_t::exists(dir.path()));
  EXPECT_TRUE(path_t::is_directory(dir.path()));
  EXPECT_TRUE(path_t::exists(file));
  EXPECT_FALSE(path_t::is_directory(file));
  EXPECT_FALSE(path_t::exists(missing));
  EXPECT_FALSE(path_t::is_directory(missing));
  EXPECT_FALSE(path_t::exists(""));
  EXPECT_FALSE(path_t::is_directory(""));
  EXPECT_TRUE(path_t::is_directory(dir.path() + "/"));
  EXPECT_FALSE(path_t::exists(file + "/"));
}

TEST(path_test, exists_follows_symbolic_links) {
  temp_dir_t dir;
  ASSERT_EQ(::symlink(dir.path().c_str(), dir.file("to_dir").c_str()), 0);
  ASSERT_EQ(::symlink(dir.file("nowhere").c_str(), dir.file("dangling").c_str()), 0);
  EXPECT_TRUE(path_t::is_directory(dir.file("to_dir")));
  EXPECT_FALSE(path_t::exists(dir.file("dangling")));
}

// ---------------------------------------------------------------- validate

TEST(path_test, validate_accepts_usable_paths_and_leaves_error_alone) {
  EXPECT_EQ(validation_error("/usr/share", true), -1);
  EXPECT_EQ(validation_error("/", true), -1);
  EXPECT_EQ(validation_error("relative/dir", false), -1);
  EXPECT_EQ(validation_error(" /lead", false), -1);
  EXPECT_EQ(validation_error("/with spaces/and-\xC3\xBCmlauts", true), -1);

  int error = 42;
  EXPECT_TRUE(path_t::validate("/ok", true, error));
  EXPECT_EQ(error, 42);
}

TEST(path_test, validate_rejects_blank_text) {
  EXPECT_EQ(validation_error("", false), path_t::error_empty);
  EXPECT_EQ(validation_error("   ", false), path_t::error_empty);
  EXPECT_EQ(validation_error(" \t ", true), path_t::error_empty);
}

TEST(path_test, validate_rejects_a_nul_byte) {
  EXPECT_EQ(validation_error(std::string("/a\0b", 4), true), path_t::error_nul);
  EXPECT_EQ(validation_error(std::string("\0", 1), false), path_t::error_nul);
}

TEST(path_test, validate_rejects_a_wildcard) {
  EXPECT_EQ(validation_error("/home/*", true), path_t::error_wildcard);
  EXPECT_EQ(validation_error("*", false), path_t::error_wildcard);
}

TEST(path_test, validate_rejects_relative_paths_only_when_absolute_is_wanted) {
  EXPECT_EQ(validation_error("relative", true), path_t::error_relative);
  EXPECT_EQ(validation_error("./here", true), path_t::error_relative);
  EXPECT_EQ(validation_error(" /lead", true), path_t::error_relative);
  EXPECT_EQ(validation_error("relative", false), -1);
}

TEST(path_test, validate_limits_the_length_of_one_component) {
  const std::string longest(255, 'n');
  EXPECT_EQ(validation_error("/dir/" + longest, true), -1);
  EXPECT_EQ(validation_error("/dir/" + longest + "n", true), path_t::error_name_too_long);
  EXPECT_EQ(validation_error(longest + "n/dir", false), path_t::error_name_too_long);
}

TEST(path_test, validate_limits_the_length_of_the_path) {
  std::string longest;
  while (longest.size() < 4095) {
    longest += "/d";
  }
  longest.resize(4095);
  EXPECT_EQ(validation_error(longest, true), -1);
  EXPECT_EQ(validation_error(longest + "x", true), path_t::error_path_too_long);
}

TEST(path_test, validate_overwrites_an_earlier_error) {
  int error = path_t::error_wildcard;
  EXPECT_FALSE(path_t::validate("rel", true, error));
  EXPECT_EQ(error, path_t::error_relative);
}

}  // namespace
