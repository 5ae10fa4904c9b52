// Runs with GDK_SCALE=2: a side panel's busy tab draws the dense frames of its animation.
#include "../plaxi1/test_animation.h"
#include "fixtures.h"
#include "gui_test.h"

#include <plaxi1/elements.h>
#include <plaxi1/screenshot.h>
#include <tamsel3/side_panel.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/sizer.h>

namespace {

using tamsel3::side_panel_t;

TEST(side_panel_scale_test, an_animation_with_a_dense_form_shows_that_form) {
  ASSERT_EQ(plaxi1::display_scale(), 2.0);
  // The normal form red, the dense one green: the colour on screen tells which is drawn.
  const plaxi1::picture_t busy(plaxi1_test::solid_animation({*wxRED, *wxRED}, wxSize(12, 12), 40),
                               plaxi1_test::solid_animation({*wxGREEN, *wxGREEN}, wxSize(24, 24), 40));
  auto* frame = new wxFrame(nullptr, wxID_ANY, "side panel", wxPoint(40, 40));
  auto* panel = new side_panel_t(frame, wxID_ANY);
  const side_panel_t::button_ptr_t button =
      panel->add_button("Findings", busy, side_panel_t::button_style_large);
  auto* sizer = new wxBoxSizer(wxHORIZONTAL);
  sizer->Add(panel, 0, wxEXPAND);
  frame->SetSizer(sizer);
  frame->SetClientSize(wxSize(300, 200));
  frame->Show();
  ASSERT_TRUE(gui_test::wait_until_shown(panel));
  ASSERT_TRUE(gui_test::wait_until([&] { return button->IsAnimating(); }));

  const wxRect picture = button->GetChildren().front()->GetRect();
  ASSERT_GE(picture.width, 12);
  test_support::temp_dir_t dir;
  ASSERT_TRUE(plaxi1::save_screenshot(panel, dir.file("panel.png")));
  const wxImage shot(wxString::FromUTF8(dir.file("panel.png")), wxBITMAP_TYPE_PNG);
  ASSERT_EQ(shot.GetSize(), 2 * panel->GetClientSize());
  const wxPoint at = 2 * (picture.GetPosition() + wxPoint(6, picture.height / 2));
  // The frames went through a palette: near green, far from red.
  EXPECT_GT(shot.GetGreen(at.x, at.y), 200);
  EXPECT_LT(shot.GetRed(at.x, at.y), 60);
  frame->Destroy();
}

}  // namespace
