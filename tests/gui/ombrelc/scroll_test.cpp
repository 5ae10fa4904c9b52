#include "ombrelc_fixture.h"

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

class ombrelc_scroll_test : public control_fixture_t {
 protected:
  void SetUp() override {
    control_fixture_t::SetUp();
    m_scroller = new CScrollContainer(root(), size<int>(0, 0), ombrelc7::alClient);
    m_log = new CEventLog(nullptr, size<int>(0, 0), ombrelc7::alFill);
    m_scroller->SetScrolled(m_log);
  }
  void add_lines(int count) {
    for (int i = 0; i < count; ++i) {
      new CVisualElement(m_log, size<int>(10, 20), ombrelc7::alFill);
    }
    layout();
  }
  void wheel(int rotation) {
    wxMouseEvent event(wxEVT_MOUSEWHEEL);
    event.SetPosition(wxPoint(50, 50));
    event.m_wheelRotation = rotation;
    event.m_wheelDelta = 120;
    event.m_linesPerAction = 3;
    event.SetEventObject(m_panel);
    m_panel->GetEventHandler()->ProcessEvent(event);
  }

  CScrollContainer* m_scroller = nullptr;
  CEventLog* m_log = nullptr;
};

TEST_F(ombrelc_scroll_test, the_scrolled_element_becomes_the_child_and_gets_the_view_width) {
  add_lines(100);
  EXPECT_EQ(m_log->GetParent(), m_scroller);
  EXPECT_EQ(m_scroller->GetContentHeight(), 2000);
  EXPECT_EQ(m_log->GetRect().width(), m_scroller->GetViewRect().width());
  EXPECT_LT(m_scroller->GetViewRect().width(), m_scroller->GetRect().width());
  EXPECT_EQ(m_scroller->GetMaxScrollPos(), 2000 - m_scroller->GetViewRect().height());
}

TEST_F(ombrelc_scroll_test, set_scroll_pos_is_clamped_and_moves_the_view) {
  add_lines(100);
  m_scroller->SetScrollPos(300);
  EXPECT_EQ(m_scroller->GetScrollPos(), 300);
  EXPECT_FALSE(m_scroller->IsAtEnd());
  const auto* line = m_log->GetChildren()[20];
  EXPECT_EQ(line->GetRect().top, 400);
  EXPECT_EQ(line->GetWindowRect().top, 100);
  // The element at a window point is found through the scrolling.
  EXPECT_EQ(root()->HitTest(ombrelc7::point<int>(20, 105)), line);
  m_scroller->SetScrollPos(-50);
  EXPECT_EQ(m_scroller->GetScrollPos(), 0);
  m_scroller->SetScrollPos(1 << 20);
  EXPECT_EQ(m_scroller->GetScrollPos(), m_scroller->GetMaxScrollPos());
  EXPECT_TRUE(m_scroller->IsAtEnd());
}

TEST_F(ombrelc_scroll_test, the_wheel_scrolls_three_lines_a_notch) {
  add_lines(100);
  m_scroller->SetScrollPos(0);
  wheel(-120);
  EXPECT_EQ(m_scroller->GetScrollPos(), 3 * m_scroller->GetLineStep());
  wheel(120);
  EXPECT_EQ(m_scroller->GetScrollPos(), 0);
}

TEST_F(ombrelc_scroll_test, keys_scroll_by_line_page_and_to_the_ends) {
  add_lines(100);
  m_scroller->SetScrollPos(0);
  gui_test::press_key(m_panel, WXK_DOWN);
  EXPECT_EQ(m_scroller->GetScrollPos(), m_scroller->GetLineStep());
  gui_test::press_key(m_panel, WXK_UP);
  EXPECT_EQ(m_scroller->GetScrollPos(), 0);
  gui_test::press_key(m_panel, WXK_PAGEDOWN);
  const int page = m_scroller->GetViewRect().height() - m_scroller->GetLineStep();
  EXPECT_EQ(m_scroller->GetScrollPos(), page);
  gui_test::press_key(m_panel, WXK_PAGEUP);
  EXPECT_EQ(m_scroller->GetScrollPos(), 0);
  gui_test::press_key(m_panel, WXK_END);
  EXPECT_TRUE(m_scroller->IsAtEnd());
  gui_test::press_key(m_panel, WXK_HOME);
  EXPECT_EQ(m_scroller->GetScrollPos(), 0);
}

TEST_F(ombrelc_scroll_test, a_view_at_the_end_follows_the_growing_content) {
  add_lines(100);
  m_scroller->ScrollToEnd();
  const int before = m_scroller->GetScrollPos();
  add_lines(10);
  EXPECT_EQ(m_scroller->GetScrollPos(), before + 200);
  EXPECT_TRUE(m_scroller->IsAtEnd());
  // Scrolled up, it stays where the user put it.
  m_scroller->SetScrollPos(100);
  add_lines(10);
  EXPECT_EQ(m_scroller->GetScrollPos(), 100);
}

TEST_F(ombrelc_scroll_test, a_click_in_the_track_pages_and_the_thumb_drags) {
  add_lines(100);
  m_scroller->SetScrollPos(0);
  const auto r = m_scroller->GetRect();
  auto mouse = [&](wxEventType type, int x, int y) {
    wxMouseEvent event(type);
    event.SetPosition(wxPoint(x, y));
    event.SetEventObject(m_panel);
    m_panel->GetEventHandler()->ProcessEvent(event);
  };
  mouse(wxEVT_LEFT_DOWN, r.right - 4, r.bottom - 5);
  mouse(wxEVT_LEFT_UP, r.right - 4, r.bottom - 5);
  EXPECT_EQ(m_scroller->GetScrollPos(), m_scroller->GetViewRect().height() - m_scroller->GetLineStep());
  m_scroller->SetScrollPos(0);
  mouse(wxEVT_LEFT_DOWN, r.right - 4, r.top + 5);  // on the thumb
  mouse(wxEVT_MOTION, r.right - 4, r.bottom - 1);
  EXPECT_TRUE(m_scroller->IsAtEnd());
  mouse(wxEVT_LEFT_UP, r.right - 4, r.bottom - 1);
}

TEST_F(ombrelc_scroll_test, a_right_click_emits_the_context_menu_signal_with_the_line) {
  add_lines(30);
  m_scroller->SetScrollPos(0);
  struct menu_receiver_t : korvat2::subscriber_base_t {
    void on(CVisualElement* element, int x, int y) {
      m_element = element;
      m_x = x;
      m_y = y;
    }
    CVisualElement* m_element = nullptr;
    int m_x = -1;
    int m_y = -1;
  } receiver;
  m_log->ContextMenuSignal().connect(&receiver, &menu_receiver_t::on);
  wxMouseEvent event(wxEVT_RIGHT_DOWN);
  event.SetPosition(wxPoint(30, 45));
  event.SetEventObject(m_panel);
  m_panel->GetEventHandler()->ProcessEvent(event);
  EXPECT_EQ(receiver.m_element, m_log->GetChildren()[2]);
  EXPECT_EQ(receiver.m_x, 30);
  EXPECT_EQ(receiver.m_y, 45);
  receiver.m_element = nullptr;
  gui_test::press_key(m_panel, WXK_MENU);
  EXPECT_NE(receiver.m_element, nullptr);
}

}  // namespace
