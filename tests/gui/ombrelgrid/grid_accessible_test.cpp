// The grid as screen readers read it, in-process through ATK: a table with a header row,
// the rows in view and their cells, ticks as check boxes that toggle.
#include "atk_objects.h"
#include "grid_fixture.h"

#include <atk/atk.h>
#include <gtk/gtk.h>

#include <string>

namespace {

using namespace gui_test;
using namespace ombrelgrid_test;
using namespace ombrelpropgrid2;

struct checked_changes_t {
  int count = 0;
  bool last = false;
  static void on_state(AtkObject*, gchar* name, gboolean on, gpointer self) {
    if (std::string(name) == "checked") {
      ++static_cast<checked_changes_t*>(self)->count;
      static_cast<checked_changes_t*>(self)->last = on;
    }
  }
};

class grid_accessible_test : public grid_fixture_t {
 protected:
  void SetUp() override {
    grid_fixture_t::SetUp();
    model()->SetColumnCaptions("Folder", "Include subfolders");
    m_grid->ClearRows();
    m_grid->AppendRow("/src", etMore, csTicked);
    m_grid->AppendRow("/include", etMore, csClear);
    m_grid->FinishFill("Add a folder");
    layout();
  }

  // The window's last child: the drawn tree comes after the native children (the scroll bar).
  AtkObject* table() const {
    AtkObject* host = gtk_widget_get_accessible(static_cast<GtkWidget*>(m_panel->GetHandle()));
    return listed_child(host, atk_object_get_n_accessible_children(host) - 1);
  }
  // Row 0 is the header row.
  AtkObject* row(int index) const { return listed_child(table(), index); }

