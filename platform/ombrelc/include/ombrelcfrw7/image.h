#pragma once
// A picture element, still or animated.
#include <ombrelc7/picture.h>
#include <ombrelcfrw7/visual_element.h>

#include <memory>
#include <string>

namespace ombrelcfrw7 {

/// Shows a raster picture or an animation, centred in its rectangle. An animation runs on
/// a timer and repaints only the element's rectangle.
class CImage : public CVisualElement {
 public:
  CImage(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  ~CImage() override;

  void Clear();
  void SetRasterPicture(ombrelc7::IRasterPicture* picture);
  void SetAnimation(const ombrelc7::ombrelc_ptr<ombrelc7::IAnimation>& animation);
  void StartAnimation();
  void StopAnimation();
  bool IsAnimating() const;
  bool IsEmpty() const { return !m_picture && !m_animation; }
  int GetFrame() const { return m_frame; }
  /// What the picture shows, in words, for screen readers ("Error").
  void SetAccessibleName(const std::string& name) { m_accessible_name = name; }
  const std::string& GetAccessibleName() const { return m_accessible_name; }
  /// An image named by SetAccessibleName, described as an animation while it is one.
  void DescribeAccessible(a11y::info_t& info) const override;

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;

 private:
  class timer_t;
  void NextFrame();
  ombrelc7::size<int> PictureSize() const;

  ombrelc7::ombrelc_ptr<ombrelc7::IRasterPicture> m_picture;
  ombrelc7::ombrelc_ptr<ombrelc7::IAnimation> m_animation;
  std::unique_ptr<timer_t> m_timer;
  int m_frame = 0;
  std::string m_accessible_name;
};

}  // namespace ombrelcfrw7
