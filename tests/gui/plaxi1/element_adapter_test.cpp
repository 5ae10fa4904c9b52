#include "element_fixture.h"
#include "input.h"

#include <plaxi1/ui_settings.h>

#include <wx/textctrl.h>

#include <vector>

namespace {

using namespace element_test;

/// A coloured box of a given content size that records what reaches it.
class probe_t : public RectangleElement {
 public:
  probe_t(const element_ptr& parent, int flags, const wxSize& size, const wxColour& colour = *wxRED)
      : RectangleElement(parent, flags), m_size(size) {
    SetBkColor(colour);
  }
  wxSize m_size;
  bool m_accepts = true;  // takes the mouse
  bool m_handles = true;  // uses what it gets
  std::vector<mouse_event_t::kind_t> m_events;
  std::vector<bool> m_inside;
  std::vector<UIElement*> m_targets;
  int m_keys = 0;
  int m_theme_changes = 0;

  int count(mouse_event_t::kind_t kind) const {
    return static_cast<int>(std::count(m_events.begin(), m_events.end(), kind));
  }

 protected:
  wxSize GetContentSize() const override { return m_size; }
  bool AcceptsMouse() const override { return m_accepts; }
  bool OnMouse(const mouse_event_t& event) override {
    m_events.push_back(event.kind);
    m_inside.push_back(event.inside);
    m_targets.push_back(event.target);
    return m_handles;
  }
  bool OnKey(const wxKeyEvent&) override {
    ++m_keys;
    return m_handles;
  }
  void OnThemeChanged() override { ++m_theme_changes; }
};
using probe_ptr = korvat2::intrusive_pointer_t<probe_t>;

class element_adapter_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_root->SetBkColor(*wxWHITE);
    m_left = new probe_t(m_root, pos_left, wxSize(100, 100), *wxGREEN);
    m_right = new probe_t(m_root, pos_right, wxSize(100, 100), *wxBLUE);
    m_window.show(m_root);
    ASSERT_EQ(m_left->GetRect(), wxRect(0, 0, 100, 100));
    ASSERT_EQ(m_right->GetRect(), wxRect(300, 0, 100, 100));
  }
  // Real pointer events, as the display delivers them.
  void move_to(const UIElement& element) { move_to(element.GetRect().GetPosition() + wxPoint(50, 50)); }
  void move_to(const wxPoint& client) { m_mouse.move(m_window.panel, client); }
  void press(int wait_for_pressed) {
    m_mouse.down();
    gui_test::wait_until(
        [&] { return (m_window.adapter->GetPressedElement() != nullptr) == wait_for_pressed; });
    gui_test::pump();
  }
  void release() {
    m_mouse.up();
    gui_test::wait_until([&] { return m_window.adapter->GetPressedElement() == nullptr; });
    gui_test::pump();
  }
  // Whether the key went unused (skipped on to wx).
  bool send_key(int code = 'A', bool shift = false) {
    wxKeyEvent key(wxEVT_KEY_DOWN);
    key.m_keyCode = code;
    key.m_shiftDown = shift;
    key.SetEventObject(m_window.panel);
    m_window.panel->ProcessWindowEvent(key);
    return key.GetSkipped();
  }

  // A white button, laid out, in a panel that takes the keyboard.
  korvat2::intrusive_pointer_t<FlatButton> make_white_button() {
    korvat2::intrusive_pointer_t<FlatButton> button = new FlatButton(m_left, pos_top);
    button->SetFixedSize(wxSize(60, 30));
    button->SetColor(state_normal, *wxWHITE);
    m_window.adapter->Relayout();
    m_window.panel->SetCanFocus(true);
    return button;
  }
  // Pixels in `area` of the panel's picture that are not `colour`.
  int pixels_not_of(const wxRect& area, const wxColour& colour) {
    const wxImage image = m_window.picture();
    const double scale = m_window.panel->GetContentScaleFactor();
    int count = 0;
    for (int y = area.y; y < area.GetBottom(); ++y) {
      for (int x = area.x; x < area.GetRight(); ++x) {
        count += colour_at(image, static_cast<int>(x * scale), static_cast<int>(y * scale)) != colour;
      }
    }
    return count;
  }

  element_window_t m_window;
  rectangle_ptr m_root{new RectangleElement()};
  probe_ptr m_left;
  probe_ptr m_right;
  gui_test::input_t m_mouse;
};

