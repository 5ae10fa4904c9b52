#pragma once
// The layout of a caption's styled runs in lines, measured with the process's shared text
// measures. GUI thread.
#include "rich_text_p.h"

#include <plaxi1/text_metrics.h>

#include <wx/colour.h>
#include <wx/string.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ombrelcfrw7::_internal {

// Fonts and measures are plaxi1's, shared with the element tree.
using plaxi1::line_height;
using plaxi1::quick_width_bound;
using plaxi1::text_extents;
using plaxi1::text_width;
using plaxi1::theme_font;

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
