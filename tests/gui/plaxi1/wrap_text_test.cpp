#include "gui_test.h"

#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/stattext.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using plaxi1::wrap_text;

const std::string ellipsis = "\xE2\x80\xA6";

/// A memory context with the normal font, to measure as wrap_text does.
class measuring_dc_t {
 public:
  measuring_dc_t() : m_bitmap(8, 8) {
    m_dc.SelectObject(m_bitmap);
    m_dc.SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal));
  }
  wxDC* dc() { return &m_dc; }
  int width(const std::string& text) {
    wxCoord width = 0;
    wxCoord height = 0;
    m_dc.GetTextExtent(wxString::FromUTF8(text), &width, &height);
    return width;
  }

 private:
  wxBitmap m_bitmap;
  wxMemoryDC m_dc;
};

std::vector<std::string> split(const std::string& text) {
  std::vector<std::string> lines;
  std::string::size_type begin = 0;
  for (;;) {
    const auto end = text.find('\n', begin);
    lines.push_back(text.substr(begin, end == std::string::npos ? std::string::npos : end - begin));
    if (end == std::string::npos) {
      return lines;
    }
    begin = end + 1;
  }
}

std::string without(std::string text, const std::string& characters) {
  text.erase(std::remove_if(text.begin(), text.end(),
                            [&](char c) { return characters.find(c) != std::string::npos; }),
             text.end());
  return text;
}

