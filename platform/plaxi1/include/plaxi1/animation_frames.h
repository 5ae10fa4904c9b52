#pragma once
#include <wx/bitmap.h>
#include <wx/gdicmn.h>

#include <cstddef>
#include <vector>

class wxAnimation;

namespace plaxi1 {

/// The frames of an animation as bitmaps ready to draw, each a whole picture: a frame that
/// covers a part of the picture is drawn over the one before it. On a scaled display the
/// high-density form is used where there is one. Copies share the bitmaps. GUI thread.
class animation_frames_t {
 public:
  animation_frames_t() = default;
  explicit animation_frames_t(const wxAnimation& animation);
  animation_frames_t(const wxAnimation& animation, const wxAnimation& animation_2x);

  std::size_t size() const { return m_frames.size(); }
  bool empty() const { return m_frames.empty(); }
  /// Frame `index`, or a bad bitmap for an index out of range.
  wxBitmap frame(std::size_t index) const;
  /// How long frame `index` stays, in milliseconds: at least 10, as browsers show them.
  int delay(std::size_t index) const;
  /// The size that the frames show at, in device-independent pixels.
  wxSize logical_size() const { return m_size; }

 private:
  void add_frames(const wxAnimation& animation, double scale);

  std::vector<wxBitmap> m_frames;
  std::vector<int> m_delays;
  wxSize m_size;
};

}  // namespace plaxi1