  rect<int> on_screen(const rect<int>& area) const {
    const wxPoint origin = m_panel->ClientToScreen(wxPoint(area.left, area.top));
    return rect<int>::from_size(origin.x, origin.y, area.width(), area.height());
  }
  static rect<int> extents(AtkObject* object) {
    gint x = 0;
    gint y = 0;
    gint width = 0;
    gint height = 0;
    atk_component_get_extents(ATK_COMPONENT(object), &x, &y, &width, &height, ATK_XY_SCREEN);
    return rect<int>::from_size(x, y, width, height);
  }
};

TEST_F(grid_accessible_test, the_grid_is_a_table_of_a_header_row_and_its_rows_with_named_cells) {
  AtkObject* grid = table();
  ASSERT_NE(grid, nullptr);
  EXPECT_EQ(atk_object_get_role(grid), ATK_ROLE_TABLE);
  const int rows = model()->GetRowCount();  // the two folders and the last line
  ASSERT_EQ(rows, 3);
  ASSERT_EQ(atk_object_get_n_accessible_children(grid), 1 + rows);
  AtkObject* header = row(0);
  EXPECT_EQ(atk_object_get_role(header), ATK_ROLE_TABLE_ROW);
  ASSERT_EQ(atk_object_get_n_accessible_children(header), 2);
  EXPECT_EQ(atk_object_get_role(listed_child(header, 0)), ATK_ROLE_COLUMN_HEADER);
  EXPECT_STREQ(atk_object_get_name(listed_child(header, 0)), "Folder");
  EXPECT_STREQ(atk_object_get_name(listed_child(header, 1)), "Include subfolders");
  AtkObject* first = row(1);
  EXPECT_EQ(atk_object_get_role(first), ATK_ROLE_TABLE_ROW);
  EXPECT_EQ(atk_object_get_role(listed_child(first, 0)), ATK_ROLE_TABLE_CELL);
  EXPECT_STREQ(atk_object_get_name(listed_child(first, 0)), "/src");
  EXPECT_STREQ(atk_object_get_name(listed_child(row(2), 0)), "/include");
  EXPECT_TRUE(has_state(listed_child(first, 0), ATK_STATE_SHOWING));
  EXPECT_EQ(atk_object_get_index_in_parent(row(2)), 2);
  EXPECT_EQ(atk_object_get_parent(listed_child(first, 1)), first);
}

TEST_F(grid_accessible_test, the_table_is_named_as_its_host_names_it) {
  EXPECT_STREQ(atk_object_get_name(table()), "");
  m_grid->SetAccessibleName("Folders searched");
  EXPECT_STREQ(atk_object_get_name(table()), "Folders searched");
}

TEST_F(grid_accessible_test, the_table_gives_its_size_cells_and_column_headers) {
  AtkObject* grid = table();
  ASSERT_TRUE(ATK_IS_TABLE(grid));
  EXPECT_EQ(atk_table_get_n_rows(ATK_TABLE(grid)), 3);
  EXPECT_EQ(atk_table_get_n_columns(ATK_TABLE(grid)), 2);
  object_ref_t cell(atk_table_ref_at(ATK_TABLE(grid), 1, 0));
  ASSERT_NE(cell.get(), nullptr);
  EXPECT_EQ(cell.get(), listed_child(row(2), 0));
  EXPECT_EQ(atk_table_get_column_header(ATK_TABLE(grid), 1), listed_child(row(0), 1));
  EXPECT_STREQ(atk_table_get_column_description(ATK_TABLE(grid), 0), "Folder");
  ASSERT_TRUE(ATK_IS_TABLE_CELL(cell.get()));
  gint at_row = -1;
  gint at_column = -1;
  ASSERT_TRUE(atk_table_cell_get_position(ATK_TABLE_CELL(cell.get()), &at_row, &at_column));
  EXPECT_EQ(at_row, 1);
  EXPECT_EQ(at_column, 0);
  object_ref_t owner(atk_table_cell_get_table(ATK_TABLE_CELL(cell.get())));
  EXPECT_EQ(owner.get(), grid);
  GPtrArray* headers = atk_table_cell_get_column_header_cells(ATK_TABLE_CELL(cell.get()));
  ASSERT_EQ(headers->len, 1u);
  EXPECT_STREQ(atk_object_get_name(ATK_OBJECT(g_ptr_array_index(headers, 0))), "Folder");
  g_ptr_array_unref(headers);
}

TEST_F(grid_accessible_test, cells_lie_on_the_drawn_cells) {
  const rect<int> drawn = m_grid->GetViewer()->GetCellRect(1, 0);
  const rect<int> shift = m_grid->GetViewer()->GetWindowRect();
  const rect<int> in_window = rect<int>::from_size(
      drawn.left + shift.left - m_grid->GetViewer()->GetRect().left,
      drawn.top + shift.top - m_grid->GetViewer()->GetRect().top, drawn.width(), drawn.height());
  const rect<int> expected = on_screen(in_window);
  const rect<int> seen = extents(listed_child(row(2), 0));
  EXPECT_EQ(seen.left, expected.left);
  EXPECT_EQ(seen.top, expected.top);
  EXPECT_EQ(seen.width(), expected.width());
  EXPECT_EQ(seen.height(), expected.height());
  const rect<int> header = extents(listed_child(row(0), 0));
  EXPECT_EQ(header.left, expected.left);
  EXPECT_LE(header.bottom, expected.top);
}

TEST_F(grid_accessible_test, a_tick_is_a_check_box_whose_toggle_action_toggles_it_and_tells) {
  AtkObject* tick = listed_child(row(1), 1);
  EXPECT_EQ(atk_object_get_role(tick), ATK_ROLE_CHECK_BOX);
  EXPECT_STREQ(atk_object_get_name(tick), "Include subfolders");
  EXPECT_TRUE(has_state(tick, ATK_STATE_CHECKED));
  EXPECT_FALSE(has_state(listed_child(row(2), 1), ATK_STATE_CHECKED));
  ASSERT_TRUE(ATK_IS_ACTION(tick));
  EXPECT_STREQ(atk_action_get_name(ATK_ACTION(tick), 0), "toggle");
  checked_changes_t changes;
  const gui_test::handler_t connected1(tick, "state-change", G_CALLBACK(checked_changes_t::on_state),
                                       &changes);
  ASSERT_TRUE(atk_action_do_action(ATK_ACTION(tick), 0));
  ASSERT_TRUE(gui_test::wait_until([&] { return changes.count > 0; }));
  EXPECT_FALSE(changes.last);
  EXPECT_EQ(model()->GetCheck(0), csClear);
  EXPECT_FALSE(has_state(tick, ATK_STATE_CHECKED));
  // The keyboard's Space tells as well.
  focus_grid();
  m_grid->SetCurrentRow(0);
  press_on_grid(WXK_SPACE);
  EXPECT_EQ(changes.count, 2);
  EXPECT_TRUE(changes.last);
  g_signal_handlers_disconnect_by_data(tick, &changes);
}

TEST_F(grid_accessible_test, scrolling_replaces_the_rows_that_leave_the_view) {
  fill(200);
  m_grid->GetViewer()->SetTopRow(0);
  layout();
  AtkObject* grid = table();
  const int listed = atk_object_get_n_accessible_children(grid);
  EXPECT_EQ(listed, 1 + m_grid->GetViewer()->GetPageRows());
  object_ref_t top(atk_object_ref_accessible_child(grid, 1));
  EXPECT_STREQ(atk_object_get_name(top.get()), "/d0");
  m_grid->GetViewer()->SetTopRow(50);
  layout();
  EXPECT_TRUE(has_state(top.get(), ATK_STATE_DEFUNCT));
  EXPECT_STREQ(atk_object_get_name(row(1)), "/d50");
  EXPECT_EQ(atk_object_get_n_accessible_children(grid), listed);
  object_ref_t out_of_view(atk_table_ref_at(ATK_TABLE(grid), 0, 0));
  EXPECT_EQ(out_of_view.get(), nullptr);
}

TEST_F(grid_accessible_test, a_changed_text_or_tick_of_the_model_is_told) {
  AtkObject* cell = listed_child(row(2), 0);
  AtkObject* tick = listed_child(row(2), 1);
  int names = 0;
  checked_changes_t changes;
  const gui_test::handler_t connected2(
      cell, "notify::accessible-name",
      G_CALLBACK(+[](GObject*, GParamSpec*, gpointer count) { ++*static_cast<int*>(count); }), &names);
  const gui_test::handler_t connected3(tick, "state-change", G_CALLBACK(checked_changes_t::on_state),
                                       &changes);
  m_grid->Refresh();  // nothing changed: nothing is told
  EXPECT_EQ(names, 0);
  auto* item = dynamic_cast<Property<std::string>*>(model()->getPropertyByRow(1));
  ASSERT_NE(item, nullptr);
  item->SetValue("/include/sys");
  item->SetChecked(csTicked);
  m_grid->Refresh();
  EXPECT_EQ(names, 1);
  EXPECT_STREQ(atk_object_get_name(cell), "/include/sys");
  EXPECT_EQ(changes.count, 1);
  EXPECT_TRUE(changes.last);
  g_signal_handlers_disconnect_by_data(cell, &names);
  g_signal_handlers_disconnect_by_data(tick, &changes);
}

}  // namespace