bool ends_with(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

TEST(wrap_text_test, breaks_between_words_where_the_next_word_no_longer_fits) {
  measuring_dc_t measure;
  const std::string text = "alpha beta gamma delta epsilon zeta";
  const int width = measure.width("alpha beta gamma");
  ASSERT_GT(measure.width("alpha beta gamma delta"), width);
  ASSERT_LE(measure.width("delta epsilon zeta"), width);
  unsigned long lines = 0;
  EXPECT_EQ(wrap_text(text, width, nullptr, lines, 0, measure.dc()), "alpha beta gamma\ndelta epsilon zeta");
  EXPECT_EQ(lines, 2u);
}

TEST(wrap_text_test, every_break_follows_the_measured_word_widths) {
  measuring_dc_t measure;
  const std::vector<std::string> words = {"The",     "quick", "brown", "fox", "jumps", "over",  "the",
                                          "lazy",    "dog",   "while", "the", "cat",   "keeps", "an",
                                          "unmoved", "eye",   "on",    "the", "whole", "affair"};
  std::string text;
  for (const auto& word : words) {
    text += (text.empty() ? "" : " ") + word;
  }
  const int width = measure.width("The quick brown fox") + 3;

  // The greedy breaks, worked out word by word.
  std::vector<std::string> expected;
  std::string line;
  for (const auto& word : words) {
    const std::string candidate = line.empty() ? word : line + " " + word;
    if (measure.width(candidate) <= width) {
      line = candidate;
    } else {
      expected.push_back(line);
      line = word;
    }
  }
  expected.push_back(line);

  unsigned long lines = 0;
  const std::string result = wrap_text(text, width, nullptr, lines, 0, measure.dc());
  EXPECT_EQ(split(result), expected);
  EXPECT_EQ(lines, expected.size());
  for (const auto& wrapped : split(result)) {
    EXPECT_LE(measure.width(wrapped), width) << wrapped;
  }
}

TEST(wrap_text_test, blanks_at_a_break_are_dropped) {
  measuring_dc_t measure;
  const int width = measure.width("first word");
  unsigned long lines = 0;
  EXPECT_EQ(wrap_text("first word      second", width, nullptr, lines, 0, measure.dc()),
            "first word\nsecond");
}

TEST(wrap_text_test, a_word_wider_than_the_line_is_broken_by_characters) {
  measuring_dc_t measure;
  const std::string word = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  const int width = measure.width("abcdefghij");
  unsigned long lines = 0;
  const std::string result = wrap_text("go " + word + " end", width, nullptr, lines, 0, measure.dc());
  const auto parts = split(result);
  ASSERT_GE(parts.size(), 4u);
  EXPECT_EQ(parts.front(), "go");
  // Each piece but the last is the longest start of the rest that fits.
  std::string rest = word;
  for (std::size_t i = 1; i + 1 < parts.size() && rest.size() > parts[i].size(); ++i) {
    std::size_t count = 1;
    while (count < rest.size() && measure.width(rest.substr(0, count + 1)) <= width) {
      ++count;
    }
    EXPECT_EQ(parts[i], rest.substr(0, count));
    rest = rest.substr(count);
  }
  EXPECT_EQ(without(result, " \n"), without("go" + word + "end", " "));
  for (const auto& part : parts) {
    EXPECT_LE(measure.width(part), width) << part;
  }
  EXPECT_EQ(lines, parts.size());
}

TEST(wrap_text_test, existing_line_breaks_stay) {
  measuring_dc_t measure;
  unsigned long lines = 0;
  EXPECT_EQ(wrap_text("one\ntwo three\n\nfour", 1000, nullptr, lines, 0, measure.dc()),
            "one\ntwo three\n\nfour");
  EXPECT_EQ(lines, 4u);

  const int width = measure.width("two three");
  EXPECT_EQ(wrap_text("one\ntwo three four", width, nullptr, lines, 0, measure.dc()), "one\ntwo three\nfour");
  EXPECT_EQ(lines, 3u);
}

TEST(wrap_text_test, max_lines_cuts_with_an_ellipsis_that_fits) {
  measuring_dc_t measure;
  const std::string text = "alpha beta gamma delta epsilon zeta eta theta iota kappa lambda";
  const int width = measure.width("alpha beta gamma");
  unsigned long lines = 0;
  const std::string result = wrap_text(text, width, nullptr, lines, 2, measure.dc());
  const auto parts = split(result);
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(lines, 2u);
  EXPECT_EQ(parts[0], "alpha beta gamma");
  EXPECT_TRUE(ends_with(parts[1], ellipsis)) << parts[1];
  EXPECT_LE(measure.width(parts[1]), width);
  EXPECT_EQ(parts[1].find("delta"), 0u);
}

TEST(wrap_text_test, max_lines_cuts_a_full_line_back_to_fit_the_ellipsis) {
  measuring_dc_t measure;
  const int width = measure.width("aaaa bbbb cccc");
  unsigned long lines = 0;
  const std::string result = wrap_text("aaaa bbbb cccc\ndddd", width, nullptr, lines, 1, measure.dc());
  EXPECT_EQ(lines, 1u);
  EXPECT_TRUE(ends_with(result, ellipsis)) << result;
  EXPECT_LE(measure.width(result), width);
  EXPECT_EQ(result.find("aaaa bbbb"), 0u);
}

TEST(wrap_text_test, text_within_max_lines_gets_no_ellipsis) {
  measuring_dc_t measure;
  unsigned long lines = 0;
  EXPECT_EQ(wrap_text("one\ntwo", 1000, nullptr, lines, 2, measure.dc()), "one\ntwo");
  EXPECT_EQ(lines, 2u);
}

TEST(wrap_text_test, no_width_means_no_wrapping) {
  measuring_dc_t measure;
  const std::string text = "a rather long line that would be wrapped at any small width\nsecond  line ";
  unsigned long lines = 0;
  EXPECT_EQ(wrap_text(text, 0, nullptr, lines, 0, measure.dc()), text);
  EXPECT_EQ(lines, 2u);
  EXPECT_EQ(wrap_text(text, -5, nullptr, lines, 10, measure.dc()), text);
  EXPECT_EQ(lines, 2u);
}

TEST(wrap_text_test, empty_text_is_one_empty_line) {
  measuring_dc_t measure;
  unsigned long lines = 0;
  EXPECT_EQ(wrap_text("", 100, nullptr, lines, 0, measure.dc()), "");
  EXPECT_EQ(lines, 1u);
}

TEST(wrap_text_test, utf8_text_stays_whole_characters) {
  measuring_dc_t measure;
  const std::string text =
      "Gr\xC3\xB6\xC3\x9F"
      "e \xC3\x84rger \xC3\x9C"
      "ber\xC3\xBC"
      "ber\xC3\xBC"
      "berl\xC3\xA4nge "
      "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\xE3\x81\xAE\xE3\x83\x86\xE3\x82\xAD\xE3\x82\xB9\xE3\x83\x88"
      "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E";
  const int width = measure.width(
      "\xC3\x9C"
      "ber\xC3\xBC");
  unsigned long lines = 0;
  const std::string result = wrap_text(text, width, nullptr, lines, 0, measure.dc());
  EXPECT_GT(lines, 3u);
  const wxString decoded = wxString::FromUTF8(result);
  ASSERT_FALSE(decoded.empty()) << "not valid UTF-8";
  EXPECT_EQ(without(result, " \n"), without(text, " "));
  for (const auto& part : split(result)) {
    EXPECT_FALSE(wxString::FromUTF8(part).empty()) << "a line is not valid UTF-8";
  }
}

TEST(wrap_text_test, utf8_ellipsis_after_a_cut) {
  measuring_dc_t measure;
  const std::string text = "\xC3\xA4\xC3\xB6\xC3\xBC \xC3\xA4\xC3\xB6\xC3\xBC \xC3\xA4\xC3\xB6\xC3\xBC";
  unsigned long lines = 0;
  const std::string result =
      wrap_text(text, measure.width("\xC3\xA4\xC3\xB6\xC3\xBC"), nullptr, lines, 1, measure.dc());
  EXPECT_EQ(lines, 1u);
  EXPECT_FALSE(wxString::FromUTF8(result).empty());
  EXPECT_TRUE(ends_with(result, ellipsis)) << result;
}

TEST(wrap_text_test, without_a_dc_the_window_font_measures) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "wrap");
  auto* label = new wxStaticText(frame, wxID_ANY, "label");
  label->SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_large));

  wxBitmap bitmap(8, 8);
  wxMemoryDC dc(bitmap);
  dc.SetFont(label->GetFont());
  wxCoord width = 0;
  wxCoord height = 0;
  dc.GetTextExtent("alpha beta gamma", &width, &height);

  const std::string text = "alpha beta gamma delta epsilon zeta eta theta";
  unsigned long by_window_lines = 0;
  unsigned long by_dc_lines = 0;
  EXPECT_EQ(wrap_text(text, width, label, by_window_lines, 0, nullptr),
            wrap_text(text, width, nullptr, by_dc_lines, 0, &dc));
  EXPECT_EQ(by_window_lines, by_dc_lines);
}

TEST(wrap_text_test, without_dc_and_window_the_normal_font_measures) {
  measuring_dc_t measure;
  const std::string text = "alpha beta gamma delta epsilon zeta eta theta";
  const int width = measure.width("alpha beta gamma");
  unsigned long lines = 0;
  unsigned long expected_lines = 0;
  EXPECT_EQ(wrap_text(text, width, nullptr, lines, 0, nullptr),
            wrap_text(text, width, nullptr, expected_lines, 0, measure.dc()));
  EXPECT_EQ(lines, expected_lines);
}

}  // namespace