TEST_F(element_adapter_test, the_tree_is_painted_into_the_window) {
  m_root->SetBorderColor(*wxBLACK);
  m_root->ShowBorder(true);
  ASSERT_TRUE(
      gui_test::wait_until([&] { return m_root->GetPaintCount() > 0 && m_left->GetPaintCount() > 0; }));
  const wxImage image = m_window.picture();
  ASSERT_TRUE(image.IsOk());
  const double scale = m_window.panel->GetContentScaleFactor();
  auto at = [&](int x, int y) {
    return colour_at(image, static_cast<int>(x * scale), static_cast<int>(y * scale));
  };
  EXPECT_EQ(at(50, 50), *wxGREEN);
  EXPECT_EQ(at(350, 50), *wxBLUE);
  EXPECT_EQ(at(200, 150), *wxWHITE);
  EXPECT_EQ(at(200, 299), *wxBLACK);
  EXPECT_EQ(at(0, 150), *wxBLACK);
  EXPECT_EQ(at(399, 150), *wxBLACK);
  EXPECT_EQ(at(200, 297), *wxWHITE);
}

TEST_F(element_adapter_test, only_visible_elements_meeting_the_damage_are_repainted) {
  const probe_ptr hidden(new probe_t(m_root, pos_bottom, wxSize(50, 50)));
  hidden->SetVisible(false);
  ASSERT_TRUE(
      gui_test::wait_until([&] { return m_left->GetPaintCount() > 0 && m_right->GetPaintCount() > 0; }));
  gui_test::pump();
  const int left = m_left->GetPaintCount();
  const int right = m_right->GetPaintCount();
  m_left->Invalidate();
  ASSERT_TRUE(gui_test::wait_until([&] { return m_left->GetPaintCount() > left; }));
  gui_test::pump();
  EXPECT_EQ(m_right->GetPaintCount(), right);
  m_right->SetBkColor(*wxCYAN);
  ASSERT_TRUE(gui_test::wait_until([&] { return m_right->GetPaintCount() > right; }));
  EXPECT_EQ(hidden->GetPaintCount(), 0);
}

TEST_F(element_adapter_test, hover_and_pressed_states_follow_the_pointer) {
  move_to(*m_left);
  EXPECT_EQ(m_window.adapter->GetHoverElement(), m_left.get());
  EXPECT_TRUE(m_left->IsHovered());
  EXPECT_GE(m_left->count(mouse_event_t::move), 1);
  move_to(*m_right);
  EXPECT_EQ(m_window.adapter->GetHoverElement(), m_right.get());
  EXPECT_EQ(m_left->count(mouse_event_t::leave), 1);
  move_to(wxPoint(200, 200));  // over the root, which takes no mouse
  EXPECT_EQ(m_window.adapter->GetHoverElement(), nullptr);
  EXPECT_EQ(m_right->count(mouse_event_t::leave), 1);

  // Pressed, the element keeps the mouse until the release, wherever the pointer goes.
  move_to(*m_right);
  press(true);
  EXPECT_EQ(m_window.adapter->GetPressedElement(), m_right.get());
  EXPECT_TRUE(m_right->IsPressed());
  EXPECT_EQ(m_right->count(mouse_event_t::down), 1);
  m_right->m_events.clear();
  m_right->m_inside.clear();
  m_left->m_events.clear();
  move_to(*m_left);
  EXPECT_EQ(m_window.adapter->GetPressedElement(), m_right.get());
  EXPECT_EQ(m_window.adapter->GetHoverElement(), nullptr);
  EXPECT_TRUE(m_left->m_events.empty());
  ASSERT_FALSE(m_right->m_events.empty());
  EXPECT_EQ(m_right->m_events.back(), mouse_event_t::move);
  EXPECT_FALSE(m_right->m_inside.back());
  release();
  EXPECT_EQ(m_right->m_events.back(), mouse_event_t::up);
  EXPECT_FALSE(m_right->m_inside.back());
  EXPECT_EQ(m_window.adapter->GetPressedElement(), nullptr);
  EXPECT_EQ(m_window.adapter->GetHoverElement(), m_left.get());
  EXPECT_FALSE(m_window.panel->HasCapture());
}

