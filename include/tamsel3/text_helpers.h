#pragma once
#include <korvat2/variant_bag.h>
#include <tamsel3/export.h>
#include <zandor/varg_list.h>

#include <string>

class wxColour;
class wxControl;
class wxSize;
class wxStaticText;
class wxString;
class wxWindow;

namespace tamsel3 {

/// The text of `key` in the catalog "tamsel", formatted with `args`. With no arguments,
/// "prod_name" and "prod_short_name" (the product's full and short names) are filled in.
/// Never empty: a missing catalog or key gives a diagnostic text that names the key.
/// Any thread.
TAMSEL3_API std::string translate_message(const std::string& key,
                                          const ZANDOR_2_16::generic::varg_list& args);

/// A copy in which every LF not already after a CR becomes CR LF.
TAMSEL3_API std::string restore_line_endings(const std::string& text);

/// A tooltip that lists forbidden characters: `prefix`, an LF (`on_new_line`) or a blank,
/// then the characters of `chars` in their order.
TAMSEL3_API std::string get_disabled_tooltip_text(const std::string& prefix, const std::string& chars,
                                                  bool on_new_line);

/// A copy with the first character in upper case; the rest keeps its case.
TAMSEL3_API std::string set_1st_letter_uppercase(const std::string& text);

/// The narrow text at `name` in the iterator's current bag; empty when there is none or
/// it isn't narrow text.
TAMSEL3_API std::string get_string_value(
    const korvat2::variant_bag_t::iterator_t<korvat2::variant_bag_t>& entry, const std::string& name);

// The helpers below need a window and belong to the GUI thread.

/// Gives `control` the tooltip and the text colour `colour`, and repaints it.
TAMSEL3_API void set_color_and_tooltip(wxControl* control, const std::string& tooltip, wxColour colour);

/// Gives `control` the bold interface font; a null control is ignored.
TAMSEL3_API void set_bold_font(wxControl* control);

/// Sets `message` as the label of `text` and wraps it at the parent's width less `margin`.
/// Nothing happens when either pointer is null.
TAMSEL3_API void wrap_by_parent(wxWindow* parent, wxStaticText* text, const std::string& message, int margin);

/// Moves a window that sticks out at the right or bottom edge of the display back onto it,
/// keeping its size; at the bottom it goes up by twice the edge clearance more, to clear
/// what lies at the display's edge. A null window is ignored, and so is every window on a
/// Wayland display, where the compositor keeps windows on it.
TAMSEL3_API void move_to_visible_area(wxWindow* window);

/// Gives `window` a tooltip wrapped at 600 pixels that stays for two minutes.
TAMSEL3_API void set_tooltip(const std::string& text, wxWindow* window);

/// Width and height of `text` in the window's font.
TAMSEL3_API wxSize get_text_extent(wxWindow* window, std::string text);

/// Raises `width` to the width of `text` in `window` where that is larger.
TAMSEL3_API void process_max_width(wxWindow* window, const wxString& text, int& width);

}  // namespace tamsel3
