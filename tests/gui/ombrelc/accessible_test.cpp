// The accessible objects of drawn elements, read in-process through ATK as the AT-SPI
// bridge reads them.
#include "ombrelc_fixture.h"

#include <a11y/accessible.h>
#include <a11y/atk_bridge.h>

#include <atk/atk.h>
#include <gtk/gtk.h>

#include <map>
#include <string>
#include <vector>

namespace ombrelc_test {
namespace {

using ombrelcfrw7::CButton;
using ombrelcfrw7::CCaption;
using ombrelcfrw7::CCustomMessageBox;
using ombrelcfrw7::CGauge;
using ombrelcfrw7::CVertBox;

// A reference to an AtkObject, dropped at the end of the scope.
struct object_ref_t {
  explicit object_ref_t(AtkObject* object) : m_object(object) {}
  ~object_ref_t() {
    if (m_object) {
      g_object_unref(m_object);
    }
  }
  object_ref_t(const object_ref_t&) = delete;
  object_ref_t& operator=(const object_ref_t&) = delete;
  AtkObject* get() const { return m_object; }
  AtkObject* m_object;
};

// Counts a signal of an AtkObject and keeps its last index argument.
struct signal_count_t {
  int count = 0;
  int index = -1;
  static void on_children(AtkObject*, guint index, gpointer, gpointer self) {
    ++static_cast<signal_count_t*>(self)->count;
    static_cast<signal_count_t*>(self)->index = static_cast<int>(index);
  }
  static void on_state(AtkObject*, gchar* name, gboolean on, gpointer self) {
    if (std::string(name) == "focused" && on) {
      ++static_cast<signal_count_t*>(self)->count;
    }
  }
  static void on_property(AtkObject*, gpointer, gpointer self) {
    ++static_cast<signal_count_t*>(self)->count;
  }
};

// The text-remove and text-insert signals of an AtkText, in order.
struct text_changes_t {
  std::vector<std::string> seen;
  static void on_remove(AtkObject*, gint position, gint length, gchar* text, gpointer self) {
    static_cast<text_changes_t*>(self)->add("delete", position, length, text);
  }
  static void on_insert(AtkObject*, gint position, gint length, gchar* text, gpointer self) {
    static_cast<text_changes_t*>(self)->add("insert", position, length, text);
  }
  void add(const char* kind, gint position, gint length, const gchar* text) {
    seen.push_back(std::string(kind) + " " + std::to_string(position) + " " + std::to_string(length) + " " +
                   text);
  }
};

// The unit of `granularity` at `offset`, with its bounds: "start end text".
std::string unit_at(AtkObject* object, gint offset, AtkTextGranularity granularity) {
  gint start = -1;
  gint end = -1;
  gchar* text = atk_text_get_string_at_offset(ATK_TEXT(object), offset, granularity, &start, &end);
  std::string found = std::to_string(start) + " " + std::to_string(end) + " " + (text ? text : "(null)");
  g_free(text);
  return found;
}

bool has_state(AtkObject* object, AtkStateType state) {
  AtkStateSet* set = atk_object_ref_state_set(object);
  const bool has = atk_state_set_contains_state(set, state);
  g_object_unref(set);
  return has;
}

class accessible_test : public control_fixture_t {
 protected:
  void SetUp() override {
    control_fixture_t::SetUp();
    m_box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
    m_caption = new CCaption(m_box, size<int>(0, 0), ombrelc7::alFill);
    m_caption->SetCaption("Symbols loaded");
    m_button = new CButton(m_box, size<int>(0, 0), ombrelc7::alNone);
    m_button->SetCaption("Cancel");
    layout();
  }

  AtkObject* host() const { return gtk_widget_get_accessible(static_cast<GtkWidget*>(m_panel->GetHandle())); }
  // The box only lays its children out: they are listed in its place, on the host (a panel
  // has no native children before them).
  AtkObject* box() const { return host(); }
  AtkObject* box_child(int index) const {
    object_ref_t child(atk_object_ref_accessible_child(box(), index));
    return child.get();  // the bridge keeps its own reference while the element lives
  }

