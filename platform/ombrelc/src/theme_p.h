#pragma once
// Colours of the theme as the elements draw with them.
#include <plaxi1/ui_settings.h>

#include <wx/colour.h>

namespace ombrelcfrw7::_internal {

inline wxColour theme_colour(int index) { return plaxi1::ui_settings_t::get()->get_color(index); }

}  // namespace ombrelcfrw7::_internal
