#pragma once
// Text fitting of the text element, apart so that tests can reach it.
#include <wx/string.h>

class wxDC;

namespace plaxi1::elements::_internal {

/// The ellipsis that ends a cut text.
wxString ellipsis();

/// `text` as it fits `width` in the font of `dc`: whole when it fits, else its longest start
/// that fits with the ellipsis behind it (the ellipsis alone when no start does).
wxString cut_to_width(wxDC& dc, const wxString& text, int width);

}  // namespace plaxi1::elements::_internal
