// The accessible objects of drawn elements, read in-process through ATK as the AT-SPI
// bridge reads them.
#include "atk_objects.h"
#include "ombrelc_fixture.h"

#include <a11y/accessible.h>
#include <a11y/atk_bridge.h>
#include <a11y/native.h>
#include <ombrelcfrw7/image.h>

#include <atk/atk.h>
#include <gtk/gtk.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ombrelc_test {
namespace {

using gui_test::has_state;
using gui_test::listed_child;
using gui_test::object_ref_t;
using ombrelcfrw7::CButton;
using ombrelcfrw7::CCaption;
using ombrelcfrw7::CCustomMessageBox;
using ombrelcfrw7::CGauge;
using ombrelcfrw7::CLineColumn;
using ombrelcfrw7::CScrollContainer;
using ombrelcfrw7::CVertBox;

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

std::map<std::string, std::string> attributes_of(AtkObject* object) {
  std::map<std::string, std::string> found;
  AtkAttributeSet* attributes = atk_object_get_attributes(object);
  for (GSList* item = attributes; item; item = item->next) {
    const auto* attribute = static_cast<AtkAttribute*>(item->data);
    found[attribute->name] = attribute->value;
  }
  atk_attribute_set_free(attributes);
  return found;
}

std::string text_of(AtkObject* object, int start, int end) {
  gchar* text = atk_text_get_text(ATK_TEXT(object), start, end);
  std::string out = text ? text : "";
  g_free(text);
  return out;
}

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
  AtkObject* box_child(int index) const { return listed_child(box(), index); }

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
  const gui_test::handler_t connected1(box(), "children-changed::remove",
                                       G_CALLBACK(signal_count_t::on_children), &removed);
  delete m_caption;
  EXPECT_EQ(removed.count, 1);
  EXPECT_EQ(removed.index, 0);
  EXPECT_TRUE(has_state(label.get(), ATK_STATE_DEFUNCT));
  EXPECT_EQ(atk_object_get_n_accessible_children(box()), 1);
}

TEST_F(accessible_test, an_added_child_is_announced_once_it_is_whole) {
  ASSERT_EQ(atk_object_get_n_accessible_children(box()), 2);  // a client knows the list
  signal_count_t added;
  const gui_test::handler_t connected2(box(), "children-changed::add",
                                       G_CALLBACK(signal_count_t::on_children), &added);
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
  const gui_test::handler_t connected3(box(), "children-changed::remove",
                                       G_CALLBACK(signal_count_t::on_children), &removed);
  m_caption->SetVisible(false);
  EXPECT_EQ(removed.count, 1);
  ASSERT_EQ(atk_object_get_n_accessible_children(box()), 1);
  EXPECT_EQ(atk_object_get_role(box_child(0)), ATK_ROLE_PUSH_BUTTON);
}

TEST_F(accessible_test, focus_moves_are_announced) {
  AtkObject* button = box_child(1);
  signal_count_t focused;
  const gui_test::handler_t connected4(button, "state-change", G_CALLBACK(signal_count_t::on_state),
                                       &focused);
  m_control->SetFocusElement(m_button);
  EXPECT_EQ(focused.count, 1);
  EXPECT_TRUE(has_state(button, ATK_STATE_FOCUSED));
}

