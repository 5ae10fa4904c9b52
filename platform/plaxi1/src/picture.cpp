#include <plaxi1/picture.h>

#include <wx/app.h>
#include <wx/display.h>
#include <wx/window.h>

namespace plaxi1 {

double display_scale() {
  if (!wxTheApp) {
    return 1.0;  // no toolkit yet: nothing can be shown
  }
  if (const wxWindow* top = wxTheApp->GetTopWindow()) {
    return top->GetDPIScaleFactor();
  }
  return wxDisplay().GetScaleFactor();
}

wxStaticPicture::wxStaticPicture(const wxImage& image, const wxImage& image_2x)
    : m_image(image), m_image_2x(image.IsOk() ? image_2x : wxImage()) {}

wxImage wxStaticPicture::getImage(bool for_display) const {
  if (for_display && m_image_2x.IsOk() && display_scale() > 1.0) {
    return m_image_2x;
  }
  return m_image;
}

wxBitmap wxStaticPicture::getBitmap(bool for_display) const {
  if (!m_image.IsOk()) {
    return wxBitmap();
  }
  if (for_display && m_image_2x.IsOk() && display_scale() > 1.0) {
    // Scaled, so that the bitmap keeps the logical size of the normal form.
    return wxBitmap(m_image_2x, wxBITMAP_SCREEN_DEPTH, 2.0);
  }
  return wxBitmap(m_image);
}

wxBitmapBundle wxStaticPicture::getBundle() const {
  if (!m_image.IsOk()) {
    return wxBitmapBundle();
  }
  if (!m_image_2x.IsOk()) {
    return wxBitmapBundle::FromImage(m_image);
  }
  return wxBitmapBundle::FromBitmaps(wxBitmap(m_image), wxBitmap(m_image_2x));
}

picture_t::picture_t(const wxStaticPicture& picture) {
  if (!picture.is_empty()) {
    m_picture = std::make_shared<const wxStaticPicture>(picture);
  }
}

picture_t::picture_t(const wxAnimation& animation) {
  if (animation.IsOk()) {
    m_animation = std::make_shared<const wxAnimation>(animation);
  }
}

picture_t::picture_t(const wxAnimation& animation, const wxAnimation& animation_2x) : picture_t(animation) {
  if (m_animation && animation_2x.IsOk()) {
    m_animation_2x = std::make_shared<const wxAnimation>(animation_2x);
  }
}

bool picture_t::is_image() const { return m_picture != nullptr; }

bool picture_t::is_animation() const { return m_animation != nullptr; }

wxStaticPicture picture_t::get_image() const { return m_picture ? *m_picture : wxStaticPicture(); }

wxAnimation picture_t::get_animation() const { return m_animation ? *m_animation : wxAnimation(); }

wxAnimation picture_t::get_animation_2x() const { return m_animation_2x ? *m_animation_2x : wxAnimation(); }

}  // namespace plaxi1
