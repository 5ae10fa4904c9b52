#pragma once
// Whether two pictures of one window, made on different displays, show the same thing:
// fonts are rendered a little differently and a few pixels may move, so a picture passes
// when it has the same size and few pixels differ much.
#include <string>

class wxImage;

namespace screenshot_compare {

/// A pixel differs when any of its channels is off by more than this, of 255.
constexpr int channel_tolerance = 64;
/// A picture passes when at most this fraction of its pixels differ.
constexpr double differing_fraction_allowed = 0.04;

struct result_t {
  bool m_same_size = false;
  /// Pixels that differ, over all pixels; 1 when the sizes differ.
  double m_differing_fraction = 1.0;
  bool alike() const { return m_same_size && m_differing_fraction <= differing_fraction_allowed; }
};

/// Compares two pictures pixel by pixel (alpha is not compared).
result_t compare(const wxImage& first, const wxImage& second);

/// One line for a report: the result and what made it.
std::string describe(const std::string& name, const result_t& result, const wxImage& first,
                     const wxImage& second);

}  // namespace screenshot_compare
