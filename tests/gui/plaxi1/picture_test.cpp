// Still pictures with their high-density forms, and the picture-or-animation value.
#include <plaxi1/picture.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/display.h>
#include <wx/generic/animate.h>
#include <wx/mstream.h>
#include <wx/window.h>

namespace {

using plaxi1::picture_t;
using plaxi1::wxStaticPicture;

// A square of one colour, so that a form can be told by its size and colour.
wxImage square(int side, unsigned char red, unsigned char green, unsigned char blue) {
  wxImage image(side, side);
  image.SetRGB(wxRect(0, 0, side, side), red, green, blue);
  return image;
}

wxColour colour_at(const wxImage& image, int x, int y) {
  return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

// The scale that decides which form is shown, as a host's window would see it.
double display_scale() {
  if (const wxWindow* top = wxTheApp->GetTopWindow()) {
    return top->GetDPIScaleFactor();
  }
  return wxDisplay().GetScaleFactor();
}

// A one-pixel GIF animation.
wxAnimation small_animation() {
  static const unsigned char gif[] = {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x01, 0x00, 0x01, 0x00, 0x80,
                                      0x00, 0x00, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0x21, 0xF9, 0x04,
                                      0x01, 0x00, 0x00, 0x00, 0x00, 0x2C, 0x00, 0x00, 0x00, 0x00, 0x01,
                                      0x00, 0x01, 0x00, 0x00, 0x02, 0x02, 0x44, 0x01, 0x00, 0x3B};
  wxMemoryInputStream in(gif, sizeof gif);
  wxAnimation animation = wxGenericAnimationCtrl::CreateCompatibleAnimation();
  EXPECT_TRUE(animation.Load(in, wxANIMATION_TYPE_GIF));
  return animation;
}

class picture_test : public ::testing::Test {};

TEST_F(picture_test, default_picture_is_empty) {
  const wxStaticPicture picture;
  EXPECT_TRUE(picture.is_empty());
  EXPECT_FALSE(picture.getImage(false).IsOk());
  EXPECT_FALSE(picture.getImage(true).IsOk());
  EXPECT_FALSE(picture.getBitmap(true).IsOk());
  EXPECT_FALSE(picture.getBundle().IsOk());
}

TEST_F(picture_test, normal_form_unless_for_display) {
  const wxImage normal = square(16, 255, 0, 0);
  const wxStaticPicture picture(normal, square(32, 0, 255, 0));
  EXPECT_FALSE(picture.is_empty());
  EXPECT_TRUE(picture.getImage(false).IsSameAs(normal));
  EXPECT_EQ(picture.getBitmap(false).GetSize(), wxSize(16, 16));
}

TEST_F(picture_test, display_form_follows_the_display_scale) {
  const wxStaticPicture picture(square(16, 255, 0, 0), square(32, 0, 255, 0));
  const bool dense = display_scale() > 1.0;
  const wxImage shown = picture.getImage(true);
  EXPECT_EQ(shown.GetSize(), dense ? wxSize(32, 32) : wxSize(16, 16));
  EXPECT_EQ(colour_at(shown, 1, 1), dense ? *wxGREEN : *wxRED);
  const wxBitmap bitmap = picture.getBitmap(true);
  EXPECT_EQ(bitmap.GetSize(), shown.GetSize());
  // Either way the bitmap takes the room of the normal form.
  EXPECT_EQ(bitmap.GetLogicalSize(), wxSize(16, 16));
}

TEST_F(picture_test, without_a_dense_form_the_normal_one_is_shown) {
  const wxStaticPicture picture(square(16, 255, 0, 0));
  EXPECT_EQ(picture.getImage(true).GetSize(), wxSize(16, 16));
  EXPECT_EQ(picture.getBitmap(true).GetSize(), wxSize(16, 16));
}

TEST_F(picture_test, dense_form_alone_is_no_picture) {
  const wxStaticPicture picture(wxImage(), square(32, 0, 255, 0));
  EXPECT_TRUE(picture.is_empty());
  EXPECT_FALSE(picture.getImage(true).IsOk());
}

TEST_F(picture_test, bundle_holds_both_forms) {
  const wxStaticPicture picture(square(16, 255, 0, 0), square(32, 0, 255, 0));
  const wxBitmapBundle bundle = picture.getBundle();
  ASSERT_TRUE(bundle.IsOk());
  EXPECT_EQ(bundle.GetDefaultSize(), wxSize(16, 16));
  const wxBitmap dense = bundle.GetBitmap(wxSize(32, 32));
  EXPECT_EQ(dense.GetSize(), wxSize(32, 32));
  EXPECT_EQ(colour_at(dense.ConvertToImage(), 1, 1), *wxGREEN);  // the given form, not a scaled one
  EXPECT_EQ(colour_at(bundle.GetBitmap(wxSize(16, 16)).ConvertToImage(), 1, 1), *wxRED);
}

TEST_F(picture_test, bundle_of_one_form_scales_it) {
  const wxBitmapBundle bundle = wxStaticPicture(square(16, 255, 0, 0)).getBundle();
  ASSERT_TRUE(bundle.IsOk());
  EXPECT_EQ(bundle.GetDefaultSize(), wxSize(16, 16));
  EXPECT_EQ(colour_at(bundle.GetBitmap(wxSize(32, 32)).ConvertToImage(), 1, 1), *wxRED);
}

TEST_F(picture_test, copies_share_the_image) {
  const wxStaticPicture picture(square(16, 255, 0, 0), square(32, 0, 255, 0));
  const wxStaticPicture copy = picture;  // NOLINT: the copy is the point
  EXPECT_TRUE(copy.getImage(false).IsSameAs(picture.getImage(false)));
}

TEST_F(picture_test, default_value_is_empty) {
  const picture_t value;
  EXPECT_TRUE(value.is_empty());
  EXPECT_FALSE(value.is_image());
  EXPECT_FALSE(value.is_static_picture());
  EXPECT_FALSE(value.is_animation());
  EXPECT_TRUE(value.get_image().is_empty());
  EXPECT_FALSE(value.get_animation().IsOk());
}

TEST_F(picture_test, value_holds_a_picture) {
  const wxImage normal = square(16, 255, 0, 0);
  const picture_t value = wxStaticPicture(normal);
  EXPECT_FALSE(value.is_empty());
  EXPECT_TRUE(value.is_image());
  EXPECT_TRUE(value.is_static_picture());
  EXPECT_FALSE(value.is_animation());
  EXPECT_TRUE(value.get_static_picture().getImage(false).IsSameAs(normal));
  EXPECT_FALSE(value.get_animation().IsOk());
}

TEST_F(picture_test, value_holds_an_animation) {
  const wxAnimation animation = small_animation();
  ASSERT_TRUE(animation.IsOk());
  const picture_t value = animation;
  EXPECT_FALSE(value.is_empty());
  EXPECT_TRUE(value.is_animation());
  EXPECT_FALSE(value.is_image());
  EXPECT_TRUE(value.get_animation().IsSameAs(animation));
  EXPECT_TRUE(value.get_image().is_empty());
}

TEST_F(picture_test, empty_parts_make_an_empty_value) {
  EXPECT_TRUE(picture_t(wxStaticPicture()).is_empty());
  EXPECT_TRUE(picture_t(wxAnimation()).is_empty());
}

TEST_F(picture_test, copies_of_a_value_share_the_picture) {
  const picture_t value = wxStaticPicture(square(16, 255, 0, 0));
  const picture_t copy = value;  // NOLINT: the copy is the point
  EXPECT_TRUE(copy.get_image().getImage(false).IsSameAs(value.get_image().getImage(false)));
}

}  // namespace
