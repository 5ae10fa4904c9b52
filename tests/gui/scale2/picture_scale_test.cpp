// Runs with GDK_SCALE=2: pictures come in their form at twice the size, drawn sharp.
#include "../ombrelc/ombrelc_fixture.h"

#include <tamsel3/event_log.h>
#include <tamsel3/message_entry.h>
#include <tamsel3/resource.h>

#include <plaxi1/image_loader.h>

#include <wx/dcmemory.h>

#include <algorithm>

namespace {

using namespace ombrelc_test;

plaxi1::image_loader_t loader() {
  return plaxi1::image_loader_t(tamsel3::create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
}

// What `draw` puts on a white square of `side` logical pixels at scale 2.
template <typename draw_t>
wxImage drawn_at_scale_2(int side, draw_t draw) {
  wxBitmap bitmap;
  bitmap.CreateWithDIPSize(wxSize(side, side), 2.0, 24);
  {
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    draw(dc);
  }
  return bitmap.ConvertToImage();
}

bool same_pixels(const wxImage& a, const wxImage& b) {
  return a.IsOk() && b.IsOk() && a.GetSize() == b.GetSize() &&
         std::equal(a.GetData(), a.GetData() + 3 * a.GetWidth() * a.GetHeight(), b.GetData());
}

class picture_scale_test : public control_fixture_t {
 protected:
  void SetUp() override {
    control_fixture_t::SetUp();
    ASSERT_EQ(m_panel->GetContentScaleFactor(), 2.0);
    ASSERT_FALSE(loader().get_location().empty()) << "the build's archive holds the pictures";
  }
};

TEST_F(picture_scale_test, the_log_draws_its_line_pictures_from_their_dense_form) {
  auto list = ombrelc7::GetCurrentSystem()->CreateImageList();
  tamsel3::event_log_t log;
  log.prepare_image_list(list.get());
  ASSERT_GE(log.m_warning_image, 0);
  EXPECT_EQ(list->GetImageSize(), (size<int>(12, 12))) << "the lines keep their logical size";

  const wxImage dense = loader().load_static_picture("warning12").getImage(true);
  ASSERT_EQ(dense.GetSize(), wxSize(24, 24));
  const wxImage listed = drawn_at_scale_2(12, [&](wxDC& dc) { list->Draw(dc, log.m_warning_image, 0, 0); });
  const wxImage expected = drawn_at_scale_2(
      12, [&](wxDC& dc) { dc.DrawBitmap(wxBitmap(dense, wxBITMAP_SCREEN_DEPTH, 2.0), 0, 0, true); });
  EXPECT_TRUE(same_pixels(listed, expected));
}

TEST_F(picture_scale_test, a_message_icon_holds_its_dense_form_at_its_logical_size) {
  auto* image = new ombrelcfrw7::CImage(root(), size<int>(0, 0), ombrelc7::alNone);
  tamsel3::set_ombrelc_icon(*image, loader().load_static_picture("checkmark24"));
  layout();
  EXPECT_EQ(image->GetRect().width(), 24);
  EXPECT_EQ(image->GetRect().height(), 24);
  const wxImage expected = loader().load_static_picture("checkmark24").getImage(true);
  ASSERT_EQ(expected.GetSize(), wxSize(48, 48));
  const wxImage drawn = drawn_at_scale_2(
      24, [&](wxDC& dc) { dc.DrawBitmap(wxBitmap(expected, wxBITMAP_SCREEN_DEPTH, 2.0), 0, 0, true); });
  // The element draws at its rectangle: the part of a larger square that it covers.
  const rect<int> at = image->GetRect();
  const wxImage shown = drawn_at_scale_2(std::max(at.right, at.bottom), [&](wxDC& dc) {
                          image->Paint(dc, at);
                        }).GetSubImage(wxRect(2 * at.left, 2 * at.top, 2 * at.width(), 2 * at.height()));
  EXPECT_TRUE(same_pixels(shown, drawn));
}

TEST_F(picture_scale_test, the_busy_spinner_runs_its_dense_frames) {
  const plaxi1::picture_t spinner = loader().load_animated_picture("progress");
  ASSERT_TRUE(spinner.is_animation());
  ASSERT_TRUE(spinner.get_animation_2x().IsOk()) << "the archive holds progress@2x.gif";
  EXPECT_EQ(spinner.get_animation_2x().GetSize(), 2 * spinner.get_animation().GetSize());

  const auto animation = ombrelc7::CreateAnimation(spinner.get_animation(), spinner.get_animation_2x());
  ASSERT_EQ(animation->GetFrameCount(), static_cast<int>(spinner.get_animation().GetFrameCount()));
  EXPECT_EQ(animation->GetSize(), (size<int>(24, 24)));
  const wxBitmap frame = animation->GetFrame(0);
  EXPECT_EQ(frame.GetSize(), wxSize(48, 48));
  EXPECT_EQ(frame.GetScaleFactor(), 2.0);
}

}  // namespace