TEST_F(element_adapter_test, a_double_click_is_two_presses_and_two_releases) {
  move_to(*m_right);
  m_mouse.double_click();
  ASSERT_TRUE(gui_test::wait_until([&] { return m_right->count(mouse_event_t::up) == 2; }));
  gui_test::pump();
  EXPECT_EQ(m_right->count(mouse_event_t::down), 2);
  EXPECT_EQ(m_right->count(mouse_event_t::up), 2);
  EXPECT_EQ(m_window.adapter->GetPressedElement(), nullptr);
  EXPECT_FALSE(m_window.panel->HasCapture());
}

TEST_F(element_adapter_test, events_go_on_to_the_parent_when_unused) {
  const probe_ptr inner(new probe_t(m_left, pos_left | pos_top, wxSize(40, 40)));
  const korvat2::intrusive_pointer_t<TextElement> label(
      new TextElement(m_right, pos_left | pos_top, "label"));
  inner->m_handles = false;
  m_window.adapter->Relayout();

  // An element that doesn't take the mouse lets it through to its holder.
  move_to(label->GetRect().GetPosition() + wxPoint(2, 2));
  EXPECT_EQ(m_window.adapter->GetHoverElement(), m_right.get());

  // The deepest element gets it first, and its parent what it leaves.
  move_to(wxPoint(20, 20));
  EXPECT_EQ(m_window.adapter->GetHoverElement(), inner.get());
  press(true);
  EXPECT_EQ(inner->count(mouse_event_t::down), 1);
  EXPECT_EQ(m_left->count(mouse_event_t::down), 1);
  EXPECT_EQ(m_left->m_targets.back(), inner.get());
  release();
  send_key();
  EXPECT_EQ(inner->m_keys, 1);
  EXPECT_EQ(m_left->m_keys, 1);
  EXPECT_EQ(m_right->m_keys, 0);
}

TEST_F(element_adapter_test, keys_go_to_the_element_pressed_last) {
  send_key();
  EXPECT_EQ(m_left->m_keys + m_right->m_keys, 0);
  move_to(*m_right);
  press(true);
  release();
  send_key();
  EXPECT_EQ(m_right->m_keys, 1);
  // A press where no element takes the mouse keeps the key element.
  move_to(wxPoint(200, 200));
  press(false);
  release();
  send_key();
  EXPECT_EQ(m_right->m_keys, 2);
  EXPECT_EQ(m_left->m_keys, 0);
}

TEST_F(element_adapter_test, an_element_taken_out_while_pressed_is_forgotten) {
  move_to(*m_right);
  press(true);
  ASSERT_TRUE(m_window.panel->HasCapture());
  probe_t* right = m_right.get();
  const probe_ptr keep = m_right;
  m_right->ChangeParent(nullptr);
  m_right.reset();
  EXPECT_EQ(m_window.adapter->GetPressedElement(), nullptr);
  EXPECT_EQ(m_window.adapter->GetHoverElement(), nullptr);
  EXPECT_EQ(right->count(mouse_event_t::capture_lost), 1);
  EXPECT_FALSE(m_window.panel->HasCapture());
  const std::size_t events = right->m_events.size();
  release();
  send_key();
  EXPECT_EQ(right->m_events.size(), events);
  EXPECT_EQ(right->m_keys, 0);
}

TEST_F(element_adapter_test, an_element_hidden_while_hovered_stops_being_hot) {
  move_to(*m_left);
  ASSERT_EQ(m_window.adapter->GetHoverElement(), m_left.get());
  m_left->SetVisible(false);
  EXPECT_EQ(m_window.adapter->GetHoverElement(), nullptr);
  move_to(wxPoint(50, 60));
  EXPECT_EQ(m_window.adapter->GetHoverElement(), nullptr);
}

