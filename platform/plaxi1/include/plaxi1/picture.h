#pragma once
#include <wx/animate.h>
#include <wx/bitmap.h>
#include <wx/bmpbndl.h>
#include <wx/image.h>

#include <memory>

namespace plaxi1 {

/// The scale of the display that pictures and text are shown on: the main window's when
/// there is one, as it knows the monitor it sits on; else the primary display's; 1 before
/// the toolkit starts. GUI thread.
double display_scale();

/// A still picture with an optional form at twice the size for high-density displays.
/// Copies share the image data.
class wxStaticPicture {
 public:
  wxStaticPicture() = default;
  explicit wxStaticPicture(const wxImage& image, const wxImage& image_2x = wxImage());

  bool is_empty() const { return !m_image.IsOk(); }
  /// The picture; with `for_display` the high-density form when the display is scaled and
  /// one exists.
  wxImage getImage(bool for_display) const;
  wxBitmap getBitmap(bool for_display) const;
  /// Both forms, for controls that choose by the window's scale.
  wxBitmapBundle getBundle() const;

 private:
  wxImage m_image;
  wxImage m_image_2x;
};

/// A still picture or an animation, or nothing. Copies share the picture.
class picture_t {
 public:
  picture_t() = default;
  picture_t(const wxStaticPicture& picture);  // NOLINT: implicit by design
  picture_t(const wxAnimation& animation);    // NOLINT: implicit by design
  /// An animation with its form at twice the size for high-density displays.
  picture_t(const wxAnimation& animation, const wxAnimation& animation_2x);

  bool is_empty() const { return !is_image() && !is_animation(); }
  bool is_image() const;
  bool is_static_picture() const { return is_image(); }
  bool is_animation() const;
  wxStaticPicture get_image() const;
  wxStaticPicture get_static_picture() const { return get_image(); }
  wxAnimation get_animation() const;
  /// The animation's form at twice the size; not ok when it has none.
  wxAnimation get_animation_2x() const;

 private:
  std::shared_ptr<const wxStaticPicture> m_picture;
  std::shared_ptr<const wxAnimation> m_animation;
  std::shared_ptr<const wxAnimation> m_animation_2x;
};

}  // namespace plaxi1
