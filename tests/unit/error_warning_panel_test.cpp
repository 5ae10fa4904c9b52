#include "error_warning_panel.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(longest_word_test, counts_the_longest_word) {
  EXPECT_EQ(tamsel3::get_longest_word_length("a bb\tccc\ndd"), 3u);
  EXPECT_EQ(tamsel3::get_longest_word_length("unbreakable"), 11u);
  EXPECT_EQ(tamsel3::get_longest_word_length("two  blanks"), 6u);
}

TEST(longest_word_test, separators_alone_give_zero) {
  EXPECT_EQ(tamsel3::get_longest_word_length(""), 0u);
  EXPECT_EQ(tamsel3::get_longest_word_length(" \n\t  "), 0u);
}

TEST(longest_word_test, counts_characters_not_bytes) {
  EXPECT_EQ(tamsel3::get_longest_word_length("\xC3\xA4\xC3\xA4\xC3\xA4 ab"), 3u);  // äää ab
}

TEST(longest_word_test, other_punctuation_belongs_to_the_word) {
  EXPECT_EQ(tamsel3::get_longest_word_length("path/to/file.c, here"), 15u);
}

using lines_t = std::vector<std::string>;

// Ten words at a width of 420 pixels and a character width of 10: 42 characters a line.
TEST(break_into_lines_test, breaks_at_the_last_blank_before_the_limit) {
  const std::string text = "The analysis could not write results into the chosen folder";
  EXPECT_EQ(tamsel3::break_into_lines(42, text),
            (lines_t{"The analysis could not write results into", "the chosen folder"}));
}

TEST(break_into_lines_test, the_blank_at_a_break_is_dropped_and_the_count_goes_on_from_it) {
  const std::string text =
      "The analysis could not write its results into the chosen result folder because the "
      "disk is full";
  EXPECT_EQ(tamsel3::break_into_lines(42, text),
            (lines_t{"The analysis could not write its results", "into the chosen result folder because the",
                     "disk is full"}));
}

TEST(break_into_lines_test, a_word_as_long_as_the_limit_stays_whole) {
  const std::string word(60, 'x');
  EXPECT_EQ(tamsel3::break_into_lines(60, "ab cd " + word + " ef"), (lines_t{"ab cd", word, "ef"}));
}

TEST(break_into_lines_test, line_feeds_keep_their_breaks_and_restart_the_count) {
  EXPECT_EQ(tamsel3::break_into_lines(10, "aaaa bbbb\ncccc dddd eeee"),
            (lines_t{"aaaa bbbb", "cccc dddd", "eeee"}));
  EXPECT_EQ(tamsel3::break_into_lines(100, "first\n\nthird"), (lines_t{"first", "", "third"}));
}

TEST(break_into_lines_test, a_final_line_feed_adds_no_line) {
  EXPECT_EQ(tamsel3::break_into_lines(10, "a\n"), (lines_t{"a"}));
  EXPECT_EQ(tamsel3::break_into_lines(10, "\n"), (lines_t{""}));
  EXPECT_TRUE(tamsel3::break_into_lines(10, "").empty());
}

TEST(break_into_lines_test, without_a_blank_a_line_loses_its_first_character) {
  EXPECT_EQ(tamsel3::break_into_lines(5, "abcdefgh"), (lines_t{"", "", "", "defgh"}));
}

TEST(break_into_lines_test, a_huge_limit_breaks_only_at_line_feeds) {
  const std::string text = std::string(500, 'a') + " " + std::string(500, 'b') + "\nc";
  EXPECT_EQ(tamsel3::break_into_lines(4294967295u, text),
            (lines_t{std::string(500, 'a') + " " + std::string(500, 'b'), "c"}));
}

TEST(join_lines_test, joins_with_one_line_feed_between_lines) {
  EXPECT_EQ(tamsel3::join_lines({"one", "two", "three"}), "one\ntwo\nthree");
  EXPECT_EQ(tamsel3::join_lines({"one"}), "one");
  EXPECT_EQ(tamsel3::join_lines({"", ""}), "\n");
  EXPECT_EQ(tamsel3::join_lines({}), "");
}

TEST(join_lines_test, breaking_and_joining_keeps_line_feeds) {
  const std::string text = "first line\nsecond line";
  EXPECT_EQ(tamsel3::join_lines(tamsel3::break_into_lines(100, text)), text);
}

}  // namespace
