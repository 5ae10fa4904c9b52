// What a grid tells screen readers: a table with a header row, its rows in view and
// their cells.
#include "grid_accessible_p.h"

#include <a11y/atk_bridge.h>

#include <algorithm>
#include <utility>

namespace ombrelgrid8 {

using ombrelc7::rect;

namespace {

// `area`, in the viewer's content coordinates, in the window's client coordinates and
// cut to the viewer.
rect<int> in_window(const CGridViewer* viewer, rect<int> area) {
  const rect<int> shown = viewer->GetWindowRect();
  const int dx = shown.left - viewer->GetRect().left;
  const int dy = shown.top - viewer->GetRect().top;
  area = rect<int>(area.left + dx, area.top + dy, area.right + dx, area.bottom + dy);
  return area.intersection(shown);
}

// A column's header in the viewer's content coordinates; the last one runs to the end.
rect<int> header_cell(const CGridViewer* viewer, int column) {
  const CGridHeader* header = viewer->GetHeader();
  const rect<int>& r = header->GetRect();
  const int left = r.left + header->GetColumnLeft(column);
  const int width = header->GetColumnWidth(column);
  const int right = column + 1 == header->GetColumnCount() ? std::max(r.right, left + width) : left + width;
  return {left, r.top, right, r.bottom};
}

std::string cell_text(const CGrid* grid, int row, int column) {
  bool hint = false;
  return grid->GetModel() ? grid->GetModel()->GetCellText(row, column, hint) : std::string();
}

}  // namespace

// ---- cells -----------------------------------------------------------------------------

grid_cell_part_t::grid_cell_part_t(CGrid* grid, const CAccessiblePart* row_part, int row, int column,
                                   bool tick)
    : CAccessiblePart(grid, row_part), m_grid(grid), m_row(row), m_column(column), m_tick(tick) {}

void grid_cell_part_t::DescribeAccessible(a11y::info_t& info) const {
  const CGridHeader* header = m_grid->GetViewer()->GetHeader();
  info.has_table = true;
  info.table.row = m_row;
  info.table.column = m_column;
  info.states |= a11y::state_enabled;
  if (m_row < 0) {
    info.role = a11y::role_t::column_header;
    info.name = header->GetCaption(m_column);
  } else if (m_tick) {
    info.role = a11y::role_t::check_box;
    info.name = header->GetCaption(m_column);
    info.actions = {"toggle"};
    if (m_grid->GetModel() && m_grid->GetModel()->GetCheck(m_row) == 1) {
      info.states |= a11y::state_checked;
    }
  } else {
    info.role = a11y::role_t::table_cell;
    info.name = cell_text(m_grid, m_row, m_column);
  }
}

rect<int> grid_cell_part_t::GetWindowRect() const {
  const CGridViewer* viewer = m_grid->GetViewer();
  return in_window(viewer, m_row < 0 ? header_cell(viewer, m_column) : viewer->GetCellRect(m_row, m_column));
}

bool grid_cell_part_t::DoAccessibleAction(int index) {
  return index == 0 && m_tick && m_grid->ToggleRowCheck(m_row);
}

void grid_cell_part_t::TellChanges(a11y::atk_bridge_t* bridge) {
  a11y::info_t info;
  DescribeAccessible(info);
  const bool checked = (info.states & a11y::state_checked) != 0;
  if (bridge && info.name != m_told_name) {
    bridge->name_changed(GetAccessibleKey());
  }
  if (bridge && checked != m_told_checked) {
    bridge->state_changed(GetAccessibleKey(), a11y::state_checked, checked);
  }
  m_told_name = info.name;
  m_told_checked = checked;
}

// ---- rows ------------------------------------------------------------------------------

grid_row_part_t::grid_row_part_t(CGrid* grid, int row, int columns, bool tick)
    : CAccessiblePart(grid, nullptr), m_grid(grid), m_row(row), m_tick(tick) {
  for (int column = 0; column < columns; ++column) {
    m_cells.push_back(std::make_unique<grid_cell_part_t>(grid, this, row, column,
                                                         tick && column == grid->GetCheckColumn()));
  }
}

const grid_cell_part_t* grid_row_part_t::GetCell(int column) const {
  return column >= 0 && column < GetColumnCount() ? m_cells[static_cast<std::size_t>(column)].get() : nullptr;
}

void grid_row_part_t::TellChanges(a11y::atk_bridge_t* bridge) {
  a11y::info_t info;
  DescribeAccessible(info);
  if (bridge && info.name != m_told_name) {
    bridge->name_changed(GetAccessibleKey());
  }
  m_told_name = info.name;
  for (const auto& cell : m_cells) {
    cell->TellChanges(bridge);
  }
}

std::vector<const ombrelcfrw7::CAccessiblePart*> grid_row_part_t::GetParts() const {
  std::vector<const CAccessiblePart*> parts;
  for (const auto& cell : m_cells) {
    parts.push_back(cell.get());
  }
  return parts;
}

void grid_row_part_t::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::table_row;
  info.states |= a11y::state_enabled;
  if (m_row >= 0) {
    info.name = cell_text(m_grid, m_row, 0);  // a row goes by its first cell
  }
}