TEST_F(accessible_test, a_changed_caption_announces_its_old_text_deleted_and_its_new_text_inserted) {
  AtkObject* label = box_child(0);
  text_changes_t changes;
  const gui_test::handler_t connected5(label, "text-remove", G_CALLBACK(text_changes_t::on_remove), &changes);
  const gui_test::handler_t connected6(label, "text-insert", G_CALLBACK(text_changes_t::on_insert), &changes);
  signal_count_t renamed;
  const gui_test::handler_t connected7(label, "property-change::accessible-name",
                                       G_CALLBACK(signal_count_t::on_property), &renamed);
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
    if (AtkObject* child = listed_child(parent, i); atk_object_get_role(child) == role) {
      return child;
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
  const gui_test::handler_t connected8(gauge, "property-change::accessible-name",
                                       G_CALLBACK(signal_count_t::on_property), &renamed);
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
  const gui_test::handler_t connected9(host(), "children-changed::remove",
                                       G_CALLBACK(signal_count_t::on_children), &removed);
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
  const gui_test::handler_t connected10(object, "property-change::accessible-value",
                                        G_CALLBACK(signal_count_t::on_property), &changes);
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
  std::map<std::string, std::string> found = attributes_of(box_child(0));
  EXPECT_EQ(found["container-live"], "assertive");
  EXPECT_EQ(found["live"], "assertive");
  EXPECT_EQ(atk_object_get_attributes(box_child(1)), nullptr);
}

TEST_F(accessible_test, a_picture_is_an_image_named_by_what_it_shows) {
  auto* picture = new ombrelcfrw7::CImage(m_box, size<int>(16, 16), ombrelc7::alNone);
  picture->SetAccessibleName("Error");
  layout();
  AtkObject* image = box_child(2);
  EXPECT_EQ(atk_object_get_role(image), ATK_ROLE_IMAGE);
  EXPECT_STREQ(atk_object_get_name(image), "Error");
  EXPECT_STREQ(atk_object_get_description(image), "Picture");
  EXPECT_TRUE(has_state(image, ATK_STATE_SHOWING));
}

TEST(native_button_test, a_control_that_draws_a_button_is_a_named_push_button_that_clicks) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "native button");
  auto* button = new wxWindow(frame, wxID_ANY);
  button->SetLabel("Next message");
  int clicks = 0;
  a11y::native_button(button, [&clicks] { ++clicks; });
  AtkObject* object = gtk_widget_get_accessible(static_cast<GtkWidget*>(button->GetHandle()));
  EXPECT_EQ(atk_object_get_role(object), ATK_ROLE_PUSH_BUTTON);
  EXPECT_STREQ(atk_object_get_name(object), "Next message");
  ASSERT_TRUE(ATK_IS_ACTION(object));
  EXPECT_EQ(atk_action_get_n_actions(ATK_ACTION(object)), 1);
  EXPECT_STREQ(atk_action_get_name(ATK_ACTION(object), 0), "click");
  ASSERT_TRUE(atk_action_do_action(ATK_ACTION(object), 0));
  EXPECT_EQ(clicks, 0);  // from idle time, not inside the client's call
  EXPECT_TRUE(gui_test::wait_until([&clicks] { return clicks == 1; }));
  frame->Destroy();
  gui_test::pump();
}

// --- a column of lines ---------------------------------------------------------------------

// Lines held by the test; those that start with "error" are spoken at once.
class test_lines_t : public ombrelcfrw7::ILineSource {
 public:
  explicit test_lines_t(const std::vector<std::string>& lines) : m_lines(lines) {}
  std::size_t GetLineCount() const override { return m_lines.size(); }
  std::string_view GetLineText(std::size_t index) const override { return m_lines[index]; }
  int GetLinePicture(std::size_t) const override { return -1; }
  a11y::politeness_t GetLineLive(std::size_t index) const override {
    return m_lines[index].rfind("error", 0) == 0 ? a11y::politeness_t::assertive : a11y::politeness_t::polite;
  }

 private:
  const std::vector<std::string>& m_lines;
};

// Keeps the names of the children that a children-changed signal reports.
struct child_names_t {
  std::vector<std::string> names;
  std::vector<AtkObject*> objects;  // a reference each
  ~child_names_t() {
    for (AtkObject* object : objects) {
      g_object_unref(object);
    }
  }
  static void on_child(AtkObject*, guint, gpointer child, gpointer self) {
    auto* names = static_cast<child_names_t*>(self);
    names->names.emplace_back(atk_object_get_name(ATK_OBJECT(child)));
    names->objects.push_back(ATK_OBJECT(g_object_ref(child)));
  }
};

class accessible_line_column_test : public line_column_fixture_t {
 protected:
  std::unique_ptr<ombrelcfrw7::ILineSource> make_source() override {
    return std::make_unique<test_lines_t>(m_lines);
  }
  void scroll_to_line(std::size_t line) {
    m_scroller->SetScrollPos(m_column->GetLineRect(line).top - m_column->GetRect().top);
    layout();
  }
  AtkObject* host() const { return gtk_widget_get_accessible(static_cast<GtkWidget*>(m_panel->GetHandle())); }
  // The scroller only lays the column out: the column is listed in its place.
  AtkObject* column() const { return listed_child(host(), 0); }
  std::vector<std::string> child_names() const {
    std::vector<std::string> names;
    for (int i = 0; i < atk_object_get_n_accessible_children(column()); ++i) {
      names.emplace_back(atk_object_get_name(listed_child(column(), i)));
    }
    return names;
  }
  // The names of the lines whose rectangles meet the view, then the newest line's.
  std::vector<std::string> lines_in_view() const {
    std::vector<std::string> names;
    const rect<int> view = m_scroller->GetViewRect();
    const int top = m_column->GetRect().top + m_scroller->GetScrollPos();
    for (std::size_t line = 0; line < m_lines.size(); ++line) {
      const rect<int> place = m_column->GetLineRect(line);
      if (place.bottom > top && place.top < top + view.height()) {
        names.push_back(m_lines[line]);
      }
    }
    if (names.back() != m_lines.back()) {
      names.push_back(m_lines.back());
    }
    return names;
  }
};

