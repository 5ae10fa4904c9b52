// The accessible objects of an element tree, read in-process through ATK as the AT-SPI
// bridge reads them.
#include "atk_objects.h"
#include "element_fixture.h"

#include <atk/atk.h>
#include <gtk/gtk.h>

#include <string>

namespace {

using namespace element_test;
using gui_test::has_state;
using gui_test::listed_child;

// Counts children-changed emissions and keeps the last index.
struct children_count_t {
  int count = 0;
  int index = -1;
  static void on(AtkObject*, guint index, gpointer, gpointer self) {
    ++static_cast<children_count_t*>(self)->count;
    static_cast<children_count_t*>(self)->index = static_cast<int>(index);
  }
};

class element_accessible_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_text = new TextElement(m_root, pos_top);
    m_text->SetText("Two messages");
    m_button = new TabButton(m_root, pos_top);
    m_button->GetText()->SetText("Next");
    m_window.show(m_root);
  }

  AtkObject* host() const {
    return gtk_widget_get_accessible(static_cast<GtkWidget*>(m_window.panel->GetHandle()));
  }

  element_window_t m_window;
  element_ptr m_root = new RectangleElement(nullptr, pos_none);
  korvat2::intrusive_pointer_t<TextElement> m_text;
  korvat2::intrusive_pointer_t<TabButton> m_button;
};

TEST_F(element_accessible_test, the_window_lists_labels_and_buttons_with_their_extents) {
  ASSERT_EQ(atk_object_get_n_accessible_children(host()), 2);
  AtkObject* label = listed_child(host(), 0);
  EXPECT_EQ(atk_object_get_role(label), ATK_ROLE_LABEL);
  EXPECT_STREQ(atk_object_get_name(label), "Two messages");
  ASSERT_TRUE(ATK_IS_TEXT(label));
  AtkObject* button = listed_child(host(), 1);
  EXPECT_EQ(atk_object_get_role(button), ATK_ROLE_PUSH_BUTTON);
  EXPECT_STREQ(atk_object_get_name(button), "Next");
  EXPECT_TRUE(has_state(button, ATK_STATE_ENABLED));
  EXPECT_TRUE(has_state(button, ATK_STATE_SHOWING));
  gint x = 0;
  gint y = 0;
  gint width = 0;
  gint height = 0;
  atk_component_get_extents(ATK_COMPONENT(button), &x, &y, &width, &height, ATK_XY_SCREEN);
  const wxRect drawn = m_button->GetRect();
  EXPECT_EQ(wxPoint(x, y), m_window.panel->ClientToScreen(drawn.GetPosition()));
  EXPECT_EQ(wxSize(width, height), drawn.GetSize());
  EXPECT_GT(width, 0);
}

TEST_F(element_accessible_test, the_click_action_presses_the_button) {
  pressed_ids_t pressed;
  m_button->SetId(7);
  m_button->pressed.connect(&pressed, &pressed_ids_t::on);
  AtkObject* button = listed_child(host(), 1);
  ASSERT_TRUE(ATK_IS_ACTION(button));
  EXPECT_STREQ(atk_action_get_name(ATK_ACTION(button), 0), "click");
  EXPECT_TRUE(atk_action_do_action(ATK_ACTION(button), 0));
  EXPECT_TRUE(gui_test::wait_until([&] { return pressed.ids == std::vector<int>{7}; }));
}

TEST_F(element_accessible_test, a_removed_element_is_announced_and_turns_defunct) {
  AtkObject* label = ATK_OBJECT(g_object_ref(listed_child(host(), 0)));
  children_count_t removed;
  const gui_test::handler_t connected1(host(), "children-changed::remove", G_CALLBACK(children_count_t::on),
                                       &removed);
  m_text->ChangeParent(nullptr);
  m_text = nullptr;
  EXPECT_EQ(removed.count, 1);
  EXPECT_EQ(removed.index, 0);
  EXPECT_TRUE(has_state(label, ATK_STATE_DEFUNCT));
  g_object_unref(label);
  EXPECT_EQ(atk_object_get_n_accessible_children(host()), 1);
  g_signal_handlers_disconnect_by_data(host(), &removed);
}

TEST_F(element_accessible_test, a_new_root_replaces_the_listed_children) {
  ASSERT_NE(listed_child(host(), 0), nullptr);
  children_count_t added;
  const gui_test::handler_t connected2(host(), "children-changed::add", G_CALLBACK(children_count_t::on),
                                       &added);
  element_ptr other = new RectangleElement(nullptr, pos_none);
  auto* caption = new TextElement(other, pos_top);
  caption->SetText("Other page");
  m_window.show(other);
  ASSERT_TRUE(gui_test::wait_until([&] { return added.count == 1; }));
  ASSERT_EQ(atk_object_get_n_accessible_children(host()), 1);
  EXPECT_STREQ(atk_object_get_name(listed_child(host(), 0)), "Other page");
  g_signal_handlers_disconnect_by_data(host(), &added);
}

TEST_F(element_accessible_test, a_button_that_opens_something_is_expandable_and_tells_when_it_opens) {
  AtkObject* button = listed_child(host(), 1);
  EXPECT_FALSE(has_state(button, ATK_STATE_EXPANDABLE));
  m_button->SetAccessibleExpanded(false);
  EXPECT_TRUE(has_state(button, ATK_STATE_EXPANDABLE));
  EXPECT_FALSE(has_state(button, ATK_STATE_EXPANDED));
  struct changes_t {
    int count = 0;
    static void on(AtkObject*, gchar* name, gboolean on, gpointer self) {
      if (std::string(name) == "expanded" && on) {
        ++static_cast<changes_t*>(self)->count;
      }
    }
  } opened;
  const gui_test::handler_t connected3(button, "state-change", G_CALLBACK(changes_t::on), &opened);
  m_button->SetAccessibleExpanded(true);
  EXPECT_EQ(opened.count, 1);
  EXPECT_TRUE(has_state(button, ATK_STATE_EXPANDED));
  g_signal_handlers_disconnect_by_data(button, &opened);
}

TEST_F(element_accessible_test, the_focused_button_is_announced) {
  AtkObject* button = listed_child(host(), 1);
  EXPECT_TRUE(has_state(button, ATK_STATE_FOCUSABLE));
  int focused = 0;
  struct on_state {
    static void on(AtkObject*, gchar* name, gboolean on, gpointer count) {
      *static_cast<int*>(count) += std::string(name) == "focused" ? (on ? 1 : -10) : 0;
    }
  };
  const gui_test::handler_t connected4(button, "state-change", G_CALLBACK(on_state::on), &focused);
  wxKeyEvent tab(wxEVT_KEY_DOWN);
  tab.m_keyCode = WXK_TAB;
  tab.SetEventObject(m_window.panel);
  m_window.panel->ProcessWindowEvent(tab);
  EXPECT_EQ(focused, 1);
  EXPECT_TRUE(has_state(button, ATK_STATE_FOCUSED));
  EXPECT_TRUE(atk_component_grab_focus(ATK_COMPONENT(button)));
  g_signal_handlers_disconnect_by_data(button, &focused);
}

}  // namespace