TEST_F(element_adapter_test, the_adapter_outlives_its_window_quietly) {
  m_window.frame->Destroy();
  ASSERT_TRUE(gui_test::wait_until([] { return wxTopLevelWindows.empty(); }));
  EXPECT_EQ(m_window.adapter->GetWindow(), nullptr);
  m_left->Invalidate();
  m_left->SetFixedSize(wxSize(10, 10));
  m_window.adapter->Relayout();
  gui_test::pump();
  EXPECT_EQ(m_left->GetRect(), wxRect(0, 0, 100, 100));
  m_window.adapter.reset();
  m_window.frame = new wxFrame(nullptr, wxID_ANY, "again");  // for the fixture's end
}

TEST(element_adapter_lifetime_test, a_window_outlives_its_adapter) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "elements");
  auto* panel = new wxPanel(frame);
  frame->Show();
  auto adapter = std::make_unique<ElementAdapter>(panel);
  const rectangle_ptr root(new RectangleElement());
  adapter->SetRootElement(root);
  ASSERT_TRUE(gui_test::wait_until_shown(panel));
  root->RequestLayout();
  adapter.reset();
  EXPECT_EQ(root->GetAdapter(), nullptr);
  panel->SetSize(wxSize(50, 40));
  panel->Refresh();
  gui_test::pump();
  frame->Destroy();
}

TEST_F(element_adapter_test, a_change_of_the_ui_settings_measures_again_and_repaints) {
  ASSERT_TRUE(gui_test::wait_until([&] { return m_right->GetPaintCount() > 0; }));
  gui_test::pump();
  const int painted = m_right->GetPaintCount();
  m_left->m_size = wxSize(150, 120);  // as a new font would measure it
  plaxi1::ui_settings_t::get()->refresh();
  EXPECT_EQ(m_left->m_theme_changes, 1);
  EXPECT_EQ(m_right->m_theme_changes, 1);
  EXPECT_EQ(m_left->GetRect(), wxRect(0, 0, 150, 120));
  EXPECT_TRUE(gui_test::wait_until([&] { return m_right->GetPaintCount() > painted; }));
}

TEST_F(element_adapter_test, a_new_size_lays_the_tree_out_again) {
  m_window.frame->SetClientSize(wxSize(500, 320));
  ASSERT_TRUE(gui_test::wait_until([&] { return m_root->GetRect() == wxRect(0, 0, 500, 320); }));
  EXPECT_EQ(m_right->GetRect(), wxRect(400, 0, 100, 100));
}

TEST_F(element_adapter_test, a_requested_layout_runs_from_the_loop) {
  m_left->m_size = wxSize(60, 60);
  m_left->RequestLayout();
  EXPECT_EQ(m_left->GetRect(), wxRect(0, 0, 100, 100));
  EXPECT_TRUE(gui_test::wait_until([&] { return m_left->GetRect() == wxRect(0, 0, 60, 60); }));
  EXPECT_EQ(m_window.adapter->FindByTestID("none"), element_ptr());
  m_left->SetTestID("left");
  EXPECT_EQ(m_window.adapter->FindByTestID("left").get(), m_left.get());
}

