#pragma once
// Fonts of the theme and text measures shared by everything that draws text by hand (the
// element tree, the visual-element toolkit): fonts by kind and style, line heights, cached
// character extents and a quick bound for texts that surely fit. Measures are taken at the
// scale that windows draw at and dropped when the theme or the scale changes. GUI thread.
#include <wx/font.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include <cstdint>
#include <string>
#include <vector>

namespace plaxi1 {

/// Style bits of a text, added to a font kind of ui_settings_t.
enum text_style_t : std::uint8_t {
  text_plain = 0,   ///< the font as the theme gives it
  text_bold = 1,    ///< its bold form
  text_italic = 2,  ///< its italic form
};

/// The font of `kind` (default_fonts_t; others give font_normal) in `style` (text_style_t
/// bits). The reference stays valid until the measures are dropped.
const wxFont& theme_font(int kind, std::uint8_t style = text_plain);
/// Height of a line in that font.
int line_height(int kind, std::uint8_t style = text_plain);
/// Cumulative widths of `text`'s characters (entry k: width of the first k + 1), cached.
/// The reference stays valid until the next measure.
const std::vector<int>& text_extents(int kind, std::uint8_t style, const wxString& text);
/// Width of `text` on one line.
int text_width(int kind, std::uint8_t style, const wxString& text);
/// An upper bound of the width of `text` from per-character advances, or -1 when the text
/// has characters beyond ASCII; it spares a real measurement for texts that surely fit.
int quick_width_bound(int kind, std::uint8_t style, const std::string& utf8);

/// The same measures for any font, such as one a host gave an element.
const std::vector<int>& text_extents(const wxFont& font, const wxString& text);
int text_width(const wxFont& font, const wxString& text);
int line_height(const wxFont& font);
/// Width of the widest line and height of all lines of `text` ("\n" separates lines).
wxSize text_extent(const wxFont& font, const wxString& text);

/// Drops every cached font and measure. The UI settings do this before they announce a
/// change; a window that learns of a theme change first calls it itself.
void reset_text_metrics();

}  // namespace plaxi1
