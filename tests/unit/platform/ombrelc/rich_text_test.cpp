#include "rich_text_p.h"

#include <gtest/gtest.h>

namespace {

using namespace ombrelcfrw7::_internal;

TEST(ombrelc_rich_text_test, without_html_tags_are_text_and_newlines_break) {
  const auto runs = parse_rich_text("a <b>x</b>\nnext", false);
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[0], (text_run_t{"a <b>x</b>", style_plain, false}));
  EXPECT_TRUE(runs[1].line_break);
  EXPECT_EQ(runs[2].text, "next");
  EXPECT_EQ(plain_text("a <b>&amp;</b>", false), "a <b>&amp;</b>");
}

TEST(ombrelc_rich_text_test, bold_italic_and_breaks_make_styled_runs) {
  const auto runs = parse_rich_text("one <b>two <i>three</i></b><br>four", true);
  ASSERT_EQ(runs.size(), 5u);
  EXPECT_EQ(runs[0], (text_run_t{"one ", style_plain, false}));
  EXPECT_EQ(runs[1], (text_run_t{"two ", style_bold, false}));
  EXPECT_EQ(runs[2], (text_run_t{"three", style_bold | style_italic, false}));
  EXPECT_TRUE(runs[3].line_break);
  EXPECT_EQ(runs[4], (text_run_t{"four", style_plain, false}));
}

TEST(ombrelc_rich_text_test, tags_are_case_insensitive_and_br_may_close_itself) {
  EXPECT_EQ(plain_text("a<BR/>b<br />c<B>d</B>", true), "a\nb\ncd");
  const auto runs = parse_rich_text("<B>d</B>", true);
  ASSERT_EQ(runs.size(), 1u);
  EXPECT_EQ(runs[0].style, style_bold);
}

TEST(ombrelc_rich_text_test, unknown_tags_are_dropped_and_entities_decoded) {
  EXPECT_EQ(plain_text("<font color=red>x</font> &lt;y&gt; &amp; &quot;z&quot;&nbsp;!", true),
            "x <y> & \"z\"\xC2\xA0!");
  EXPECT_EQ(plain_text("&unknown; & alone", true), "&unknown; & alone");
  EXPECT_EQ(plain_text("a < b", true), "a < b");
}

TEST(ombrelc_rich_text_test, unbalanced_closing_tags_do_not_underflow) {
  const auto runs = parse_rich_text("</b>x<b>y", true);
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0].style, style_plain);
  EXPECT_EQ(runs[1].style, style_bold);
}

// Every character 10 px wide.
std::vector<text_line_t> wrap(const std::vector<std::string>& runs, int width, bool word_wrap) {
  std::vector<std::vector<int>> extents;
  for (const auto& run : runs) {
    std::vector<int> e;
    for (std::size_t i = 0; i < run.size(); ++i) {
      e.push_back(static_cast<int>(i + 1) * 10);
    }
    extents.push_back(e);
  }
  return break_lines(
      runs.size(), [&](std::size_t r) { return runs[r] == "\n"; },
      [&](std::size_t r) -> const std::vector<int>& { return extents[r]; },
      [&](std::size_t r, std::size_t i) { return runs[r][i] == ' '; }, width, word_wrap);
}

TEST(ombrelc_rich_text_test, lines_break_at_the_last_space_that_fits) {
  const auto lines = wrap({"aaa bbb ccc"}, 75, true);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].width, 70);  // "aaa bbb", the space at the break dropped
  EXPECT_EQ(lines[1].pieces[0].begin, 8u);
  EXPECT_EQ(lines[1].width, 30);
}

TEST(ombrelc_rich_text_test, long_words_and_wrapping_without_words_break_between_characters) {
  auto lines = wrap({"abcdefghij"}, 35, true);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0].width, 30);
  lines = wrap({"aaa bbb"}, 55, false);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].width, 50);
  lines = wrap({"abc"}, 5, true);  // a line keeps one character even when it doesn't fit
  EXPECT_EQ(lines.size(), 3u);
}

TEST(ombrelc_rich_text_test, a_word_that_does_not_fit_after_an_earlier_run_moves_down) {
  const auto lines = wrap({"aaa ", "bbbbb"}, 60, true);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].pieces.size(), 1u);
  EXPECT_EQ(lines[1].pieces[0].run, 1u);
  const auto unlimited = wrap({"aaa", "\n", "bb"}, 0, true);
  ASSERT_EQ(unlimited.size(), 2u);
  EXPECT_EQ(unlimited[1].width, 20);
}

}  // namespace