TEST_F(element_adapter_test, tab_moves_the_focus_among_enabled_buttons_and_space_clicks_the_focused_one) {
  korvat2::intrusive_pointer_t<FlatButton> first = new FlatButton(m_left, pos_top);
  korvat2::intrusive_pointer_t<FlatButton> off = new FlatButton(m_left, pos_top);
  korvat2::intrusive_pointer_t<FlatButton> last = new FlatButton(m_right, pos_top);
  off->Enable(false);
  m_left->m_handles = m_right->m_handles = false;
  pressed_ids_t pressed;
  last->SetId(3);
  last->pressed.connect(&pressed, &pressed_ids_t::on);
  ElementAdapter& adapter = *m_window.adapter;
  EXPECT_FALSE(send_key(WXK_TAB));
  EXPECT_EQ(adapter.GetFocusElement(), first.get());
  EXPECT_FALSE(send_key(WXK_TAB));
  EXPECT_EQ(adapter.GetFocusElement(), last.get());
  EXPECT_FALSE(send_key(WXK_SPACE));
  EXPECT_EQ(pressed.ids, std::vector<int>{3});
  EXPECT_FALSE(send_key(WXK_TAB, true));
  EXPECT_EQ(adapter.GetFocusElement(), first.get());
  // Past the first one, the focus leaves for the window's other controls.
  EXPECT_TRUE(send_key(WXK_TAB, true));
  EXPECT_EQ(adapter.GetFocusElement(), nullptr);
  EXPECT_TRUE(send_key(WXK_SPACE));
  EXPECT_EQ(pressed.ids.size(), 1u);
}

TEST_F(element_adapter_test, a_focused_button_loses_the_focus_when_disabled_or_hidden) {
  korvat2::intrusive_pointer_t<FlatButton> button = new FlatButton(m_left, pos_top);
  m_window.adapter->SetFocusElement(button.get());
  button->Enable(false);
  EXPECT_EQ(m_window.adapter->GetFocusElement(), nullptr);
  button->Enable(true);
  m_window.adapter->SetFocusElement(button.get());
  m_left->SetVisible(false);
  EXPECT_EQ(m_window.adapter->GetFocusElement(), nullptr);
}

TEST_F(element_adapter_test, the_focused_button_shows_a_focus_mark_while_the_window_has_the_keyboard) {
  korvat2::intrusive_pointer_t<FlatButton> button = make_white_button();
  m_window.panel->SetFocus();
  ASSERT_TRUE(gui_test::wait_until([&] { return wxWindow::FindFocus() == m_window.panel; }));
  const wxRect area = button->GetRect();
  ASSERT_EQ(area.GetSize(), wxSize(60, 30));
  auto marked = [&] { return pixels_not_of(area, *wxWHITE); };
  gui_test::pump();
  EXPECT_EQ(marked(), 0);
  const int painted = button->GetPaintCount();
  m_window.adapter->SetFocusElement(button.get());
  ASSERT_TRUE(gui_test::wait_until([&] { return button->GetPaintCount() > painted; }));
  EXPECT_GT(marked(), 20);
}

TEST_F(element_adapter_test, the_focus_mark_goes_with_the_keyboard_and_comes_back_with_it) {
  korvat2::intrusive_pointer_t<FlatButton> button = make_white_button();
  auto* other = new wxTextCtrl(m_window.frame, wxID_ANY, "", wxPoint(200, 250));
  m_window.panel->SetFocus();
  ASSERT_TRUE(gui_test::wait_until([&] { return wxWindow::FindFocus() == m_window.panel; }));
  m_window.adapter->SetFocusElement(button.get());
  gui_test::pump();
  // The button is painted again each time the keyboard leaves or comes, and shows the
  // mark only with it.
  std::vector<bool> marks;
  for (wxWindow* focus : {static_cast<wxWindow*>(other), static_cast<wxWindow*>(m_window.panel)}) {
    const int painted = button->GetPaintCount();
    focus->SetFocus();
    ASSERT_TRUE(gui_test::wait_until([&] { return wxWindow::FindFocus() == focus; }));
    EXPECT_TRUE(gui_test::wait_until([&] { return button->GetPaintCount() > painted; }));
    marks.push_back(pixels_not_of(button->GetRect(), *wxWHITE) > 20);
  }
  EXPECT_EQ(marks, (std::vector<bool>{false, true}));
}

}  // namespace

TEST_F(element_adapter_test, the_adapter_of_a_window_is_found_until_it_goes) {
  EXPECT_EQ(ElementAdapter::Find(m_window.panel), m_window.adapter.get());
  EXPECT_EQ(ElementAdapter::Find(m_window.panel->GetParent()), nullptr);
  wxWindow* panel = m_window.panel;
  m_window.adapter.reset();
  EXPECT_EQ(ElementAdapter::Find(panel), nullptr);
}