  CVertBox* m_box = nullptr;
  CCaption* m_caption = nullptr;
  CButton* m_button = nullptr;
};

TEST_F(accessible_test, the_window_lists_the_tree_with_roles_names_text_and_actions) {
  ASSERT_EQ(atk_object_get_n_accessible_children(box()), 2);
  AtkObject* label = box_child(0);
  EXPECT_EQ(atk_object_get_role(label), ATK_ROLE_LABEL);
  EXPECT_STREQ(atk_object_get_name(label), "Symbols loaded");
  ASSERT_TRUE(ATK_IS_TEXT(label));
  gchar* text = atk_text_get_text(ATK_TEXT(label), 0, -1);
  EXPECT_STREQ(text, "Symbols loaded");
  g_free(text);
  EXPECT_FALSE(ATK_IS_ACTION(label));
  AtkObject* button = box_child(1);
  EXPECT_EQ(atk_object_get_role(button), ATK_ROLE_PUSH_BUTTON);
  EXPECT_STREQ(atk_object_get_name(button), "Cancel");
  ASSERT_TRUE(ATK_IS_ACTION(button));
  EXPECT_STREQ(atk_action_get_name(ATK_ACTION(button), 0), "click");
  EXPECT_TRUE(has_state(button, ATK_STATE_ENABLED));
  EXPECT_TRUE(has_state(button, ATK_STATE_FOCUSABLE));
  EXPECT_TRUE(has_state(button, ATK_STATE_SHOWING));
  EXPECT_EQ(atk_object_get_parent(button), box());
  EXPECT_EQ(atk_object_get_index_in_parent(button), 1);
}

TEST_F(accessible_test, extents_are_the_drawn_rectangles_on_the_screen) {
  gint x = 0;
  gint y = 0;
  gint width = 0;
  gint height = 0;
  atk_component_get_extents(ATK_COMPONENT(box_child(1)), &x, &y, &width, &height, ATK_XY_SCREEN);
  const rect<int> drawn = m_button->GetWindowRect();
  const wxPoint origin = m_panel->ClientToScreen(wxPoint(drawn.left, drawn.top));
  EXPECT_EQ(x, origin.x);
  EXPECT_EQ(y, origin.y);
  EXPECT_EQ(width, drawn.width());
  EXPECT_EQ(height, drawn.height());
  EXPECT_GT(width, 0);
}

TEST_F(accessible_test, the_click_action_clicks_the_button_at_idle_time) {
  receiver_t<ombrelcfrw7::CButton*> clicks;
  m_button->ClickSignal().connect(&clicks, &receiver_t<ombrelcfrw7::CButton*>::on);
  EXPECT_TRUE(atk_action_do_action(ATK_ACTION(box_child(1)), 0));
  EXPECT_EQ(clicks.m_count, 0);
  EXPECT_TRUE(gui_test::wait_until([&] { return clicks.m_count == 1; }));
}

TEST_F(accessible_test, a_deleted_element_is_announced_removed_and_its_object_turns_defunct) {
  object_ref_t label(ATK_OBJECT(g_object_ref(box_child(0))));
  signal_count_t removed;
  g_signal_connect(box(), "children-changed::remove", G_CALLBACK(signal_count_t::on_children), &removed);
  delete m_caption;
  EXPECT_EQ(removed.count, 1);
  EXPECT_EQ(removed.index, 0);
  EXPECT_TRUE(has_state(label.get(), ATK_STATE_DEFUNCT));
  EXPECT_EQ(atk_object_get_n_accessible_children(box()), 1);
}

TEST_F(accessible_test, an_added_child_is_announced_once_it_is_whole) {
  ASSERT_EQ(atk_object_get_n_accessible_children(box()), 2);  // a client knows the list
  signal_count_t added;
  g_signal_connect(box(), "children-changed::add", G_CALLBACK(signal_count_t::on_children), &added);
  auto* caption = new CCaption(m_box, size<int>(0, 0), ombrelc7::alFill);
  caption->SetCaption("Indexing");
  ASSERT_TRUE(gui_test::wait_until([&] { return added.count == 1; }));
  EXPECT_EQ(added.index, 2);
  AtkObject* object = box_child(2);
  EXPECT_EQ(atk_object_get_role(object), ATK_ROLE_LABEL);
  EXPECT_TRUE(ATK_IS_TEXT(object));
  EXPECT_STREQ(atk_object_get_name(object), "Indexing");
}

TEST_F(accessible_test, nothing_is_made_for_added_elements_until_a_client_lists_the_window) {
  auto* caption = new CCaption(m_box, size<int>(0, 0), ombrelc7::alFill);
  caption->SetCaption("Indexing");
  layout();
  EXPECT_EQ(m_control->GetAccessibleBridge()->object_count(), 0u);
}

TEST_F(accessible_test, a_hidden_element_leaves_the_list) {
  ASSERT_EQ(atk_object_get_role(box_child(0)), ATK_ROLE_LABEL);  // a client knows it
  signal_count_t removed;
  g_signal_connect(box(), "children-changed::remove", G_CALLBACK(signal_count_t::on_children), &removed);
  m_caption->SetVisible(false);
  EXPECT_EQ(removed.count, 1);
  ASSERT_EQ(atk_object_get_n_accessible_children(box()), 1);
  EXPECT_EQ(atk_object_get_role(box_child(0)), ATK_ROLE_PUSH_BUTTON);
}

TEST_F(accessible_test, focus_moves_are_announced) {
  AtkObject* button = box_child(1);
  signal_count_t focused;
  g_signal_connect(button, "state-change", G_CALLBACK(signal_count_t::on_state), &focused);
  m_control->SetFocusElement(m_button);
  EXPECT_EQ(focused.count, 1);
  EXPECT_TRUE(has_state(button, ATK_STATE_FOCUSED));
}

TEST_F(accessible_test, a_changed_caption_announces_its_old_text_deleted_and_its_new_text_inserted) {
  AtkObject* label = box_child(0);
  text_changes_t changes;
  g_signal_connect(label, "text-remove", G_CALLBACK(text_changes_t::on_remove), &changes);
  g_signal_connect(label, "text-insert", G_CALLBACK(text_changes_t::on_insert), &changes);
  signal_count_t renamed;
  g_signal_connect(label, "property-change::accessible-name", G_CALLBACK(signal_count_t::on_property),
                   &renamed);
  m_caption->SetCaption("Indexing");
  EXPECT_EQ(changes.seen, (std::vector<std::string>{"delete 0 14 Symbols loaded", "insert 0 8 Indexing"}));
  EXPECT_EQ(renamed.count, 1);
  m_caption->SetCaption("Indexing");
  EXPECT_EQ(changes.seen.size(), 2u);
}

TEST_F(accessible_test, a_caption_gives_its_characters_words_and_lines_by_offset) {
  m_caption->SetCaption("Symbols loaded\nfrom the cache");
  AtkObject* label = box_child(0);
  EXPECT_EQ(unit_at(label, 1, ATK_TEXT_GRANULARITY_CHAR), "1 2 y");
  EXPECT_EQ(unit_at(label, 3, ATK_TEXT_GRANULARITY_WORD), "0 8 Symbols ");
  EXPECT_EQ(unit_at(label, 7, ATK_TEXT_GRANULARITY_WORD), "0 8 Symbols ");
  EXPECT_EQ(unit_at(label, 10, ATK_TEXT_GRANULARITY_WORD), "8 15 loaded\n");
  EXPECT_EQ(unit_at(label, 3, ATK_TEXT_GRANULARITY_LINE), "0 15 Symbols loaded\n");
  EXPECT_EQ(unit_at(label, 20, ATK_TEXT_GRANULARITY_LINE), "15 29 from the cache");
  EXPECT_EQ(unit_at(label, 40, ATK_TEXT_GRANULARITY_WORD), "0 0 ");
}

// The first child of `parent` with `role`, or null.
AtkObject* child_with_role(AtkObject* parent, AtkRole role) {
  for (int i = 0; i < atk_object_get_n_accessible_children(parent); ++i) {
    object_ref_t child(atk_object_ref_accessible_child(parent, i));
    if (atk_object_get_role(child.get()) == role) {
      return child.get();
    }
  }
  return nullptr;
}

TEST_F(accessible_test, a_message_card_is_a_panel_named_by_its_header_which_names_its_gauge_too) {
  auto* card = new CCustomMessageBox(m_box, size<int>(0, 0), ombrelc7::alFill);
  card->GetCaption()->SetCaption("Indexing");
  auto* column = new CVertBox(card, size<int>(0, 0), ombrelc7::alFill);
  new CGauge(column, size<int>(100, 10), ombrelc7::alFill);
  layout();
  ASSERT_EQ(atk_object_get_n_accessible_children(host()), 3);
  AtkObject* panel = box_child(2);
  EXPECT_EQ(atk_object_get_role(panel), ATK_ROLE_PANEL);
  EXPECT_STREQ(atk_object_get_name(panel), "Indexing");
  // The column only lays the gauge out: the gauge is listed in the card itself.
  AtkObject* gauge = child_with_role(panel, ATK_ROLE_PROGRESS_BAR);
  ASSERT_NE(gauge, nullptr);
  EXPECT_EQ(atk_object_get_parent(gauge), panel);
  EXPECT_STREQ(atk_object_get_name(gauge), "Indexing");
  signal_count_t renamed;
  g_signal_connect(gauge, "property-change::accessible-name", G_CALLBACK(signal_count_t::on_property),
                   &renamed);
  card->GetCaption()->SetCaption("Scanning");
  EXPECT_EQ(renamed.count, 1);
  EXPECT_STREQ(atk_object_get_name(panel), "Scanning");
  EXPECT_STREQ(atk_object_get_name(gauge), "Scanning");
}

TEST_F(accessible_test, children_of_a_hidden_layout_box_leave_the_list_in_its_place) {
  auto* column = new CVertBox(m_box, size<int>(0, 0), ombrelc7::alFill);
  auto* caption = new CCaption(column, size<int>(0, 0), ombrelc7::alFill);
  caption->SetCaption("Inside");
  layout();
  ASSERT_EQ(atk_object_get_n_accessible_children(host()), 3);
  object_ref_t inside(ATK_OBJECT(g_object_ref(box_child(2))));
  EXPECT_STREQ(atk_object_get_name(inside.get()), "Inside");
  EXPECT_EQ(atk_object_get_index_in_parent(inside.get()), 2);
  signal_count_t removed;
  g_signal_connect(host(), "children-changed::remove", G_CALLBACK(signal_count_t::on_children), &removed);
  column->SetVisible(false);
  EXPECT_EQ(removed.count, 1);
  EXPECT_EQ(removed.index, 2);
  EXPECT_TRUE(has_state(inside.get(), ATK_STATE_DEFUNCT));
  EXPECT_EQ(atk_object_get_n_accessible_children(host()), 2);
  g_signal_handlers_disconnect_by_data(host(), &removed);
}

TEST_F(accessible_test, a_gauge_gives_its_percentage_as_value_and_announces_changes) {
  auto* gauge = new CGauge(m_box, size<int>(100, 10), ombrelc7::alFill);
  gauge->SetMax(200);
  layout();
  ASSERT_EQ(atk_object_get_n_accessible_children(box()), 3);
  AtkObject* object = box_child(2);
  EXPECT_EQ(atk_object_get_role(object), ATK_ROLE_PROGRESS_BAR);
  ASSERT_TRUE(ATK_IS_VALUE(object));
  signal_count_t changes;
  g_signal_connect(object, "property-change::accessible-value", G_CALLBACK(signal_count_t::on_property),
                   &changes);
  gauge->SetPos(50);
  EXPECT_EQ(changes.count, 1);
  gdouble value = 0;
  atk_value_get_value_and_text(ATK_VALUE(object), &value, nullptr);
  EXPECT_DOUBLE_EQ(value, 25.0);
  AtkRange* range = atk_value_get_range(ATK_VALUE(object));
  EXPECT_DOUBLE_EQ(atk_range_get_upper_limit(range), 100.0);
  atk_range_free(range);
}

TEST_F(accessible_test, a_live_region_carries_its_politeness_in_its_attributes) {
  m_caption->SetLive(a11y::politeness_t::assertive);
  AtkAttributeSet* attributes = atk_object_get_attributes(box_child(0));
  std::map<std::string, std::string> found;
  for (GSList* item = attributes; item; item = item->next) {
    const auto* attribute = static_cast<AtkAttribute*>(item->data);
    found[attribute->name] = attribute->value;
  }
  atk_attribute_set_free(attributes);
  EXPECT_EQ(found["container-live"], "assertive");
  EXPECT_EQ(found["live"], "assertive");
  EXPECT_EQ(atk_object_get_attributes(box_child(1)), nullptr);
}

}  // namespace
}  // namespace ombrelc_test
