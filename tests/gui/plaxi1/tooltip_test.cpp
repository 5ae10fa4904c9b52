#include "gui_test.h"
#include "input.h"

#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>

#include <gtest/gtest.h>
#include <wx/display.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/tooltip.h>
#include <wx/weakref.h>

#include <string>

namespace {

using plaxi1::GetTooltip;
using plaxi1::SetTooltip;
using plaxi1::wxCustomTooltip;

constexpr int child_id = wxID_HIGHEST + 7;
// Border and padding on each side of the text.
constexpr int popup_frame = 1 + 6;
// Between the pointer and a popup below it, and between a window and a popup under it.
constexpr int pointer_clearance = 20;
constexpr int window_gap = 2;

const std::string long_text =
    "A tooltip text that is long enough to need several lines once it is wrapped at the "
    "width that tooltips allow, so that the popup's label holds line breaks that the "
    "wrapping put there; the popup must stay narrower than that width and its frame.";

// A shown frame with a panel that has a child panel of id child_id.
struct tooltip_frame_t {
  tooltip_frame_t() {
    frame = new wxFrame(nullptr, wxID_ANY, "tooltip", wxPoint(100, 100), wxSize(400, 300));
    panel = new wxPanel(frame);
    child = new wxPanel(panel, child_id, wxPoint(10, 10), wxSize(120, 60));
    frame->Show();
    EXPECT_TRUE(gui_test::wait_until_shown(frame));
  }
  wxFrame* frame;
  wxPanel* panel;
  wxPanel* child;
};

wxStaticText* popup_label(wxWindow* popup) {
  for (wxWindow* child : popup->GetChildren()) {
    if (auto* label = wxDynamicCast(child, wxStaticText)) {
      return label;
    }
  }
  return nullptr;
}

void send_mouse(wxWindow* window, wxEventType type, const wxPoint& position = wxPoint()) {
  wxMouseEvent event(type);
  event.SetEventObject(window);
  event.SetPosition(position);
  window->GetEventHandler()->ProcessEvent(event);
}

// Takes the pointer to the display's lower right corner, where no window is. Without an
// X11 display there is no pointer to move: a Wayland client can't, and a compositor without
// a seat has none.
void move_pointer_away() {
  if (wxGetDisplayInfo().type == wxDisplayX11) {
    gui_test::input_t().move_off_windows();
  }
}

TEST(tooltip_test, set_tooltip_makes_one_tooltip_per_window) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "first", -1, true);
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(GetTooltip(windows.panel), tooltip);
  EXPECT_EQ(tooltip->GetText(), "first");

  EXPECT_EQ(SetTooltip(windows.panel, "second", -1, true), tooltip);
  EXPECT_EQ(tooltip->GetText(), "second");
  EXPECT_EQ(GetTooltip(windows.child), nullptr);
}

TEST(tooltip_test, empty_text_or_disabling_removes_the_tooltip) {
  tooltip_frame_t windows;
  ASSERT_NE(SetTooltip(windows.panel, "text", -1, true), nullptr);
  EXPECT_EQ(SetTooltip(windows.panel, "", -1, true), nullptr);
  EXPECT_EQ(GetTooltip(windows.panel), nullptr);

  ASSERT_NE(SetTooltip(windows.panel, "text", -1, true), nullptr);
  EXPECT_EQ(SetTooltip(windows.panel, "text", -1, false), nullptr);
  EXPECT_EQ(GetTooltip(windows.panel), nullptr);

  // Events for the window still pass without a tooltip.
  send_mouse(windows.panel, wxEVT_ENTER_WINDOW);
  send_mouse(windows.panel, wxEVT_LEAVE_WINDOW);
}

TEST(tooltip_test, an_id_selects_the_child_window) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "child", child_id, true);
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(GetTooltip(windows.child), tooltip);
  EXPECT_EQ(GetTooltip(windows.panel), nullptr);
}

TEST(tooltip_test, the_native_tooltip_is_cleared) {
  tooltip_frame_t windows;
  windows.panel->SetToolTip("native");
  ASSERT_NE(windows.panel->GetToolTip(), nullptr);
  SetTooltip(windows.panel, "own", -1, true);
  EXPECT_EQ(windows.panel->GetToolTip(), nullptr);
}

TEST(tooltip_test, delays_have_defaults_and_can_be_set) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "delays", -1, true);
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(tooltip->GetShowDelay(), 500);
  EXPECT_EQ(tooltip->GetHideDelay(), 5000);
  tooltip->SetShowDelay(100);
  tooltip->SetHideDelay(120000);
  EXPECT_EQ(tooltip->GetShowDelay(), 100);
  EXPECT_EQ(tooltip->GetHideDelay(), 120000);
}

