#include "fixtures.h"
#include "gui_test.h"

#include <zandor/debug.h>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/timer.h>

#include <chrono>

namespace {

constexpr int custom_id = wxID_HIGHEST + 1;

// A dialog with a button that ends it with the button's id, and a cancel button that
// the dialog's own handlers answer.
class harness_dialog_t : public wxDialog {
 public:
  explicit harness_dialog_t(int button_id) : wxDialog(nullptr, wxID_ANY, "harness") {
    m_button = new wxButton(this, button_id, "Press", wxDefaultPosition, wxDefaultSize, 0, wxDefaultValidator,
                            "m_btn_press");
    m_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent& event) { EndModal(event.GetId()); });
    auto* cancel = new wxButton(this, wxID_CANCEL, "Cancel");
    auto* sizer = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(m_button, 0, wxALL, 10);
    sizer->Add(cancel, 0, wxALL, 10);
    SetSizerAndFit(sizer);
  }

  wxButton* m_button;
};

TEST(harness_test, wait_until_sees_a_flag_set_by_call_after) {
  bool flag = false;
  wxTheApp->CallAfter([&flag] { flag = true; });
  EXPECT_TRUE(gui_test::wait_until([&flag] { return flag; }));
}

TEST(harness_test, wait_until_gives_up_after_its_bound) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(gui_test::wait_until([] { return false; }, 100));
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_GE(waited, std::chrono::milliseconds(100));
  EXPECT_LT(waited, std::chrono::seconds(2));
}

TEST(harness_test, a_click_from_inside_the_modal_loop_ends_the_dialog_with_the_button_id) {
  harness_dialog_t dialog(custom_id);
  bool acted = false;
  gui_test::on_next_modal([&acted](wxDialog& shown) {
    acted = true;
    EXPECT_TRUE(shown.IsShownOnScreen());
    gui_test::click(&shown, "m_btn_press");
  });
  EXPECT_EQ(dialog.ShowModal(), custom_id);
  EXPECT_TRUE(acted);
}

TEST(harness_test, an_action_waits_for_a_dialog_that_opens_later) {
  harness_dialog_t dialog(custom_id);
  gui_test::on_next_modal([](wxDialog& shown) { gui_test::click(&shown, "m_btn_press"); });
  int result = 0;
  wxTimer timer;
  timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { result = dialog.ShowModal(); });
  timer.StartOnce(50);
  EXPECT_TRUE(gui_test::wait_until([&result] { return result != 0; }));
  EXPECT_EQ(result, custom_id);
}

TEST(harness_test, find_named_finds_by_window_name_and_by_xrc_id) {
  harness_dialog_t dialog(wxID_OK);
  EXPECT_EQ(gui_test::find_named(&dialog, "m_btn_press"), dialog.m_button);
  EXPECT_EQ(gui_test::find_named(&dialog, "wxID_OK"), dialog.m_button);
  EXPECT_EQ(gui_test::find_named(&dialog, "m_btn_missing"), nullptr);
}

TEST(harness_test, escape_ends_a_dialog_with_an_escape_id_as_cancelled) {
  harness_dialog_t dialog(custom_id);
  dialog.SetEscapeId(wxID_CANCEL);
  gui_test::on_next_modal([](wxDialog& shown) { gui_test::press_key(&shown, WXK_ESCAPE); });
  EXPECT_EQ(dialog.ShowModal(), wxID_CANCEL);
}

TEST(harness_test, escape_sent_to_a_control_reaches_its_dialog) {
  harness_dialog_t dialog(custom_id);
  dialog.SetEscapeId(wxID_CANCEL);
  gui_test::on_next_modal([&dialog](wxDialog&) { gui_test::press_key(dialog.m_button, WXK_ESCAPE); });
  EXPECT_EQ(dialog.ShowModal(), wxID_CANCEL);
}

TEST(harness_test, escape_does_nothing_to_a_dialog_without_an_escape_id) {
  harness_dialog_t dialog(custom_id);
  dialog.SetEscapeId(wxID_NONE);
  gui_test::on_next_modal([](wxDialog& shown) {
    gui_test::press_key(&shown, WXK_ESCAPE);
    gui_test::pump();
    EXPECT_TRUE(shown.IsModal());
    gui_test::click(&shown, "m_btn_press");
  });
  EXPECT_EQ(dialog.ShowModal(), custom_id);
}

TEST(harness_test, closing_by_the_frame_ends_a_modal_dialog_through_its_close_handler) {
  harness_dialog_t dialog(wxID_OK);
  dialog.Bind(wxEVT_CLOSE_WINDOW, [&dialog](wxCloseEvent& event) {
    EXPECT_TRUE(event.CanVeto());
    dialog.EndModal(42);
  });
  gui_test::on_next_modal([](wxDialog& shown) { EXPECT_TRUE(gui_test::close_by_frame(&shown)); });
  EXPECT_EQ(dialog.ShowModal(), 42);
}

// The colour at the middle of a captured PNG.
wxColour middle_of(const std::string& path) {
  wxImage image;
  if (!image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG)) {
    ADD_FAILURE() << "can't read " << path;
    return wxColour();
  }
  const int x = image.GetWidth() / 2;
  const int y = image.GetHeight() / 2;
  return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

TEST(harness_test, capture_shows_the_drawn_window_as_it_is_now) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "capture", wxPoint(50, 50));
  // The client area's size: a window's own size may hold decorations, which leave less room.
  frame->SetClientSize(wxSize(240, 160));
  auto* panel = new wxPanel(frame);
  panel->SetBackgroundColour(wxColour(200, 30, 40));
  new wxButton(panel, wxID_OK, "Button", wxPoint(10, 10));
  frame->Show();
  test_support::temp_dir_t dir;

  const std::string path = dir.file("frame.png");
  ASSERT_TRUE(gui_test::capture_png(frame, path));
  wxImage image;
  ASSERT_TRUE(image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG));
  // The picture holds what the window draws: its client area, without decorations GTK draws.
  EXPECT_EQ(image.GetSize(), frame->GetClientSize());
  EXPECT_EQ(middle_of(path), wxColour(200, 30, 40));

  // Nothing asked for a repaint: the capture itself makes the screen current.
  panel->SetBackgroundColour(wxColour(20, 160, 60));
  const std::string changed = dir.file("changed.png");
  ASSERT_TRUE(gui_test::capture_png(frame, changed));
  EXPECT_EQ(middle_of(changed), wxColour(20, 160, 60));
  frame->Destroy();
}

TEST(harness_test, capture_of_a_control_covers_just_the_control) {
  harness_dialog_t dialog(custom_id);
  test_support::temp_dir_t dir;
  const std::string path = dir.file("button.png");
  gui_test::on_next_modal([&](wxDialog&) {
    EXPECT_TRUE(gui_test::capture_png(dialog.m_button, path));
    gui_test::click(dialog.m_button);
  });
  EXPECT_EQ(dialog.ShowModal(), custom_id);
  wxImage image;
  ASSERT_TRUE(image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG));
  EXPECT_EQ(image.GetSize(), dialog.m_button->GetSize());
}

TEST(harness_test, a_wx_assertion_fails_the_running_test) {
  EXPECT_NONFATAL_FAILURE(wxFAIL_MSG("harness probe"), "harness probe");
}

TEST(harness_test, an_unexpected_assertion_report_fails_the_running_test) {
  EXPECT_NONFATAL_FAILURE(ZANDOR_ASSERT(1 + 1 == 3), "1 + 1 == 3");
}

}  // namespace
