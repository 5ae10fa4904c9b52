#pragma once
// The pictures of a button by its look, for the icon button window and the icon button
// element alike.
#include <plaxi1/element_flags.h>
#include <plaxi1/press_tracker.h>

#include <wx/bitmap.h>
#include <wx/image.h>

#include <array>
#include <cstddef>

namespace plaxi1::_internal {

class state_images_t {
 public:
  /// Sets the picture of each look whose bit (elements::image_state_t) is in `state`;
  /// `scale` device pixels make one device-independent pixel of `image`.
  void set(int state, const wxImage& image, double scale) {
    const wxBitmap bitmap = image.IsOk() ? wxBitmap(image, -1, scale) : wxBitmap();
    for (std::size_t slot = 0; slot < m_bitmaps.size(); ++slot) {
      if (state & (1 << slot)) {
        m_bitmaps[slot] = bitmap;
      }
    }
  }

  /// The bit of the look shown: disabled, else pressed, else hover, else normal.
  static int shown_state(const press_tracker_t& press, bool enabled) {
    if (!enabled) {
      return elements::image_disabled;
    }
    if (press.is_pressed()) {
      return elements::image_pressed;
    }
    return press.is_hot() ? elements::image_hover : elements::image_normal;
  }

  /// The picture of look `state`, or the normal one where that look has none.
  const wxBitmap& get(int state) const {
    const wxBitmap& bitmap = m_bitmaps[slot_of(state)];
    return bitmap.IsOk() ? bitmap : m_bitmaps[slot_of(elements::image_normal)];
  }

  /// The size the normal picture shows at, in device-independent pixels.
  wxSize normal_size() const {
    const wxBitmap& normal = m_bitmaps[slot_of(elements::image_normal)];
    return normal.IsOk() ? normal.GetLogicalSize() : wxSize(0, 0);
  }

 private:
  static std::size_t slot_of(int bit) {
    std::size_t slot = 0;
    while (slot + 1 < 4 && (1 << slot) != bit) {
      ++slot;
    }
    return slot;
  }

  std::array<wxBitmap, 4> m_bitmaps;  // by the position of the look's bit
};

}  // namespace plaxi1::_internal
