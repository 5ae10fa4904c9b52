#pragma once
// A grid of rows under a header of resizable columns, drawn as visual elements.
#include <ombrelcfrw7/visual_element.h>

#include <memory>
#include <string>
#include <vector>

class wxScrollBar;
class wxScrollEvent;
class wxWindowDestroyEvent;

namespace ombrelcfrw7 {
class CEditor;
}

namespace ombrelgrid8 {

class CGrid;
class CGridHeader;

/// What a grid shows: rows of cells. GUI thread.
class IGridModel {
 public:
  virtual ~IGridModel() = default;
  virtual int GetRowCount() const = 0;
  virtual int GetColumnCount() const = 0;
  virtual std::string GetColumnCaption(int column) const = 0;
  /// The text of a cell and whether it is a hint (drawn dimmed).
  virtual std::string GetCellText(int row, int column, bool& hint) const = 0;
  /// The tick of a row: 0 clear, 1 ticked, 2 not set; -1 when the row has none.
  virtual int GetCheck(int row) const = 0;
  /// Toggles the tick of a row; false when it has none.
  virtual bool ToggleCheck(int row) = 0;
};

/// Opens and ends the editor of a row. GUI thread.
class IEditingModel {
 public:
  virtual ~IEditingModel() = default;
  /// Opens an editor over `row`; false when the row can't be edited.
  virtual bool BeginEdit(int row) = 0;
  /// Ends the open edit, keeping its text when `accept`.
  virtual void EndEdit(bool accept) = 0;
  /// The element of the open editor, a child of the grid, or null.
  virtual ombrelcfrw7::CVisualElement* GetActiveEditor() const = 0;
  /// The row of the open editor, -1 when none.
  virtual int GetEditingRow() const = 0;
};

/// How the header's columns may be dragged. GUI thread.
class IResizingModel {
 public:
  virtual ~IResizingModel() = default;
  /// The narrowest a column may be made.
  virtual int GetMinWidth(int column) const = 0;
  /// The user dragged the right edge of `column` to `width`: set the widths.
  virtual void Resize(CGridHeader& header, int column, int width) = 0;
};

/// The columns' captions and widths, drawn by the native renderer.
class CGridHeader : public ombrelcfrw7::CVisualElement {
 public:
  explicit CGridHeader(ombrelcfrw7::CVisualElement* parent);
  int GetColumnCount() const { return static_cast<int>(m_widths.size()); }
  int GetColumnWidth(int column) const;
  void SetColumnWidth(int column, int width);
  /// Sets the columns; a column that existed keeps its width, a new one gets 100.
  void SetColumns(const std::vector<std::string>& captions);
  /// Scales the columns so that together they are `width` wide, keeping their proportions;
  /// the last column takes what rounding leaves. Nothing changes for a width of 0 or less.
  void FitWidth(int width);
  const std::string& GetCaption(int column) const;
  /// The left edge of a column, relative to the header's left.
  int GetColumnLeft(int column) const;
  void SetResizingModel(IResizingModel* model) { m_resizing = model; }
  /// The column whose right edge is within a few pixels of `x` (header-relative), or -1.
  int EdgeAt(int x) const;

 protected:
  int MeasureHeight(int width) const override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;
  bool OnMouse(const ombrelcfrw7::element_mouse_t& event) override;

 private:
  std::vector<std::string> m_captions;
  std::vector<int> m_widths;
  IResizingModel* m_resizing = nullptr;
  int m_drag_column = -1;
  int m_drag_offset = 0;
};

/// The rows that the viewer keeps in view.
class CRowRange {
 public:
  explicit CRowRange(class CGridViewer* viewer) : m_viewer(viewer) {}
  /// Scrolls so that the rows `first` to `last` are in view, as far as they fit.
  void SetRange(int first, int last);

 private:
  CGridViewer* m_viewer;
};

/// The header and the rows under it; paints only the rows in view. A native vertical
/// scroll bar at the right edge shows and moves the rows in view while not all rows fit.
class CGridViewer : public ombrelcfrw7::CVisualElement {
 public:
  explicit CGridViewer(CGrid* grid);
  ~CGridViewer() override;
  CGridHeader* GetHeader() const { return m_header; }
  CRowRange& GetRowRange() { return m_range; }
  int GetRowHeight() const;
  int GetTopRow() const { return m_top; }
  void SetTopRow(int row);
  /// Rows that fit in the viewer's height.
  int GetPageRows() const;
  /// The rectangle of a cell in content coordinates; column -1: the whole row.
  ombrelc7::rect<int> GetCellRect(int row, int column) const;
  /// The row at `pos` (content coordinates), -1 when none.
  int RowAt(const ombrelc7::point<int>& pos) const;
  /// The column at `x` (content coordinates); 0 when the header has no columns.
  int ColumnAt(int x) const;
  /// The rows painted by the last paint (for tests and benchmarks).
  int GetLastPaintedRows() const { return m_painted; }
  void ScrollToRow(int row);
  /// The scroll bar (a child of the control's window), null before the first layout.
  wxScrollBar* GetScrollBar() const { return m_bar; }
  /// Shows, hides and places the scroll bar after the rows, the top row or the size changed.
  void UpdateScrollBar();

