// Runs with GDK_SCALE=2: the message window's busy spinner draws its dense frames.
#include "../message_test_support.h"

#include <tamsel3/resource.h>

#include <ombrelc7/picture.h>
#include <plaxi1/image_loader.h>

#include <wx/filename.h>
#include <wx/generic/animate.h>

namespace {

using tamsel3::message_window_t;

// Pixels of `frame` that the spinner covers: opaque ones.
std::vector<bool> covered(const wxImage& frame) {
  std::vector<bool> mask;
  for (int y = 0; y < frame.GetHeight(); ++y) {
    for (int x = 0; x < frame.GetWidth(); ++x) {
      mask.push_back(frame.HasAlpha() ? frame.GetAlpha(x, y) > 127 : !frame.IsTransparent(x, y));
    }
  }
  return mask;
}

// Pixels of `shot` that differ from `background`.
std::vector<bool> drawn_on(const wxImage& shot, const wxColour& background) {
  std::vector<bool> mask;
  for (int y = 0; y < shot.GetHeight(); ++y) {
    for (int x = 0; x < shot.GetWidth(); ++x) {
      mask.push_back(wxColour(shot.GetRed(x, y), shot.GetGreen(x, y), shot.GetBlue(x, y)) != background);
    }
  }
  return mask;
}

// A picture of `dialog` as the screen shows it, in device pixels.
wxImage picture_of(wxDialog& dialog) {
  const std::string path = wxFileName::CreateTempFileName("message").utf8_string();
  EXPECT_TRUE(gui_test::capture_png(&dialog, path));
  const wxImage shot(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG);
  wxRemoveFile(wxString::FromUTF8(path));
  return shot;
}

TEST(message_animation_scale_test, the_spinner_shows_its_dense_frames_sharp_on_the_window_background) {
  const plaxi1::picture_t spinner =
      plaxi1::image_loader_t(tamsel3::create_resource_filename("tamsel3.dat", "tamsel_images.xrc"))
          .load_animated_picture("progress");
  ASSERT_TRUE(spinner.get_animation_2x().IsOk());
  const wxImage dense = spinner.get_animation_2x().GetFrame(0);

  message_window_t data = message_test::warning(message_window_t::buttons_none, "Preparing", "");
  data.m_icon_type = message_window_t::icon_progress;
  message_test::run_message(data, [&](wxDialog& shown) {
    // The dialog ends also when an assertion below leaves early: else its loop would run on.
    struct end_modal_t {
      wxDialog& m_dialog;
      ~end_modal_t() { m_dialog.EndModal(wxID_CANCEL); }
    } end_modal{shown};
    wxGenericAnimationCtrl* animation = message_test::panel_of(shown)->get_animation_ctrl();
    ASSERT_NE(animation, nullptr);
    ASSERT_EQ(animation->GetContentScaleFactor(), 2.0);
    EXPECT_EQ(animation->GetSize(), wxSize(24, 24)) << "the logical size of the normal form";
    animation->Stop();  // holds the first frame
    const wxImage shot = picture_of(shown);
    // The picture is of the client area, without decorations that GTK may draw around it.
    ASSERT_EQ(shot.GetSize(), 2 * shown.GetClientSize());
    const wxPoint at = 2 * (animation->GetScreenPosition() - shown.ClientToScreen(wxPoint(0, 0)));
    ASSERT_GT(at.x, 0);
    // The theme's colour beside the spinner, which must show behind it too.
    const wxColour background(shot.GetRed(at.x - 1, at.y), shot.GetGreen(at.x - 1, at.y),
                              shot.GetBlue(at.x - 1, at.y));
    const wxImage square = shot.GetSubImage(wxRect(at, dense.GetSize()));
    const std::vector<bool> shown_ink = drawn_on(square, background);
    const std::vector<bool> frame_ink = covered(dense);
    std::size_t differing = 0;
    for (std::size_t i = 0; i < shown_ink.size(); ++i) {
      differing += shown_ink[i] != frame_ink[i] ? 1 : 0;
    }
    EXPECT_EQ(differing, 0u) << "pixels where the window and the dense frame differ";
  });
}

}  // namespace
