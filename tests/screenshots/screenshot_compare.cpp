#include "screenshot_compare.h"

#include <wx/image.h>

#include <cstdlib>
#include <sstream>

namespace screenshot_compare {
namespace {

bool differs(const unsigned char* a, const unsigned char* b) {
  for (int channel = 0; channel < 3; ++channel) {
    if (std::abs(int{a[channel]} - int{b[channel]}) > channel_tolerance) {
      return true;
    }
  }
  return false;
}

}  // namespace

result_t compare(const wxImage& first, const wxImage& second) {
  result_t result;
  if (!first.IsOk() || !second.IsOk() || first.GetSize() != second.GetSize()) {
    return result;
  }
  result.m_same_size = true;
  const long pixels = long{first.GetWidth()} * first.GetHeight();
  if (pixels == 0) {
    result.m_differing_fraction = 0.0;
    return result;
  }
  const unsigned char* a = first.GetData();
  const unsigned char* b = second.GetData();
  long differing = 0;
  for (long pixel = 0; pixel < pixels; ++pixel) {
    differing += differs(a + 3 * pixel, b + 3 * pixel) ? 1 : 0;
  }
  result.m_differing_fraction = static_cast<double>(differing) / static_cast<double>(pixels);
  return result;
}

std::string describe(const std::string& name, const result_t& result, const wxImage& first,
                     const wxImage& second) {
  std::ostringstream line;
  line << (result.alike() ? "alike    " : "DIFFERENT") << " " << name << ": ";
  if (!first.IsOk() || !second.IsOk()) {
    line << (first.IsOk() ? "the second" : "the first") << " picture can't be read";
  } else if (!result.m_same_size) {
    line << first.GetWidth() << "x" << first.GetHeight() << " against " << second.GetWidth() << "x"
         << second.GetHeight();
  } else {
    line << first.GetWidth() << "x" << first.GetHeight() << ", " << result.m_differing_fraction * 100.0
         << " % of the pixels differ";
  }
  return line.str();
}

}  // namespace screenshot_compare
