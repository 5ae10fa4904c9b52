#pragma once
// Colours of the theme as the elements draw with them.
#include <plaxi1/ui_settings.h>

#include <wx/colour.h>

#include <cmath>

namespace ombrelcfrw7::_internal {

inline wxColour theme_colour(int index) { return plaxi1::ui_settings_t::get()->get_color(index); }

/// `a` moved towards `b` by `amount` (0..1): softer lines than the theme's full colours.
inline wxColour blend(const wxColour& a, const wxColour& b, double amount) {
  auto mix = [amount](unsigned char x, unsigned char y) {
    return static_cast<unsigned char>(std::lround(x + (y - x) * amount));
  };
  return wxColour(mix(a.Red(), b.Red()), mix(a.Green(), b.Green()), mix(a.Blue(), b.Blue()));
}

}  // namespace ombrelcfrw7::_internal
