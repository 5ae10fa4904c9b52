#pragma once
// Helpers of the caption panel and simple message panel tests: pictures compared pixel by
// pixel, pictures of windows as drawn, and paints counted.
#include "fixtures.h"

#include <plaxi1/picture.h>
#include <plaxi1/screenshot.h>

#include <gtest/gtest.h>
#include <wx/event.h>
#include <wx/image.h>
#include <wx/window.h>

#include <cstring>
#include <string>

namespace caption_test {

/// Whether both images are ok and have the same size, colours and transparency.
inline bool same_pixels(const wxImage& a, const wxImage& b) {
  if (!a.IsOk() || !b.IsOk() || a.GetSize() != b.GetSize() || a.HasAlpha() != b.HasAlpha()) {
    return false;
  }
  const std::size_t pixels = static_cast<std::size_t>(a.GetWidth()) * static_cast<std::size_t>(a.GetHeight());
  if (std::memcmp(a.GetData(), b.GetData(), pixels * 3) != 0) {
    return false;
  }
  return !a.HasAlpha() || std::memcmp(a.GetAlpha(), b.GetAlpha(), pixels) == 0;
}

/// The picture of `window` as it is drawn now.
inline wxImage shot(wxWindow* window) {
  const test_support::temp_dir_t dir;
  const std::string path = dir.file("shot.png");
  window->Refresh();
  window->Update();
  wxImage image;
  if (plaxi1::save_screenshot(window, path)) {
    image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG);
  }
  EXPECT_TRUE(image.IsOk()) << "no picture of the window";
  return image;
}

/// The colour of a pixel, opaque, as a picture of the screen shows it; not ok outside.
inline wxColour colour_at(const wxImage& image, int x, int y) {
  if (!image.IsOk() || x >= image.GetWidth() || y >= image.GetHeight()) {
    return wxColour();
  }
  return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

/// Counts the paint events that reach a window, letting its own painting go on.
class paint_counter_t {
 public:
  explicit paint_counter_t(wxWindow* window) : m_window(window) {
    m_window->Bind(wxEVT_PAINT, &paint_counter_t::on_paint, this);
  }
  ~paint_counter_t() { m_window->Unbind(wxEVT_PAINT, &paint_counter_t::on_paint, this); }
  paint_counter_t(const paint_counter_t&) = delete;
  paint_counter_t& operator=(const paint_counter_t&) = delete;
  int count() const { return m_count; }

 private:
  void on_paint(wxPaintEvent& event) {
    ++m_count;
    event.Skip();
  }
  wxWindow* m_window;
  int m_count = 0;
};

}  // namespace caption_test
