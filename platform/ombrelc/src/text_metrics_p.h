#pragma once
// Fonts and text measures shared by all captions of the process: fonts by kind and style,
// cached character extents and a quick bound for texts that surely fit. GUI thread.
#include "rich_text_p.h"

#include <wx/font.h>
#include <wx/string.h>

#include <cstdint>
#include <string>
#include <vector>

class wxDC;

namespace ombrelcfrw7::_internal {

/// The plaxi1 font `kind` in `style` (run_style_t bits).
const wxFont& font_for(int kind, std::uint8_t style);
/// Height of a line in that font.
int line_height(int kind, std::uint8_t style);
/// Cumulative widths of `text`'s characters (see break_lines), cached.
const std::vector<int>& text_extents(int kind, std::uint8_t style, const wxString& text);
/// Width of `text` on one line.
int text_width(int kind, std::uint8_t style, const wxString& text);
/// An upper bound of the width of `text` from per-character advances, or -1 when the text
/// has characters beyond ASCII; it spares a real measurement for texts that surely fit.
int quick_width_bound(int kind, std::uint8_t style, const std::string& utf8);
/// Drops every cached font and measure (the theme changed).
void reset_text_metrics();

/// A caption's runs, converted for measuring and drawing.
struct wx_run_t {
  wxString text;
  std::uint8_t style = style_plain;
  bool line_break = false;
};
std::vector<wx_run_t> to_wx_runs(const std::vector<text_run_t>& runs);

/// The lines of `runs` at `width` (no wrapping when width <= 0).
std::vector<text_line_t> layout_runs(const std::vector<wx_run_t>& runs, int kind, int width, bool word_wrap);
/// The height of laid-out lines.
int lines_height(const std::vector<wx_run_t>& runs, const std::vector<text_line_t>& lines, int kind);

/// Packs a colour into 32 bits (0: none, for an invalid or fully transparent colour).
std::uint32_t pack_colour(const wxColour& colour);
wxColour unpack_colour(std::uint32_t packed);

}  // namespace ombrelcfrw7::_internal
