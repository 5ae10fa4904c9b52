#include "grid_fixture.h"
#include "input.h"

#include <plaxi1/screenshot.h>

#include <wx/image.h>
#include <wx/scrolbar.h>

#include <algorithm>
#include <filesystem>

namespace {

using namespace ombrelgrid_test;
using namespace ombrelpropgrid2;

class grid_test : public grid_fixture_t {
 protected:
  ombrelgrid8::CGridViewer* viewer() const { return m_grid->GetViewer(); }
  /// Repaints the whole window and waits for the paint.
  void repaint() {
    m_panel->Refresh();
    m_panel->Update();
    layout();
  }
  /// The left-most x (window pixels) in `area` of a pixel as dark as text, or -1.
  int first_dark_x(const rect<int>& area) {
    repaint();
    const std::string path = (std::filesystem::temp_directory_path() / "grid_text_place.png").string();
    if (!plaxi1::save_screenshot(m_panel, path)) {
      return -2;
    }
    wxImage image(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG);
    std::filesystem::remove(path);
    const double scale = m_panel->GetContentScaleFactor();
    for (int x = int(area.left * scale); x < std::min(image.GetWidth(), int(area.right * scale)); ++x) {
      for (int y = int(area.top * scale); y < std::min(image.GetHeight(), int(area.bottom * scale)); ++y) {
        if (image.GetRed(x, y) + image.GetGreen(x, y) + image.GetBlue(x, y) < 3 * 96) {
          return int(x / scale);
        }
      }
    }
    return -1;
  }
};

TEST_F(grid_test, only_the_rows_in_view_are_painted) {
  fill(1000);
  m_grid->SetCurrentRow(0);
  repaint();
  const int page = viewer()->GetPageRows();
  EXPECT_GT(page, 3);
  EXPECT_GT(viewer()->GetLastPaintedRows(), 0);
  EXPECT_LE(viewer()->GetLastPaintedRows(), page + 1);
  m_grid->SetCurrentRow(500);
  repaint();
  EXPECT_LE(viewer()->GetTopRow(), 500);
  EXPECT_GT(viewer()->GetTopRow() + page, 500);
  EXPECT_LE(viewer()->GetLastPaintedRows(), page + 1);
}

TEST_F(grid_test, the_fill_brings_the_last_line_into_view) {
  fill(200);
  const int last = model()->GetRowCount() - 1;
  EXPECT_GT(viewer()->GetTopRow() + viewer()->GetPageRows(), last);
  EXPECT_LE(viewer()->GetTopRow(), last);
}

TEST_F(grid_test, rows_that_fit_once_the_window_grew_show_from_the_first) {
  // Filled while the window is too small, as an owner fills a grid before it is shown.
  m_frame->SetClientSize(wxSize(500, 60));
  layout();
  fill(4);
  ASSERT_GT(viewer()->GetTopRow(), 0);
  m_frame->SetClientSize(wxSize(500, 300));
  ASSERT_TRUE(gui_test::wait_until([this] { return m_panel->GetClientSize().y > 200; }));
  layout();
  EXPECT_EQ(viewer()->GetTopRow(), 0);
}

TEST_F(grid_test, arrows_home_end_and_page_keys_move_the_current_row) {
  fill(50);
  focus_grid();
  m_grid->SetCurrentRow(0);
  press_on_grid(WXK_DOWN);
  EXPECT_EQ(m_grid->GetCurrentRow(), 1);
  press_on_grid(WXK_UP);
  press_on_grid(WXK_UP);
  EXPECT_EQ(m_grid->GetCurrentRow(), 0);
  press_on_grid(WXK_END);
  EXPECT_EQ(m_grid->GetCurrentRow(), 50);
  press_on_grid(WXK_DOWN);
  EXPECT_EQ(m_grid->GetCurrentRow(), 50);
  press_on_grid(WXK_HOME);
  EXPECT_EQ(m_grid->GetCurrentRow(), 0);
  const int page = viewer()->GetPageRows();
  press_on_grid(WXK_PAGEDOWN);
  EXPECT_EQ(m_grid->GetCurrentRow(), page);
  press_on_grid(WXK_PAGEUP);
  EXPECT_EQ(m_grid->GetCurrentRow(), 0);
}

TEST_F(grid_test, enter_opens_the_editor_over_the_cell) {
  fill(3);
  focus_grid();
  m_grid->SetCurrentRow(1);
  press_on_grid(WXK_RETURN);
  ASSERT_TRUE(gui_test::wait_until([this] { return more_text()->IsShown(); }));
  EXPECT_EQ(more_text()->GetValue(), "/d1");
  const rect<int> cell = viewer()->GetCellRect(1, 0);
  const wxRect native = more_text()->GetRect();
  EXPECT_EQ(native.GetTop(), cell.top);
  EXPECT_GE(native.GetLeft(), cell.left);
  EXPECT_LE(native.GetLeft(), cell.left + 4);
  EXPECT_EQ(native.GetHeight(), cell.height() - 1);
}

TEST_F(grid_test, the_editor_text_starts_where_the_cell_text_was) {
  fill(3);
  const rect<int> cell = viewer()->GetCellRect(1, 0);
  const int before = first_dark_x(cell);
  ASSERT_GE(before, 0);
  ASSERT_TRUE(open_editor(1));
  // The caret goes after the text: at its start, the blinking caret would be the first dark
  // column whenever it happens to be on.
  more_text()->SetInsertionPointEnd();
  const int after = first_dark_x(cell);
  EXPECT_EQ(after, before);
}

TEST_F(grid_test, space_toggles_the_tick_in_the_check_box_column) {
  model()->SetColumnCaptions("Directories", "Recursive");
  fill(2);
  focus_grid();
  m_grid->SetCurrentRow(0);
  EXPECT_EQ(model()->GetCheck(0), csUnset);
  press_on_grid(WXK_SPACE);
  EXPECT_EQ(model()->getPropertyByRow(0)->GetChecked(), csTicked);
  EXPECT_EQ(m_record.m_changed, 1);
  press_on_grid(WXK_SPACE);
  EXPECT_EQ(model()->getPropertyByRow(0)->GetChecked(), csClear);
  // The last line has no tick.
  m_grid->SetCurrentRow(2);
  press_on_grid(WXK_SPACE);
  EXPECT_EQ(model()->GetCheck(2), -1);
}

TEST_F(grid_test, without_the_check_box_column_space_ticks_nothing) {
  m_grid->enableCheckboxColumn(false);
  fill(2);
  focus_grid();
  m_grid->SetCurrentRow(0);
  press_on_grid(WXK_SPACE);
  EXPECT_EQ(model()->getPropertyByRow(0)->GetChecked(), csUnset);
  EXPECT_EQ(model()->GetCheck(0), -1);
}

TEST_F(grid_test, a_click_selects_and_a_click_on_the_current_row_edits) {
  fill(4);
  click_at(centre(viewer()->GetCellRect(2, 0)));
  EXPECT_EQ(m_grid->GetCurrentRow(), 2);
  EXPECT_FALSE(m_grid->GetMoreEditor()->IsVisible());
  click_at(centre(viewer()->GetCellRect(2, 0)));
  EXPECT_TRUE(m_grid->GetMoreEditor()->IsVisible());
  EXPECT_EQ(m_grid->GetEditingModel()->GetEditingRow(), 2);
}

TEST_F(grid_test, the_open_editor_follows_its_row_out_of_view_and_back) {
  fill(100);
  ASSERT_TRUE(open_editor(5));
  viewer()->SetTopRow(50);
  layout();
  EXPECT_TRUE(m_grid->GetMoreEditor()->IsVisible());
  EXPECT_FALSE(more_text()->IsShown());
  viewer()->SetTopRow(3);
  layout();
  ASSERT_TRUE(more_text()->IsShown());
  EXPECT_EQ(more_text()->GetRect().GetTop(), viewer()->GetCellRect(5, 0).top);
}

TEST_F(grid_test, a_click_on_another_row_ends_the_open_edit) {
  fill(3);
  ASSERT_TRUE(open_editor(3));
  type("/typed");
  click_at(centre(viewer()->GetCellRect(0, 0)));
  ASSERT_EQ(m_record.m_added.size(), 1u);
  EXPECT_EQ(m_record.m_added[0], std::make_pair(std::string("/typed"), 3));
  EXPECT_FALSE(m_grid->GetMoreEditor()->IsVisible());
  EXPECT_FALSE(more_text()->IsShown());
  EXPECT_EQ(m_grid->GetCurrentRow(), 0);
}

TEST_F(grid_test, a_click_on_a_check_box_toggles_it) {
  model()->SetColumnCaptions("Directories", "Recursive");
  fill(2);
  click_at(centre(viewer()->GetCellRect(1, 1)));
  EXPECT_EQ(model()->getPropertyByRow(1)->GetChecked(), csTicked);
  EXPECT_EQ(m_grid->GetCurrentRow(), 1);
}

TEST_F(grid_test, dragging_a_header_edge_resizes_the_column) {
  model()->SetColumnCaptions("Directories", "Recursive");
  ombrelgrid8::CGridHeader* header = viewer()->GetHeader();
  std::unique_ptr<ombrelgrid8::IResizingModel> resizing(m_grid->createResizingModel());
  m_grid->SetResizingModel(resizing.get());
  layout();
  const rect<int> r = header->GetWindowRect();
  ASSERT_GT(r.height(), 0);
  header->SetColumnWidth(0, r.width() - 100);
  header->SetColumnWidth(1, 100);
  const int y = r.top + r.height() / 2;
  mouse(wxEVT_LEFT_DOWN, {r.left + r.width() - 100, y});
  mouse(wxEVT_MOTION, {r.left + r.width() - 150, y});
  mouse(wxEVT_LEFT_UP, {r.left + r.width() - 150, y});
  layout();
  EXPECT_EQ(header->GetColumnWidth(0), r.width() - 150);
  EXPECT_EQ(header->GetColumnWidth(1), 150);
  m_grid->SetResizingModel(nullptr);
}

TEST_F(grid_test, the_columns_keep_their_shares_of_the_width_the_grid_gets) {
  model()->SetColumnCaptions("Directories", "Recursive");
  ombrelgrid8::CGridHeader* header = viewer()->GetHeader();
  header->SetColumnWidth(0, 150);
  header->SetColumnWidth(1, 50);
  m_frame->SetClientSize(wxSize(600, 300));
  layout();
  const int width = header->GetRect().width();
  ASSERT_GT(width, 200);
  EXPECT_EQ(header->GetColumnWidth(0), width * 3 / 4);
  EXPECT_EQ(header->GetColumnWidth(1), width - width * 3 / 4);
  m_frame->SetClientSize(wxSize(800, 300));
  layout();
  const int wider = header->GetRect().width();
  ASSERT_GT(wider, width);
  EXPECT_EQ(header->GetColumnWidth(0) + header->GetColumnWidth(1), wider);
  EXPECT_NEAR(header->GetColumnWidth(0), wider * 3 / 4, 1);
}

TEST_F(grid_test, the_row_range_brings_its_rows_into_view) {
  fill(300);
  viewer()->GetRowRange().SetRange(10, 10);
  EXPECT_EQ(viewer()->GetTopRow(), 10);
  viewer()->GetRowRange().SetRange(150, 150);
  EXPECT_LE(viewer()->GetTopRow(), 150);
  EXPECT_GT(viewer()->GetTopRow() + viewer()->GetPageRows(), 150);
}

TEST_F(grid_test, the_scroll_bar_shows_only_while_rows_are_out_of_view) {
  fill(3);
  wxScrollBar* bar = viewer()->GetScrollBar();
  ASSERT_NE(bar, nullptr);
  EXPECT_FALSE(bar->IsShown());
  fill(100);
  EXPECT_TRUE(bar->IsShown());
  EXPECT_EQ(bar->GetRange(), 101);
  EXPECT_EQ(bar->GetThumbSize(), viewer()->GetPageRows());
  // It stands at the right edge, below the header, and the rows end where it starts.
  const rect<int> area = viewer()->GetWindowRect();
  EXPECT_EQ(bar->GetRect().GetRight() + 1, area.right);
  EXPECT_EQ(bar->GetRect().GetTop(), area.top + viewer()->GetHeader()->GetRect().height());
  EXPECT_EQ(viewer()->GetCellRect(0, -1).right, bar->GetRect().GetLeft());
  fill(2);
  EXPECT_FALSE(bar->IsShown());
}

TEST_F(grid_test, the_scroll_bar_follows_the_keys_and_the_wheel) {
  fill(100);
  wxScrollBar* bar = viewer()->GetScrollBar();
  focus_grid();
  press_on_grid(WXK_HOME);
  EXPECT_EQ(bar->GetThumbPosition(), 0);
  press_on_grid(WXK_PAGEDOWN);
  press_on_grid(WXK_PAGEDOWN);
  EXPECT_GT(viewer()->GetTopRow(), 0);
  EXPECT_EQ(bar->GetThumbPosition(), viewer()->GetTopRow());
  wxMouseEvent wheel(wxEVT_MOUSEWHEEL);
  wheel.SetPosition(wxPoint(50, 100));
  wheel.m_wheelRotation = -120;
  wheel.m_wheelDelta = 120;
  wheel.m_linesPerAction = 3;
  wheel.SetEventObject(m_panel);
  const int top = viewer()->GetTopRow();
  m_panel->GetEventHandler()->ProcessEvent(wheel);
  layout();
  EXPECT_EQ(viewer()->GetTopRow(), top + 3);
  EXPECT_EQ(bar->GetThumbPosition(), top + 3);
}

TEST_F(grid_test, a_click_gives_the_keyboard_to_the_grid_not_to_its_scroll_bar) {
  fill(100);
  ASSERT_TRUE(viewer()->GetScrollBar()->IsShown());
  click_at(centre(viewer()->GetCellRect(viewer()->GetTopRow() + 1, 0)));
  EXPECT_TRUE(gui_test::wait_until([this] { return wxWindow::FindFocus() == m_panel; }));
  EXPECT_NE(wxWindow::FindFocus(), viewer()->GetScrollBar());
}

TEST_F(grid_test, after_a_real_click_on_the_grid_the_real_keys_reach_it) {
  fill(20);
  m_grid->SetCurrentRow(0);
  layout();
  const ombrelc7::point<int> row_2 = centre(viewer()->GetCellRect(2, 0));
  gui_test::input_t input;
  input.move(m_panel, wxPoint(row_2.x, row_2.y));
  input.click();
  ASSERT_TRUE(gui_test::wait_until([this] { return m_grid->GetCurrentRow() == 2; }));
  press(WXK_DOWN);
  EXPECT_EQ(m_grid->GetCurrentRow(), 3);
}

TEST_F(grid_test, after_escape_from_the_editor_the_keys_go_back_to_the_grid) {
  fill(5);
  ASSERT_TRUE(open_editor(1));
  press(WXK_ESCAPE);
  ASSERT_FALSE(more_text()->IsShown());
  press(WXK_DOWN);
  EXPECT_EQ(m_grid->GetCurrentRow(), 2);
}

TEST_F(grid_test, clicking_the_scroll_bar_track_and_dragging_its_thumb_move_the_rows) {
  fill(100);
  m_grid->SetCurrentRow(0);
  layout();
  wxScrollBar* bar = viewer()->GetScrollBar();
  ASSERT_TRUE(bar->IsShown());
  ASSERT_EQ(viewer()->GetTopRow(), 0);
  const wxSize size = bar->GetSize();
  gui_test::input_t mouse;
  // A click low in the track, well below the thumb.
  mouse.move(bar, wxPoint(size.x / 2, size.y - 1 - size.y / 4));
  mouse.click();
  EXPECT_TRUE(gui_test::wait_until([this] { return viewer()->GetTopRow() > 0; }));
  EXPECT_EQ(bar->GetThumbPosition(), viewer()->GetTopRow());
  // A drag of the thumb back to the top.
  viewer()->SetTopRow(0);
  layout();
  ASSERT_EQ(bar->GetThumbPosition(), 0);
  mouse.move(bar, wxPoint(size.x / 2, 6));
  mouse.down();
  layout();
  mouse.move(bar, wxPoint(size.x / 2, size.y / 2));
  layout();
  mouse.up();
  EXPECT_TRUE(gui_test::wait_until([this] { return viewer()->GetTopRow() > 10; }));
  EXPECT_EQ(bar->GetThumbPosition(), viewer()->GetTopRow());
}

TEST_F(grid_test, set_current_row_ignores_rows_out_of_range) {
  fill(2);
  m_grid->SetCurrentRow(1);
  m_grid->SetCurrentRow(3);
  EXPECT_EQ(m_grid->GetCurrentRow(), 1);
  m_grid->SetCurrentRow(-1);
  EXPECT_EQ(m_grid->GetCurrentRow(), -1);
}

}  // namespace
