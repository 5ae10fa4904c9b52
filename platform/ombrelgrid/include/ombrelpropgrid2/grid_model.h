#pragma once
// The rows of a property grid, with the permanent last line into which a row is typed.
#include <ombrelgrid8/grid.h>
#include <ombrelpropgrid2/prop_item.h>

#include <korvat2/signal.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace ombrelpropgrid2 {

/// The rows of a grid and, after them, the last line: an item that stays for the model's
/// life. The model owns every item handed to AddItem and deletes it in DeleteItem or at
/// its own end. GUI thread.
class BaseGridModel : public ombrelgrid8::IGridModel {
 public:
  /// The last line gets `last_line_edit_type` and check state 2.
  explicit BaseGridModel(int last_line_edit_type = etLine);
  ~BaseGridModel() override;
  BaseGridModel(const BaseGridModel&) = delete;
  BaseGridModel& operator=(const BaseGridModel&) = delete;

  /// The rows, the last line included.
  int GetRowCount() const override;
  /// The item of `row` (the last line's for the last row), null out of range.
  IPropItem* getPropertyByRow(int row) const;
  /// The row of `item`, -1 when it isn't one.
  int getIndexByProperty(IPropItem* item) const;
  /// Inserts `item` in front of the last line and takes it.
  void AddItem(IPropItem* item);
  /// Deletes the row; the last line and rows out of range are left alone.
  void DeleteItem(int row);
  /// Swaps the row with the one above; gives the row's new index (`row` itself when it
  /// can't move, -2 when it doesn't exist). The last line never moves.
  int MoveUp(int row);
  /// Swaps the row with the one below, never with the last line; as MoveUp.
  int MoveDown(int row);
  /// The hint that the last line shows while it is empty.
  void setLastLineText(const std::string& text);
  const std::string& getLastLineText() const { return m_last_line_text; }
  /// The captions of the header; an empty second caption gives one column.
  void SetColumnCaptions(const std::string& first, const std::string& second);
  /// The editing model that opens the bound editor of a row.
  ombrelgrid8::IEditingModel* GetEditingModel() const { return m_editing.get(); }

  /// Emitted by whoever changes the rows, after the change.
  korvat2::signal_t<> changed;
  /// Emitted when the captions change.
  korvat2::signal_t<> columns_changed;

  // ombrelgrid8::IGridModel
  int GetColumnCount() const override { return static_cast<int>(m_captions.size()); }
  std::string GetColumnCaption(int column) const override;
  std::string GetCellText(int row, int column, bool& hint) const override;
  int GetCheck(int row) const override;
  bool ToggleCheck(int row) override;
  /// Whether rows show ticks (the grid's check-box column).
  void SetChecksShown(bool shown) { m_checks = shown; }

 private:
  std::deque<IPropItem*> m_items;  // rows go from the front when an owner refills
  std::unique_ptr<IPropItem> m_last_line;
  std::string m_last_line_text;
  std::vector<std::string> m_captions;
  std::unique_ptr<ombrelgrid8::IEditingModel> m_editing;
  bool m_checks = false;
};

/// The model of a directory grid: its last line takes a "..." button.
class HALLINGridModel : public BaseGridModel {
 public:
  HALLINGridModel() : BaseGridModel(etMore) {}
};

}  // namespace ombrelpropgrid2