TEST_F(accessible_line_column_test, the_lines_in_view_are_labels_with_their_drawn_rectangles) {
  add_lines(1000);
  scroll_to_line(0);
  EXPECT_EQ(atk_object_get_role(column()), ATK_ROLE_PANEL);
  const std::vector<std::string> expected = lines_in_view();
  ASSERT_EQ(child_names(), expected);
  ASSERT_LT(expected.size(), 100u);
  for (int i = 0; i + 1 < static_cast<int>(expected.size()); ++i) {
    object_ref_t line(atk_object_ref_accessible_child(column(), i));
    EXPECT_EQ(atk_object_get_role(line.get()), ATK_ROLE_LABEL);
    ASSERT_TRUE(ATK_IS_TEXT(line.get()));
    EXPECT_EQ(text_of(line.get(), 0, -1), m_lines[static_cast<std::size_t>(i)]);
    EXPECT_TRUE(has_state(line.get(), ATK_STATE_VISIBLE));
    EXPECT_TRUE(has_state(line.get(), ATK_STATE_SHOWING));
    EXPECT_EQ(atk_object_get_index_in_parent(line.get()), i);
    gint x = 0, y = 0, width = 0, height = 0;
    atk_component_get_extents(ATK_COMPONENT(line.get()), &x, &y, &width, &height, ATK_XY_SCREEN);
    const rect<int> drawn =
        m_column->GetLineRect(static_cast<std::size_t>(i)).offset(0, -m_scroller->GetScrollPos());
    const wxPoint origin = m_panel->ClientToScreen(wxPoint(drawn.left, drawn.top));
    EXPECT_NEAR(x, origin.x, 2);
    EXPECT_NEAR(y, origin.y, 2);
    EXPECT_NEAR(width, drawn.width(), 2);
    EXPECT_NEAR(height, drawn.height(), 2);
  }
  object_ref_t newest(atk_object_ref_accessible_child(column(), static_cast<int>(expected.size()) - 1));
  EXPECT_FALSE(has_state(newest.get(), ATK_STATE_SHOWING)) << "the newest line is out of view";
}

TEST_F(accessible_line_column_test, the_column_is_a_panel_named_as_its_owner_names_it) {
  add_lines(2);
  m_column->SetAccessibleName("Details");
  EXPECT_EQ(atk_object_get_role(column()), ATK_ROLE_PANEL);
  EXPECT_STREQ(atk_object_get_name(column()), "Details");
}

TEST_F(accessible_line_column_test, a_child_is_listed_among_the_lines_in_its_place) {
  add_lines(2);
  auto* status = new CCaption(m_column, size<int>(0, 0), ombrelc7::alFill);
  status->SetCaption("Indexing");
  add_lines(3);
  scroll_to_line(0);
  EXPECT_EQ(child_names(),
            (std::vector<std::string>{"line 0", "line 1", "Indexing", "line 2", "line 3", "line 4"}));
}

TEST_F(accessible_line_column_test, scrolling_reports_the_lines_that_leave_and_come) {
  add_lines(1000);
  scroll_to_line(0);
  const std::vector<std::string> before = child_names();
  object_ref_t first(ATK_OBJECT(g_object_ref(listed_child(column(), 0))));
  child_names_t added;
  child_names_t removed;
  const gui_test::handler_t connected11(column(), "children-changed::add",
                                        G_CALLBACK(child_names_t::on_child), &added);
  const gui_test::handler_t connected12(column(), "children-changed::remove",
                                        G_CALLBACK(child_names_t::on_child), &removed);
  scroll_to_line(500);
  const std::vector<std::string> after = lines_in_view();
  ASSERT_TRUE(gui_test::wait_until([&] { return added.names.size() + 1 == after.size(); }));
  EXPECT_EQ(child_names(), after);
  EXPECT_EQ(after.front(), "line 500");
  EXPECT_EQ(removed.names.size() + 1, before.size()) << "all but the newest line left";
  EXPECT_EQ(removed.names.front(), before[before.size() - 2]);
  EXPECT_EQ(added.names.front(), "line 500");
  EXPECT_TRUE(has_state(first.get(), ATK_STATE_DEFUNCT));
}

