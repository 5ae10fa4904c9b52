// Runs with GDK_SCALE=2: a window's picture has its device pixels, twice its logical size.
#include "fixtures.h"
#include "gui_test.h"

#include <plaxi1/screenshot.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/panel.h>

#include <string>

namespace {

const wxColour left_colour(200, 30, 40);
const wxColour right_colour(30, 40, 200);

wxColour colour_at(const wxImage& image, int x, int y) {
  return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

TEST(screenshot_scale_test, the_picture_has_twice_the_client_size_and_sharp_edges) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "screenshot", wxPoint(40, 40));
  frame->SetClientSize(240, 160);
  auto* left = new wxPanel(frame, wxID_ANY, wxPoint(0, 0), wxSize(120, 160));
  auto* right = new wxPanel(frame, wxID_ANY, wxPoint(120, 0), wxSize(120, 160));
  left->SetBackgroundColour(left_colour);
  right->SetBackgroundColour(right_colour);
  frame->Show();
  ASSERT_TRUE(gui_test::wait_until_shown(frame));
  ASSERT_EQ(frame->GetContentScaleFactor(), 2.0);
  test_support::temp_dir_t dir;
  const std::string path = dir.file("scale2.png");

  ASSERT_TRUE(plaxi1::save_screenshot(frame, path));
  wxImage image;
  ASSERT_TRUE(image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG));
  EXPECT_EQ(image.GetSize(), 2 * frame->GetClientSize());
  // The panels meet at logical x 120: device pixel 239 is the left one's, 240 the right one's.
  const int y = image.GetHeight() / 4;
  EXPECT_EQ(colour_at(image, 239, y), left_colour);
  EXPECT_EQ(colour_at(image, 240, y), right_colour);
  frame->Destroy();
}

}  // namespace