rect<int> grid_row_part_t::GetWindowRect() const {
  const CGridViewer* viewer = m_grid->GetViewer();
  return in_window(viewer, m_row < 0 ? viewer->GetHeader()->GetRect() : viewer->GetCellRect(m_row, -1));
}

// ---- grid ------------------------------------------------------------------------------

void CGrid::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::table;
  info.name = m_accessible_name;
  info.has_table = true;
  info.table.rows = m_model ? m_model->GetRowCount() : 0;
  info.table.columns = m_viewer->GetHeader()->GetColumnCount();
  info.states |= a11y::state_enabled;
}

void CGrid::ListAccessible(std::vector<a11y::key_t>& keys) const {
  if (m_accessible) {
    for (const auto& row : m_accessible->rows) {
      keys.push_back(row->GetAccessibleKey());
    }
  }
  // The viewer only draws the rows; an open editor is seen for itself.
  for (const CVisualElement* child : GetChildren()) {
    if (child != m_viewer && child->IsVisible()) {
      keys.push_back(child);
    }
  }
}

const ombrelcfrw7::CAccessiblePart* CGrid::GetAccessibleCell(int row, int column) const {
  if (m_accessible) {
    for (const auto& part : m_accessible->rows) {
      if (part->GetRow() == row) {
        return part->GetCell(column);
      }
    }
  }
  return nullptr;
}

bool CGrid::ToggleRowCheck(int row) {
  if (!m_model || m_check_column < 0 || !m_model->ToggleCheck(row)) {
    return false;
  }
  m_viewer->Invalidate();
  SyncAccessibleRows();  // tells of the tick's change
  return true;
}

void CGrid::SyncAccessibleRows() {
  if (!m_accessible) {
    m_accessible = std::make_unique<accessible_rows_t>();
  }
  std::vector<std::unique_ptr<grid_row_part_t>>& old_rows = m_accessible->rows;
  const int columns = m_viewer->GetHeader()->GetColumnCount();
  const int count = m_model ? m_model->GetRowCount() : 0;
  const int first = m_viewer->GetTopRow();
  const int end = std::min(count, first + m_viewer->GetPageRows());
  // The rows wanted, the header row first, each with its part when one is kept.
  std::vector<std::pair<int, std::unique_ptr<grid_row_part_t>*>> wanted;
  for (int row = columns > 0 ? -1 : first; row < end; row = row < 0 ? first : row + 1) {
    const bool tick = row >= 0 && m_check_column >= 0 && m_model->GetCheck(row) >= 0;
    const auto same = std::find_if(old_rows.begin(), old_rows.end(), [&](const auto& part) {
      return part->GetRow() == row && part->GetColumnCount() == columns && part->HasTick() == tick;
    });
    wanted.emplace_back(row, same == old_rows.end() ? nullptr : &*same);
  }
  a11y::atk_bridge_t* bridge = GetAccessibleBridge();
  // Rows that go are reported while the listing still holds them.
  for (auto& part : old_rows) {
    const bool kept =
        std::any_of(wanted.begin(), wanted.end(), [&](const auto& w) { return w.second == &part; });
    if (!kept && bridge) {
      bridge->node_gone(part->GetAccessibleKey());
    }
  }
  std::vector<std::unique_ptr<grid_row_part_t>> rows;
  std::vector<const grid_row_part_t*> added;
  for (auto& [row, kept] : wanted) {
    if (kept) {
      rows.push_back(std::move(*kept));
    } else {
      const bool tick = row >= 0 && m_check_column >= 0 && m_model->GetCheck(row) >= 0;
      rows.push_back(std::make_unique<grid_row_part_t>(this, row, columns, tick));
      added.push_back(rows.back().get());
    }
  }
  old_rows = std::move(rows);
  for (const auto& part : old_rows) {
    const bool is_new = std::find(added.begin(), added.end(), part.get()) != added.end();
    part->TellChanges(is_new ? nullptr : bridge);  // a new row is whole when announced
  }
  for (const grid_row_part_t* part : bridge ? added : std::vector<const grid_row_part_t*>()) {
    bridge->child_added(this, part->GetAccessibleKey());
  }
}

void CGrid::DropAccessibleRows() {
  if (!m_accessible) {
    return;
  }
  if (a11y::atk_bridge_t* bridge = GetAccessibleBridge()) {
    for (const auto& part : m_accessible->rows) {
      bridge->node_gone(part->GetAccessibleKey());
    }
  }
  m_accessible.reset();
}

}  // namespace ombrelgrid8
