#include "ombrelc_fixture.h"

#include <wx/anidecod.h>
#include <wx/animate.h>
#include <wx/dcmemory.h>
#include <wx/generic/animate.h>
#include <wx/image.h>
#include <wx/imaggif.h>
#include <wx/mstream.h>
#include <wx/quantize.h>

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

wxBitmap solid(int w, int h, const wxColour& colour) {
  wxImage image(w, h);
  image.SetRGB(wxRect(0, 0, w, h), colour.Red(), colour.Green(), colour.Blue());
  return wxBitmap(image);
}

TEST(ombrelc_picture_test, bitmap_to_raster_picture_refuses_bad_input) {
  ombrelc7::ombrelc_ptr<ombrelc7::IRasterPicture> picture =
      ombrelc7::GetCurrentSystem()->CreateRasterPicture(size<int>(4, 4));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->GetSize(), size<int>(4, 4));
  EXPECT_FALSE(ombrelc7::Bitmap2RasterPicture(wxBitmap(), picture.get()));
  EXPECT_EQ(picture->GetSize(), size<int>(4, 4));
  EXPECT_FALSE(ombrelc7::Bitmap2RasterPicture(solid(8, 6, *wxRED), nullptr));
  EXPECT_TRUE(ombrelc7::Bitmap2RasterPicture(solid(8, 6, *wxRED), picture.get()));
  EXPECT_EQ(picture->GetSize(), size<int>(8, 6));
}

TEST(ombrelc_picture_test, an_image_list_gives_consecutive_indices_and_draws_by_index) {
  auto list = ombrelc7::GetCurrentSystem()->CreateImageList();
  EXPECT_EQ(list->GetCount(), 0);
  auto red = ombrelc7::GetCurrentSystem()->CreateRasterPicture(size<int>(1, 1));
  ombrelc7::Bitmap2RasterPicture(solid(16, 16, *wxRED), red.get());
  auto blue = ombrelc7::GetCurrentSystem()->CreateRasterPicture(size<int>(1, 1));
  ombrelc7::Bitmap2RasterPicture(solid(16, 16, *wxBLUE), blue.get());
  EXPECT_EQ(list->Add(red.get()), 0);
  EXPECT_EQ(list->Add(blue.get(), *wxBLUE), 1);
  EXPECT_EQ(list->Add(nullptr), -1);
  EXPECT_EQ(list->GetCount(), 2);
  EXPECT_EQ(list->GetImageSize(), size<int>(16, 16));

  wxBitmap target(20, 20, 24);
  {
    wxMemoryDC dc(target);
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    list->Draw(dc, 0, 2, 2);
    list->Draw(dc, 1, 2, 2);  // all masked: draws nothing
    list->Draw(dc, 7, 2, 2);  // no such picture
  }
  const wxImage result = target.ConvertToImage();
  EXPECT_EQ(result.GetRed(5, 5), 255);
  EXPECT_EQ(result.GetBlue(5, 5), 0);
  EXPECT_EQ(result.GetGreen(0, 0), 255);  // outside the picture: still white
}

TEST(ombrelc_picture_test, an_animation_keeps_its_frames_and_delays) {
  wxInitAllImageHandlers();
  // A two-frame GIF written by wx itself, red then blue.
  wxImageArray frames;
  for (const wxColour& colour : {*wxRED, *wxBLUE}) {
    wxImage image(8, 8);
    image.SetRGB(wxRect(0, 0, 8, 8), colour.Red(), colour.Green(), colour.Blue());
    wxImage paletted;
    ASSERT_TRUE(wxQuantize::Quantize(image, paletted, 4));
    frames.Add(paletted);
  }
  wxMemoryOutputStream out;
  wxGIFHandler handler;
  ASSERT_TRUE(handler.SaveAnimation(frames, &out, false, 120));
  wxMemoryInputStream in(out);
  // GTK's native animations don't give their frames; the generic ones do.
  wxAnimation animation = wxGenericAnimationCtrl::CreateCompatibleAnimation();
  ASSERT_TRUE(animation.Load(in, wxANIMATION_TYPE_GIF));
  const auto converted = ombrelc7::CreateAnimation(animation);
  ASSERT_TRUE(converted);
  ASSERT_EQ(converted->GetFrameCount(), 2);
  EXPECT_EQ(converted->GetSize(), size<int>(8, 8));
  EXPECT_GE(converted->GetDelay(0), 100);
  EXPECT_TRUE(converted->GetFrame(1).IsOk());
  EXPECT_FALSE(converted->GetFrame(2).IsOk());
  const wxImage second = converted->GetFrame(1).ConvertToImage();
  EXPECT_GT(second.GetBlue(4, 4), 200);
  EXPECT_LT(second.GetRed(4, 4), 50);

  const auto empty = ombrelc7::CreateAnimation(wxAnimation());
  EXPECT_EQ(empty->GetFrameCount(), 0);
}

using ombrelc_image_test = control_fixture_t;

TEST_F(ombrelc_image_test, an_image_shows_a_picture_and_animates_on_a_timer) {
  auto* image = new CImage(root(), size<int>(0, 0), ombrelc7::alNone);
  EXPECT_TRUE(image->IsEmpty());
  auto picture = ombrelc7::GetCurrentSystem()->CreateRasterPicture(size<int>(1, 1));
  ombrelc7::Bitmap2RasterPicture(solid(12, 10, *wxGREEN), picture.get());
  image->SetRasterPicture(picture.get());
  layout();
  EXPECT_FALSE(image->IsEmpty());
  EXPECT_EQ(image->GetRect(), rect<int>(0, 0, 12, 10));

  struct frames_t : ombrelc7::ref_counted<ombrelc7::IAnimation> {
    int GetFrameCount() const override { return 3; }
    wxBitmap GetFrame(int) const override { return solid(6, 6, *wxRED); }
    int GetDelay(int) const override { return 20; }
    size<int> GetSize() const override { return {6, 6}; }
  };
  image->SetAnimation(ombrelc7::ombrelc_ptr<ombrelc7::IAnimation>(new frames_t));
  image->StartAnimation();
  EXPECT_TRUE(image->IsAnimating());
  ASSERT_TRUE(gui_test::wait_until([&] { return image->GetFrame() == 2; }));
  image->StopAnimation();
  EXPECT_FALSE(image->IsAnimating());
  image->Clear();
  EXPECT_TRUE(image->IsEmpty());
}

TEST_F(ombrelc_image_test, a_caption_draws_its_icon_from_the_image_list) {
  auto list = ombrelc7::GetCurrentSystem()->CreateImageList();
  auto picture = ombrelc7::GetCurrentSystem()->CreateRasterPicture(size<int>(1, 1));
  ombrelc7::Bitmap2RasterPicture(solid(16, 40, *wxRED), picture.get());
  list->Add(picture.get());
  m_control->SetImageList(list.get());
  EXPECT_EQ(m_control->GetImageList(), list.get());
  auto* caption = new CCaption(root(), size<int>(0, 0), ombrelc7::alNone);
  caption->SetCaption("x");
  layout();
  const int plain_width = caption->GetRect().width();
  caption->SetImageIndex(0);
  layout();
  EXPECT_EQ(caption->GetRect().width(), plain_width + 16 + 4);
  EXPECT_EQ(caption->GetRect().height(), 40);
}

}  // namespace
