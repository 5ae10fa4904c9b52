#include "error_warning_panel.h"

#include <gtest/gtest.h>

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

}  // namespace