TEST(tooltip_test, show_now_shows_the_wrapped_text_in_theme_colours) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, long_text, -1, true);
  ASSERT_NE(tooltip, nullptr);
  EXPECT_FALSE(tooltip->IsPopupShown());
  EXPECT_EQ(tooltip->GetPopup(), nullptr);

  tooltip->ShowNow();
  ASSERT_TRUE(tooltip->IsPopupShown());
  wxWindow* popup = tooltip->GetPopup();
  ASSERT_NE(popup, nullptr);
  EXPECT_TRUE(gui_test::wait_until([popup] { return popup->IsShownOnScreen(); }, 3000));

  wxStaticText* label = popup_label(popup);
  ASSERT_NE(label, nullptr);
  unsigned long lines = 0;
  const std::string expected = plaxi1::wrap_text(long_text, 600, label, lines, 0, nullptr);
  EXPECT_GT(lines, 1u);
  EXPECT_EQ(std::string(label->GetLabelText().utf8_str()), expected);
  EXPECT_LE(popup->GetSize().x, 600 + 2 * popup_frame);
  EXPECT_GE(popup->GetSize().y, label->GetSize().y + 2 * popup_frame);

  const auto settings = plaxi1::ui_settings_t::get();
  EXPECT_EQ(popup->GetBackgroundColour(), settings->get_color(plaxi1::color_info));
  EXPECT_EQ(label->GetForegroundColour(), settings->get_color(plaxi1::color_info_text));
  EXPECT_EQ(label->GetFont(), settings->get_font(plaxi1::font_normal));

  tooltip->Hide();
  EXPECT_FALSE(tooltip->IsPopupShown());
  EXPECT_EQ(tooltip->GetPopup(), nullptr);
}

TEST(tooltip_test, the_popup_stays_on_the_display) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, long_text, -1, true);
  ASSERT_NE(tooltip, nullptr);
  // A window at the display's lower right corner leaves no room below or to the right.
  const wxRect display = wxDisplay(0u).GetGeometry();
  windows.frame->Move(display.GetRight() - 150, display.GetBottom() - 100);
  gui_test::pump();
  tooltip->ShowNow();
  ASSERT_TRUE(tooltip->IsPopupShown());
  const wxRect rect = tooltip->GetPopup()->GetScreenRect();
  EXPECT_TRUE(display.Contains(rect)) << rect.x << "," << rect.y << " " << rect.width << "x" << rect.height;
}

TEST(tooltip_test, new_text_while_shown_updates_the_popup) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "old", -1, true);
  tooltip->ShowNow();
  ASSERT_TRUE(tooltip->IsPopupShown());
  SetTooltip(windows.panel, "new text", -1, true);
  ASSERT_TRUE(tooltip->IsPopupShown());
  EXPECT_EQ(popup_label(tooltip->GetPopup())->GetLabelText(), "new text");
}

TEST(tooltip_test, the_hide_delay_takes_the_popup_away) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "short-lived", -1, true);
  tooltip->SetHideDelay(200);
  tooltip->ShowNow();
  EXPECT_TRUE(tooltip->IsPopupShown());
  EXPECT_TRUE(gui_test::wait_until([tooltip] { return !tooltip->IsPopupShown(); }, 3000));
}

TEST(tooltip_test, a_long_hide_delay_keeps_the_popup) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "long-lived", -1, true);
  tooltip->SetHideDelay(120000);
  tooltip->ShowNow();
  // Past the default delay's share of a test run: still there.
  EXPECT_FALSE(gui_test::wait_until([tooltip] { return !tooltip->IsPopupShown(); }, 1500));
  EXPECT_TRUE(tooltip->IsPopupShown());

  // Shortened while shown, the delay counts anew.
  tooltip->SetHideDelay(100);
  EXPECT_TRUE(gui_test::wait_until([tooltip] { return !tooltip->IsPopupShown(); }, 3000));
}

TEST(tooltip_test, leaving_clicking_or_typing_hides_the_popup) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "hide me", -1, true);

  tooltip->ShowNow();
  send_mouse(windows.panel, wxEVT_LEAVE_WINDOW);
  EXPECT_FALSE(tooltip->IsPopupShown());

  tooltip->ShowNow();
  send_mouse(windows.panel, wxEVT_LEFT_DOWN);
  EXPECT_FALSE(tooltip->IsPopupShown());

  tooltip->ShowNow();
  wxKeyEvent key(wxEVT_KEY_DOWN);
  key.m_keyCode = 'A';
  key.SetEventObject(windows.panel);
  windows.panel->GetEventHandler()->ProcessEvent(key);
  EXPECT_FALSE(tooltip->IsPopupShown());
}

