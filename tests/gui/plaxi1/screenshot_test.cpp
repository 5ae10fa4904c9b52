#include "fixtures.h"
#include "gui_test.h"

#include <plaxi1/screenshot.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/panel.h>
#include <wx/popupwin.h>

#include <algorithm>
#include <string>

namespace {

const wxColour panel_colour(200, 30, 40);
const wxColour popup_colour(20, 160, 60);
const wxColour cover_colour(30, 40, 200);
const wxSize client_size(240, 160);

// A frame filled with one colour, its client area 240x160, shown at `position`; destroyed
// with the fixture.
struct coloured_frame_t {
  explicit coloured_frame_t(const wxPoint& position, const wxColour& colour = panel_colour)
      : frame(new wxFrame(nullptr, wxID_ANY, "screenshot", position)), panel(new wxPanel(frame)) {
    // The client size, not the window's: on Wayland that holds GTK's title bar and shadow.
    frame->SetClientSize(client_size);
    panel->SetBackgroundColour(colour);
    frame->Show();
  }
  ~coloured_frame_t() { frame->Destroy(); }
  coloured_frame_t(const coloured_frame_t&) = delete;
  coloured_frame_t& operator=(const coloured_frame_t&) = delete;

  wxFrame* frame;
  wxPanel* panel;
};

wxImage load_png(const std::string& path) {
  wxImage image;
  EXPECT_TRUE(image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG)) << path;
  return image;
}

// The colour at `logical` in a picture of a coloured frame: the picture has device pixels,
// as many times the logical ones as it is wider than the frame's client area.
wxColour colour_at(const wxImage& image, const wxPoint& logical) {
  const int scale = std::max(1, image.GetWidth() / client_size.x);
  const wxPoint point = logical * scale;
  return wxColour(image.GetRed(point.x, point.y), image.GetGreen(point.x, point.y),
                  image.GetBlue(point.x, point.y));
}

TEST(screenshot_test, a_window_partly_off_the_screen_is_pictured_whole) {
  coloured_frame_t shown(wxPoint(-120, -80));
  ASSERT_TRUE(gui_test::wait_until([&] { return shown.frame->IsShownOnScreen(); }));
  test_support::temp_dir_t dir;
  const std::string path = dir.file("off_screen.png");

  ASSERT_TRUE(plaxi1::save_screenshot(shown.frame, path));
  const wxImage image = load_png(path);
  ASSERT_TRUE(image.IsOk());
  EXPECT_EQ(image.GetSize(), client_size * static_cast<int>(shown.frame->GetContentScaleFactor()));
  EXPECT_EQ(colour_at(image, wxPoint(5, 5)), panel_colour);  // the part beyond the screen's corner
  EXPECT_EQ(colour_at(image, wxPoint(234, 154)), panel_colour);
}

TEST(screenshot_test, the_picture_has_the_client_size_times_the_scale) {
  coloured_frame_t shown(wxPoint(60, 60));
  ASSERT_TRUE(gui_test::wait_until_shown(shown.frame));
  test_support::temp_dir_t dir;
  const std::string path = dir.file("size.png");

  ASSERT_TRUE(plaxi1::save_screenshot(shown.frame, path));
  const wxImage image = load_png(path);
  ASSERT_TRUE(image.IsOk());
  const double scale = shown.frame->GetContentScaleFactor();
  const wxSize client = shown.frame->GetClientSize();
  EXPECT_EQ(image.GetSize(), wxSize(static_cast<int>(client.x * scale), static_cast<int>(client.y * scale)));
}

TEST(screenshot_test, a_covered_window_is_pictured_with_its_own_pixels) {
  coloured_frame_t covered(wxPoint(60, 60));
  ASSERT_TRUE(gui_test::wait_until_shown(covered.frame));
  // Shown later at the same place, the other window lies over it.
  coloured_frame_t cover(wxPoint(60, 60), cover_colour);
  cover.frame->Raise();
  ASSERT_TRUE(gui_test::wait_until_shown(cover.frame));
  test_support::temp_dir_t dir;
  const std::string path = dir.file("covered.png");

  ASSERT_TRUE(plaxi1::save_screenshot(covered.frame, path));
  const wxImage image = load_png(path);
  ASSERT_TRUE(image.IsOk());
  for (const wxPoint& point : {wxPoint(5, 5), wxPoint(120, 80), wxPoint(234, 154)}) {
    EXPECT_EQ(colour_at(image, point), panel_colour) << point.x << "," << point.y;
  }
}

TEST(screenshot_test, a_popup_of_a_control_is_in_the_picture_where_it_shows) {
  coloured_frame_t shown(wxPoint(60, 60));
  ASSERT_TRUE(gui_test::wait_until([&] { return shown.frame->IsShownOnScreen(); }));
  auto* popup = new wxPopupWindow(shown.panel);
  popup->SetBackgroundColour(popup_colour);
  popup->SetSize(shown.panel->ClientToScreen(wxPoint(100, 60)).x,
                 shown.panel->ClientToScreen(wxPoint(100, 60)).y, 40, 30);
  popup->Show();
  ASSERT_TRUE(gui_test::wait_until([&] { return popup->IsShownOnScreen(); }));
  test_support::temp_dir_t dir;
  const std::string path = dir.file("popup.png");

  ASSERT_TRUE(plaxi1::save_screenshot(shown.frame, path));
  const wxImage image = load_png(path);
  ASSERT_TRUE(image.IsOk());
  EXPECT_EQ(colour_at(image, wxPoint(102, 62)), popup_colour);
  EXPECT_EQ(colour_at(image, wxPoint(137, 87)), popup_colour);
  EXPECT_EQ(colour_at(image, wxPoint(98, 58)), panel_colour);
  EXPECT_EQ(colour_at(image, wxPoint(142, 92)), panel_colour);
}

}  // namespace
