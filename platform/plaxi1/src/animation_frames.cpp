#include <plaxi1/animation_frames.h>
#include <plaxi1/picture.h>

#include <wx/animate.h>
#include <wx/image.h>

#include <algorithm>

namespace plaxi1 {

animation_frames_t::animation_frames_t(const wxAnimation& animation)
    : animation_frames_t(animation, wxAnimation()) {}

animation_frames_t::animation_frames_t(const wxAnimation& animation, const wxAnimation& animation_2x) {
  if (!animation.IsOk()) {
    return;
  }
  m_size = animation.GetSize();
  if (animation_2x.IsOk() && display_scale() > 1.0) {
    add_frames(animation_2x, 2.0);
  } else {
    add_frames(animation, 1.0);
  }
  if (m_size.x <= 0 && !m_frames.empty()) {
    m_size = m_frames[0].GetLogicalSize();
  }
}

wxBitmap animation_frames_t::frame(std::size_t index) const {
  return index < m_frames.size() ? m_frames[index] : wxBitmap();
}

int animation_frames_t::delay(std::size_t index) const {
  return index < m_delays.size() ? m_delays[index] : 0;
}

// Frames of `scale` device pixels a logical one.
void animation_frames_t::add_frames(const wxAnimation& animation, double scale) {
  const wxSize full = animation.GetSize();
  wxImage canvas;
  for (unsigned int i = 0; i < animation.GetFrameCount(); ++i) {
    wxImage frame = animation.GetFrame(i);
    if (!frame.IsOk()) {
      continue;
    }
    if (!canvas.IsOk() || frame.GetSize() == full || full.x <= 0) {
      canvas = frame;
    } else {
      canvas.Paste(frame, 0, 0, wxIMAGE_ALPHA_BLEND_COMPOSE);
    }
    if (!canvas.HasAlpha()) {
      canvas.InitAlpha();
    }
    m_frames.emplace_back(canvas, wxBITMAP_SCREEN_DEPTH, scale);
    m_delays.push_back(std::max(10, animation.GetDelay(i)));
  }
}

}  // namespace plaxi1