TEST(tooltip_test, a_resting_mouse_brings_the_popup_after_the_show_delay) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "resting", child_id, true);
  ASSERT_NE(tooltip, nullptr);
  tooltip->SetShowDelay(100);

  gui_test::input_t mouse;
  const wxRect child = windows.child->GetScreenRect();
  mouse.move(windows.child, wxPoint(20, 20));
  ASSERT_TRUE(gui_test::wait_until([tooltip] { return tooltip->IsPopupShown(); }, 3000));

  // Below the pointer, not under it.
  const wxRect popup = tooltip->GetPopup()->GetScreenRect();
  EXPECT_FALSE(popup.Contains(mouse.position()));
  EXPECT_GT(popup.GetTop(), child.GetTop() + 20);

  // The mouse goes elsewhere: so does the popup.
  mouse.move(windows.child, wxPoint(child.width + 150, child.height + 150));
  EXPECT_TRUE(gui_test::wait_until([tooltip] { return !tooltip->IsPopupShown(); }, 3000));
}

TEST(tooltip_test, with_the_pointer_elsewhere_the_popup_goes_under_its_window) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "under the window", child_id, true);
  ASSERT_NE(tooltip, nullptr);
  // The pointer was over the window once, and has left it since.
  send_mouse(windows.child, wxEVT_ENTER_WINDOW, wxPoint(30, 20));
  send_mouse(windows.child, wxEVT_MOTION, wxPoint(30, 20));
  send_mouse(windows.child, wxEVT_LEAVE_WINDOW, wxPoint(30, 70));
  move_pointer_away();

  tooltip->ShowNow();
  ASSERT_TRUE(tooltip->IsPopupShown());
  const wxRect child = windows.child->GetScreenRect();
  EXPECT_EQ(tooltip->GetPopup()->GetPosition(), wxPoint(child.x, child.GetBottom() + 1 + window_gap));
}

TEST(tooltip_test, the_popup_goes_below_the_pointer_that_the_windows_events_tell_of) {
  tooltip_frame_t windows;
  move_pointer_away();
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "below the pointer", child_id, true);
  ASSERT_NE(tooltip, nullptr);
  send_mouse(windows.child, wxEVT_ENTER_WINDOW, wxPoint(5, 5));
  send_mouse(windows.child, wxEVT_MOTION, wxPoint(30, 20));

  tooltip->ShowNow();
  ASSERT_TRUE(tooltip->IsPopupShown());
  const wxPoint pointer = windows.child->ClientToScreen(wxPoint(30, 20));
  EXPECT_EQ(tooltip->GetPopup()->GetPosition(), wxPoint(pointer.x, pointer.y + pointer_clearance));
}

TEST(tooltip_test, the_pointer_entering_brings_the_popup_after_the_show_delay) {
  tooltip_frame_t windows;
  move_pointer_away();
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, "resting", child_id, true);
  ASSERT_NE(tooltip, nullptr);
  tooltip->SetShowDelay(50);
  send_mouse(windows.child, wxEVT_ENTER_WINDOW, wxPoint(30, 20));
  ASSERT_TRUE(gui_test::wait_until([tooltip] { return tooltip->IsPopupShown(); }, 3000));
  const wxPoint pointer = windows.child->ClientToScreen(wxPoint(30, 20));
  EXPECT_EQ(tooltip->GetPopup()->GetPosition(), wxPoint(pointer.x, pointer.y + pointer_clearance));

  send_mouse(windows.child, wxEVT_LEAVE_WINDOW, wxPoint(30, 70));
  EXPECT_FALSE(tooltip->IsPopupShown());
}

TEST(tooltip_test, the_tooltip_goes_with_its_window) {
  tooltip_frame_t windows;
  wxCustomTooltip* tooltip = SetTooltip(windows.panel, long_text, child_id, true);
  ASSERT_NE(tooltip, nullptr);
  tooltip->ShowNow();
  const wxWeakRef<wxWindow> popup = tooltip->GetPopup();
  ASSERT_TRUE(popup);

  windows.frame->Destroy();
  ASSERT_TRUE(gui_test::wait_until([] { return wxTopLevelWindows.empty(); }));
  EXPECT_FALSE(popup);

  // A new window has no tooltip, even where the old one lived.
  tooltip_frame_t again;
  EXPECT_EQ(GetTooltip(again.child), nullptr);
  EXPECT_EQ(GetTooltip(again.panel), nullptr);
}

TEST(tooltip_test, a_child_with_a_tooltip_may_die_alone) {
  tooltip_frame_t windows;
  SetTooltip(windows.panel, "parent", -1, true);
  SetTooltip(windows.child, "child", -1, true);
  windows.child->Destroy();
  gui_test::pump();
  wxCustomTooltip* parent_tooltip = GetTooltip(windows.panel);
  ASSERT_NE(parent_tooltip, nullptr);
  EXPECT_EQ(parent_tooltip->GetText(), "parent");
  parent_tooltip->ShowNow();
  EXPECT_TRUE(parent_tooltip->IsPopupShown());
}

}  // namespace