TEST_F(accessible_line_column_test, the_columns_text_is_every_line_read_in_parts) {
  add_lines(1000);
  m_lines.emplace_back("größer");
  m_column->LinesAdded();
  layout();
  std::string all;
  for (const std::string& line : m_lines) {
    all += (all.empty() ? "" : "\n") + line;
  }
  AtkObject* object = column();
  ASSERT_TRUE(ATK_IS_TEXT(object));
  const glong count = g_utf8_strlen(all.c_str(), -1);
  EXPECT_EQ(atk_text_get_character_count(ATK_TEXT(object)), count);
  EXPECT_EQ(text_of(object, 0, -1), all);
  for (const auto& [start, end] :
       std::vector<std::pair<glong, glong>>{{0, 6}, {4, 15}, {5000, 5100}, {count - 8, count}}) {
    gchar* expected = g_utf8_substring(all.c_str(), start, end);
    EXPECT_EQ(text_of(object, static_cast<int>(start), static_cast<int>(end)), expected)
        << start << " " << end;
    g_free(expected);
  }
  EXPECT_EQ(atk_text_get_character_at_offset(ATK_TEXT(object), static_cast<gint>(count - 4)), gunichar(0xF6));
  EXPECT_EQ(atk_text_get_character_at_offset(ATK_TEXT(object), 6), gunichar('\n'));
}

TEST_F(accessible_line_column_test, the_columns_text_gives_lines_and_words_by_offset_read_in_parts) {
  add_lines(1000);
  const std::string long_word(600, 'x');
  m_lines.push_back(long_word + " end");
  m_column->LinesAdded();
  layout();
  AtkObject* object = column();
  const gint count = atk_text_get_character_count(ATK_TEXT(object));
  const std::string last = std::to_string(count - 604) + " ";
  EXPECT_EQ(unit_at(object, 6, ATK_TEXT_GRANULARITY_CHAR), "6 7 \n");
  EXPECT_EQ(unit_at(object, 72, ATK_TEXT_GRANULARITY_LINE), "70 78 line 10\n");
  EXPECT_EQ(unit_at(object, 72, ATK_TEXT_GRANULARITY_WORD), "70 75 line ");
  EXPECT_EQ(unit_at(object, 76, ATK_TEXT_GRANULARITY_WORD), "75 78 10\n");
  EXPECT_EQ(unit_at(object, count - 300, ATK_TEXT_GRANULARITY_LINE),
            last + std::to_string(count) + " " + m_lines.back());
  EXPECT_EQ(unit_at(object, count - 300, ATK_TEXT_GRANULARITY_WORD),
            last + std::to_string(count - 3) + " " + long_word + " ");
  EXPECT_EQ(unit_at(object, count, ATK_TEXT_GRANULARITY_LINE), "0 0 ");
}

TEST_F(accessible_line_column_test, a_new_line_is_announced_with_its_urgency_wherever_the_view_is) {
  add_lines(1000);
  scroll_to_line(0);
  ASSERT_FALSE(child_names().empty());  // a client knows the column
  child_names_t added;
  child_names_t removed;
  const gui_test::handler_t connected13(column(), "children-changed::add",
                                        G_CALLBACK(child_names_t::on_child), &added);
  const gui_test::handler_t connected14(column(), "children-changed::remove",
                                        G_CALLBACK(child_names_t::on_child), &removed);
  m_lines.emplace_back("error: disk full");
  m_column->LinesAdded();
  layout();
  ASSERT_TRUE(gui_test::wait_until([&] { return !added.names.empty(); }));
  EXPECT_EQ(added.names, std::vector<std::string>{"error: disk full"});
  EXPECT_EQ(removed.names, std::vector<std::string>{"line 999"}) << "the newest line before, out of view";
  EXPECT_EQ(attributes_of(added.objects.front())["live"], "assertive");
  EXPECT_EQ(attributes_of(added.objects.front())["container-live"], "assertive");
  add_lines(1);
  ASSERT_TRUE(gui_test::wait_until([&] { return added.names.size() == 2; }));
  EXPECT_EQ(added.names.back(), "line 1001");
  EXPECT_EQ(attributes_of(added.objects.back())["live"], "polite");
  EXPECT_EQ(m_scroller->GetScrollPos(), 0) << "the view stays where it was";
}

}  // namespace
}  // namespace ombrelc_test
