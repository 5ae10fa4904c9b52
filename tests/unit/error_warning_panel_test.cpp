#include "error_warning_panel_p.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(longest_word_test, a_character_of_a_script_without_blanks_is_a_word_of_its_own) {
  EXPECT_EQ(tamsel3::get_longest_word_length("結果ファイルを開けません"), 1u);
  EXPECT_EQ(tamsel3::get_longest_word_length("ファイル/home/taro/main.cppを開けません"), 19u);
  EXPECT_EQ(tamsel3::get_longest_word_length("🎉🎉🎉 ok"), 3u);
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

TEST(break_into_lines_test, a_line_without_a_blank_is_cut_at_the_limit_and_keeps_every_character) {
  EXPECT_EQ(tamsel3::break_into_lines(5, "abcdefgh"), (lines_t{"abcde", "fgh"}));
  EXPECT_EQ(tamsel3::break_into_lines(0, "abc"), (lines_t{"a", "b", "c"}));
}

TEST(break_into_lines_test, blanks_at_a_break_are_dropped_and_no_blank_line_comes_of_them) {
  EXPECT_EQ(tamsel3::break_into_lines(4, "abc   def"), (lines_t{"abc", "def"}));
  EXPECT_EQ(tamsel3::break_into_lines(3, "abc "), (lines_t{"abc"}));
  EXPECT_EQ(tamsel3::break_into_lines(3, "    abcdef"), (lines_t{"abc", "def"}));
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

// Messages in any script, broken as the panel breaks them: at the larger of the limit and
// the longest word.

std::size_t sequence_length(unsigned char lead) {
  if (lead < 0x80) {
    return 1;
  }
  if (lead >= 0xC2 && lead <= 0xDF) {
    return 2;
  }
  if (lead >= 0xE0 && lead <= 0xEF) {
    return 3;
  }
  return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

// Well-formed UTF-8 as far as the sequences' shape goes; each character counted.
bool is_utf8(const std::string& text, std::size_t& characters) {
  characters = 0;
  for (std::size_t pos = 0; pos < text.size(); ++characters) {
    const std::size_t length = sequence_length(static_cast<unsigned char>(text[pos]));
    if (length == 0 || pos + length > text.size()) {
      return false;
    }
    for (std::size_t next = pos + 1; next < pos + length; ++next) {
      if ((static_cast<unsigned char>(text[next]) & 0xC0) != 0x80) {
        return false;
      }
    }
    pos += length;
  }
  return true;
}

std::string without_separators(std::string text) {
  text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\n'; }),
             text.end());
  return text;
}

lines_t wrap_as_the_panel_does(unsigned limit, const std::string& text) {
  const unsigned max_chars = std::max(limit, tamsel3::get_longest_word_length(text));
  const lines_t lines = tamsel3::break_into_lines(max_chars, text);
  for (const std::string& line : lines) {
    std::size_t characters = 0;
    EXPECT_TRUE(is_utf8(line, characters)) << line;
    EXPECT_FALSE(line.empty()) << "an empty line in place of text";
    EXPECT_LE(characters, max_chars) << line;
  }
  const std::string joined = tamsel3::join_lines(lines);
  std::size_t characters = 0;
  EXPECT_TRUE(is_utf8(joined, characters));
  EXPECT_EQ(without_separators(joined), without_separators(text)) << "a character went missing";
  return lines;
}

TEST(wrap_any_script_test, accented_latin_in_a_path) {
  EXPECT_EQ(wrap_as_the_panel_does(29, "Cannot open /home/jürgen/üüü/src/main.cpp"),
            (lines_t{"Cannot open", "/home/jürgen/üüü/src/main.cpp"}));
  EXPECT_EQ(wrap_as_the_panel_does(20, "Die Ergebnisdatei für Lauf r004hs ließ sich nicht öffnen."),
            (lines_t{"Die Ergebnisdatei", "für Lauf r004hs ließ", "sich nicht öffnen."}));
}

TEST(wrap_any_script_test, cyrillic) {
  EXPECT_EQ(wrap_as_the_panel_does(20, "Не удалось открыть файл результатов: диск переполнен"),
            (lines_t{"Не удалось открыть", "файл результатов:", "диск переполнен"}));
}

TEST(wrap_any_script_test, cjk_without_blanks_wraps_at_the_limit) {
  EXPECT_EQ(wrap_as_the_panel_does(10, "結果ファイルを開けませんでした。ディスクがいっぱいです。"),
            (lines_t{"結果ファイルを開けま", "せんでした。ディスク", "がいっぱいです。"}));
  EXPECT_EQ(wrap_as_the_panel_does(4, "无法打开结果文件"), (lines_t{"无法打开", "结果文件"}));
}

TEST(wrap_any_script_test, a_path_among_japanese_stays_whole) {
  EXPECT_EQ(wrap_as_the_panel_does(12, "ファイル /home/taro/project/src/main.cpp を開けませんでした。"),
            (lines_t{"ファイル", "/home/taro/project/src/main.cpp", "を開けませんでした。"}));
  EXPECT_EQ(wrap_as_the_panel_does(8, "ファイル/home/taro/main.cppを開けません"),
            (lines_t{"ファイル", "/home/taro/main.cpp", "を開けません"}));
}

TEST(wrap_any_script_test, emoji_of_four_bytes) {
  EXPECT_EQ(wrap_as_the_panel_does(8, "Build finished 🎉🎉🎉🎉🎉 no errors ✅👍"),
            (lines_t{"Build", "finished", "🎉🎉🎉🎉🎉 no", "errors", "✅👍"}));
  EXPECT_EQ(tamsel3::break_into_lines(5, "🎉🎉🎉🎉🎉🎉🎉"), (lines_t{"🎉🎉🎉🎉🎉", "🎉🎉"}));
}

TEST(wrap_any_script_test, a_first_word_that_is_the_longest_stays_whole) {
  EXPECT_EQ(wrap_as_the_panel_does(20, "/very/long/path/to/the/result/folder/r004hs could not be opened"),
            (lines_t{"/very/long/path/to/the/result/folder/r004hs", "could not be opened"}));
  EXPECT_EQ(wrap_as_the_panel_does(10, "/very/long/path/to/the/result/folder/r004hs"),
            (lines_t{"/very/long/path/to/the/result/folder/r004hs"}));
}

TEST(wrap_any_script_test, line_feeds_in_any_script_keep_their_breaks) {
  EXPECT_EQ(wrap_as_the_panel_does(6, "Größe: 12 MB\nПуть: /tmp"),
            (lines_t{"Größe:", "12 MB", "Путь:", "/tmp"}));
}

}  // namespace