 protected:
  void ArrangeChildren() override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;
  bool OnMouse(const ombrelcfrw7::element_mouse_t& event) override;
  void OnThemeChanged() override;

 private:
  void PaintRow(wxDC& dc, int row, const ombrelc7::rect<int>& area);
  int RowsTop() const;
  /// The right edge of the rows: left of the scroll bar while it shows.
  int RowsRight() const;
  void HandleScroll(wxScrollEvent& event);
  void HandleBarDestroy(wxWindowDestroyEvent& event);

  CGrid* m_grid;
  wxScrollBar* m_bar = nullptr;
  int m_bar_width = 0;  // 0 while the bar is hidden
  CGridHeader* m_header;
  CRowRange m_range;
  int m_top = 0;
  int m_painted = 0;
  int m_fitted_width = 0;        // the width the columns were last fitted to
  mutable int m_row_height = 0;  // measured from the window's font at first need
};

/// A grid: a viewer over a model, the current row, an editing and a resizing model.
/// Keyboard: arrows, Home/End, Page Up/Down move the current row; Enter or F2 edits it;
/// Space toggles its tick. Mouse: a click selects a row, a click on the current row edits
/// it, a click on a tick toggles it. The models are not owned. GUI thread.
class CGrid : public ombrelcfrw7::CVisualElement {
 public:
  CGrid(ombrelcfrw7::CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  ~CGrid() override;

  void SetModel(IGridModel* model);
  IGridModel* GetModel() const { return m_model; }
  int GetCurrentRow() const { return m_current; }
  /// -1 means no row; a row out of range is ignored. The row is scrolled into view.
  void SetCurrentRow(int row);
  void SetEditingModel(IEditingModel* model) { m_editing = model; }
  IEditingModel* GetEditingModel() const { return m_editing; }
  void SetResizingModel(IResizingModel* model);
  IResizingModel* GetResizingModel() const { return m_resizing; }
  CGridViewer* GetViewer() const { return m_viewer; }
  /// The column that shows the ticks, -1 for none.
  void SetCheckColumn(int column);
  int GetCheckColumn() const { return m_check_column; }
  /// Opens the editor on the current row; false when there is none or it can't be edited.
  bool EditCurrentRow();
  /// The rows or columns changed: lays out and repaints.
  void Refresh();
  /// Toggles the tick of `row`, repaints it and tells screen readers; false when the row
  /// has no tick or the grid no tick column.
  bool ToggleRowCheck(int row);

  bool IsFocusable() const override { return true; }
  /// A table of the model's rows and the header's columns. Screen readers see the header
  /// row, then the rows in view (their cells named by their texts, ticks as check boxes
  /// with the action "toggle"), then an open editor.
  void DescribeAccessible(a11y::info_t& info) const override;
  /// What screen readers call the table.
  void SetAccessibleName(const std::string& name) { m_accessible_name = name; }
  const std::string& GetAccessibleName() const { return m_accessible_name; }
  void ListAccessible(std::vector<a11y::key_t>& keys) const override;
  /// Only cells of the header and of rows in view.
  const ombrelcfrw7::CAccessiblePart* GetAccessibleCell(int row, int column) const override;

 protected:
  void ArrangeChildren() override;
  bool OnKey(const ombrelcfrw7::element_key_t& key) override;
  friend class CGridViewer;
  /// A click on a row of the viewer.
  virtual void OnRowClicked(int row, int column, const ombrelc7::point<int>& pos);

 private:
  class accessible_rows_t;
  /// Brings the rows that screen readers see in line with the rows in view.
  void SyncAccessibleRows();
  /// Reports the rows gone, before the grid dies.
  void DropAccessibleRows();
  int MoveTarget(int keycode) const;
  /// Where the editor of `row` goes: over its first cell above its rule, its text over the
  /// cell's text.
  ombrelc7::rect<int> EditorRect(int row, const ombrelcfrw7::CEditor* editor) const;

  CGridViewer* m_viewer;
  std::string m_accessible_name;
  IGridModel* m_model = nullptr;
  IEditingModel* m_editing = nullptr;
  IResizingModel* m_resizing = nullptr;
  int m_current = -1;
  int m_check_column = -1;
  std::unique_ptr<accessible_rows_t> m_accessible;
};

}  // namespace ombrelgrid8
