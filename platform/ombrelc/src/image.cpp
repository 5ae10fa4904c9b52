#include <ombrelcfrw7/image.h>

#include <wx/dc.h>
#include <wx/timer.h>

#include <algorithm>

namespace ombrelcfrw7 {

using ombrelc7::rect;

/// Steps the animation of one image.
class CImage::timer_t : public wxTimer {
 public:
  explicit timer_t(CImage* image) : m_image(image) {}
  void Notify() override { m_image->NextFrame(); }

 private:
  CImage* m_image;
};

CImage::CImage(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
    : CVisualElement(parent, size, alignment) {}

CImage::~CImage() = default;

void CImage::Clear() {
  StopAnimation();
  const bool had = !IsEmpty();
  m_picture.reset();
  m_animation.reset();
  m_frame = 0;
  if (had) {
    OnChange();
  }
}

void CImage::SetRasterPicture(ombrelc7::IRasterPicture* picture) {
  StopAnimation();
  m_animation.reset();
  m_picture = picture;
  OnChange();
}

void CImage::SetAnimation(const ombrelc7::ombrelc_ptr<ombrelc7::IAnimation>& animation) {
  StopAnimation();
  m_picture.reset();
  m_animation = animation;
  m_frame = 0;
  OnChange();
}

void CImage::StartAnimation() {
  if (!m_animation || m_animation->GetFrameCount() < 2) {
    return;
  }
  if (!m_timer) {
    m_timer = std::make_unique<timer_t>(this);
  }
  m_timer->StartOnce(m_animation->GetDelay(m_frame));
}

void CImage::StopAnimation() {
  if (m_timer) {
    m_timer->Stop();
  }
}

bool CImage::IsAnimating() const { return m_timer && m_timer->IsRunning(); }

void CImage::NextFrame() {
  if (!m_animation || m_animation->GetFrameCount() == 0) {
    return;
  }
  m_frame = (m_frame + 1) % m_animation->GetFrameCount();
  Invalidate();  // only this rectangle: the frames share one size
  m_timer->StartOnce(m_animation->GetDelay(m_frame));
}

ombrelc7::size<int> CImage::PictureSize() const {
  if (m_animation) {
    return m_animation->GetSize();
  }
  return m_picture ? m_picture->GetSize() : ombrelc7::size<int>();
}

int CImage::MeasureWidth() const { return std::max(GetMinSize().cx, PictureSize().cx); }

int CImage::MeasureHeight(int) const { return std::max(GetMinSize().cy, PictureSize().cy); }

void CImage::PaintContent(wxDC& dc, const rect<int>& clip) {
  wxBitmap bitmap;
  if (m_animation) {
    bitmap = m_animation->GetFrame(m_frame);
  } else if (m_picture) {
    bitmap = m_picture->GetBitmap();
  }
  if (!bitmap.IsOk()) {
    return;
  }
  const rect<int>& r = GetRect();
  const wxSize logical = bitmap.GetLogicalSize();
  dc.DrawBitmap(bitmap, r.left + (r.width() - logical.x) / 2, r.top + (r.height() - logical.y) / 2, true);
}

}  // namespace ombrelcfrw7
