#pragma once
// The rows and cells of a grid as screen readers see them.
#include <ombrelcfrw7/accessible_part.h>
#include <ombrelgrid8/grid.h>

namespace a11y {
class atk_bridge_t;
}

#include <memory>
#include <string>
#include <vector>

namespace ombrelgrid8 {

/// One cell: a column header (row -1), a text cell, or a tick as a check box.
class grid_cell_part_t : public ombrelcfrw7::CAccessiblePart {
 public:
  grid_cell_part_t(CGrid* grid, const CAccessiblePart* row_part, int row, int column, bool tick);
  void DescribeAccessible(a11y::info_t& info) const override;
  ombrelc7::rect<int> GetWindowRect() const override;
  bool DoAccessibleAction(int index) override;
  /// Tells `bridge` (may be null) what changed in the name and the tick since last time.
  void TellChanges(a11y::atk_bridge_t* bridge);

 private:
  CGrid* m_grid;
  int m_row;
  int m_column;
  bool m_tick;  // a check box; fixed for the part's life, as its actions are
  std::string m_told_name;
  bool m_told_checked = false;
};

/// One row: the header row (-1) or a row of the model, with its cells.
class grid_row_part_t : public ombrelcfrw7::CAccessiblePart {
 public:
  grid_row_part_t(CGrid* grid, int row, int columns, bool tick);
  int GetRow() const { return m_row; }
  int GetColumnCount() const { return static_cast<int>(m_cells.size()); }
  bool HasTick() const { return m_tick; }
  const grid_cell_part_t* GetCell(int column) const;
  std::vector<const CAccessiblePart*> GetParts() const override;
  void TellChanges(a11y::atk_bridge_t* bridge);
  void DescribeAccessible(a11y::info_t& info) const override;
  ombrelc7::rect<int> GetWindowRect() const override;

 private:
  CGrid* m_grid;
  int m_row;
  bool m_tick;
  std::vector<std::unique_ptr<grid_cell_part_t>> m_cells;
  std::string m_told_name;
};

/// The rows that screen readers see: the header row first, then the rows in view.
class CGrid::accessible_rows_t {
 public:
  std::vector<std::unique_ptr<grid_row_part_t>> rows;
};

}  // namespace ombrelgrid8
