#pragma once
// The text of captions: a small HTML subset parsed into styled runs, their plain text, and
// the greedy line breaking that wraps them.
#include <plaxi1/text_metrics.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace ombrelcfrw7::_internal {

/// The style bits of a run: those of plaxi1's text measures, so that runs measure as they are.
enum run_style_t : std::uint8_t {
  style_plain = plaxi1::text_plain,
  style_bold = plaxi1::text_bold,
  style_italic = plaxi1::text_italic
};

/// A piece of text in one style; a run with `line_break` ends the line and has no text.
struct text_run_t {
  std::string text;
  std::uint8_t style = style_plain;
  bool line_break = false;
  bool operator==(const text_run_t& other) const {
    return text == other.text && style == other.style && line_break == other.line_break;
  }
};

/// The runs of `text`. Without `html`, the text is taken as is (newlines break lines).
/// With it, `<b>`, `<i>` (nested, closed by `</b>`, `</i>`) and `<br>` are understood,
/// other tags are dropped, `&lt; &gt; &amp; &quot; &nbsp;` are decoded, anything else is
/// text. Adjacent runs of one style are merged.
std::vector<text_run_t> parse_rich_text(const std::string& text, bool html);

/// The text without tags, entities decoded, line breaks as "\n".
std::string plain_text(const std::string& text, bool html);

/// A piece of one run placed on a line: characters [begin, end) of the run.
struct line_piece_t {
  std::size_t run = 0;
  std::size_t begin = 0;
  std::size_t end = 0;
  int x = 0;
  int width = 0;
};

struct text_line_t {
  std::vector<line_piece_t> pieces;
  int width = 0;
};

/// Breaks runs into lines of at most `width` pixels (no limit when width <= 0). `extents`
/// gives for run `i` the cumulative widths of its characters (entry k: width of the first
/// k + 1 characters), `is_space` tells break opportunities. Words wider than a line, and
/// everything when `word_wrap` is false, break between characters; a line holds at least
/// one character. The space at which a line breaks is dropped.
std::vector<text_line_t> break_lines(std::size_t run_count, const std::function<bool(std::size_t)>& is_break,
                                     const std::function<const std::vector<int>&(std::size_t)>& extents,
                                     const std::function<bool(std::size_t, std::size_t)>& is_space, int width,
                                     bool word_wrap);

}  // namespace ombrelcfrw7::_internal
