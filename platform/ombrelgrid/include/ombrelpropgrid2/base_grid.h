#pragma once
// The grid of property rows: editors, the last line that becomes a row, and the signals
// that tell the owner about it.
#include <ombrelcfrw7/button.h>
#include <ombrelcfrw7/editors.h>
#include <ombrelgrid8/grid.h>
#include <ombrelpropgrid2/grid_model.h>
#include <ombrelpropgrid2/property.h>
#include <ombrelpropgrid2/property_editor.h>

#include <korvat2/signal.h>

#include <memory>
#include <string>

namespace ombrelc7 {
class ISysWindow;
}

namespace ombrelpropgrid2 {

using CMoreEditor = ombrelcfrw7::CDecoration<ombrelcfrw7::CButton, ombrelcfrw7::CLineEditor>;

/// The logic of a property grid over a model `Model` (a BaseGridModel). GUI thread.
///
/// Signals: `more_clicked` when the "..." button of the row under edit is clicked (the
/// last line too); `row_added` with the new row's value and index when a filled last line
/// became a row (the editor then stays open on that row); `editing_finished` with the
/// value and index of an ordinary row whose edit was accepted.
template <class Model>
class CBaseGrid : public ombrelgrid8::CGrid, public korvat2::subscriber_base_t {
 public:
  CBaseGrid(ombrelcfrw7::CVisualElement* parent, const ombrelc7::size<int>& size,
            ombrelc7::Alignment alignment);
  ~CBaseGrid() override;

  korvat2::signal_t<click_data_t> more_clicked;
  korvat2::signal_t<const std::string&, int> row_added;
  korvat2::signal_t<const std::string&, int> editing_finished;

  /// The model (owned by the grid; null after SetModel(nullptr)).
  Model* GetGridModel() const { return m_model.get(); }
  /// Replaces the model; the grid owns it.
  void SetGridModel(Model* model);

  /// Commits the open edits of the line, "..." and fixed combo editors, then no row is
  /// current.
  virtual void SaveEditorsData();
  virtual void Init() {}
  /// With exactly two columns: three quarters of their summed width to the first (cut
  /// toward zero), the rest to the second. Otherwise nothing.
  virtual void UpdateHeadersWidths();
  /// Makes the four edit boxes in `window`, each once.
  virtual void CreateDefaultEditors(ombrelc7::ISysWindow* window);
  /// Binds `item` to the property editor of its edit type (7: none).
  virtual void SetItemEditor(IPropItem* item);
  /// The row under edit in `editor`, null when it isn't one of the grid's.
  virtual IPropItem* GetPropertyFromEditor(ombrelcfrw7::CBaseEditor* editor);

  /// A filled last line becomes a row; see row_added.
  void RowAdding(IPropItem* last_line_item);
  /// The end of an edit in the line, "..." or fixed combo editor.
  void OnEndEditing(ombrelcfrw7::CBaseEditor* editor, bool accepted);
  /// A value set from outside the grid; on the last line it adds a row.
  void OnExternalSetValue(IPropItem* item);
  void OnButtonClicked(ombrelcfrw7::CButton* button);

  LinePropertyEditor<std::string>& GetLinePropertyEditor() { return m_line_pe; }
  LinePropertyEditor<std::string>& GetMorePropertyEditor() { return m_more_pe; }
  ComboPropertyEditor<std::string>& GetComboPropertyEditor(bool editable) {
    return editable ? m_combo_pe : m_fixed_combo_pe;
  }
  ombrelcfrw7::CLineEditor* GetLineEditor() const { return m_line; }
  CMoreEditor* GetMoreEditor() const { return m_more; }
  ombrelcfrw7::CComboBox* GetComboEditor(bool editable) const { return editable ? m_combo : m_fixed_combo; }

  // The fill and the commands that every owner of a grid runs alike.

  /// Deletes every row but the last line and sets the model's editing model again.
  void ClearRows();
  /// Deletes the first `count` rows as ClearRows does. A fill that appends its new rows
  /// before dropping the old ones gives each new row an item at an address of its own.
  void DropFirstRows(int count);
  /// Appends a row of `value` and `edit_type`, tick 2 unless `check` is 0 or 1, bound to
  /// its editor; gives the item.
  IPropItem* AppendRow(const std::string& value, int edit_type, int check = -1);
  /// Ends a fill: the last line's hint, the last line in view, a repaint and `changed`.
  void FinishFill(const std::string& hint);
  /// Moves the current row up, when it is a row below the first; `changed` fires once more
  /// at the end, whether a row moved or not.
  void MoveRowUp();
  /// Moves the current row down, when a row but the last line is below it; as MoveRowUp.
  void MoveRowDown();
  /// Removes `row` when it is below the last line: it is unbound from its editor and the
  /// current row moves first (row 0: none, else the row above), then `changed` fires.
  void RemoveRow(int row);

  /// What a row added through the last line gets.
  void SetNewRowEditType(int type) { m_new_edit_type = type; }
  void SetNewRowCheckState(check_state state) { m_new_check = state; }
  /// New rows are clones of `prototype` (owned by the grid; null: none).
  void SetPrototype(IPropItem* prototype);

 protected:
  void OnModelChanged() { Refresh(); }
  IPropItem* MakeNewItem() const;
  void BindEditor(ombrelcfrw7::CEditor* editor, PropertyEditor& property_editor, bool end_editing);
  void MoveCurrentRow(bool up);

  std::unique_ptr<Model> m_model;
  LinePropertyEditor<std::string> m_line_pe;
  LinePropertyEditor<std::string> m_more_pe;
  ComboPropertyEditor<std::string> m_combo_pe;
  ComboPropertyEditor<std::string> m_fixed_combo_pe;
  ombrelcfrw7::CLineEditor* m_line = nullptr;
  CMoreEditor* m_more = nullptr;
  ombrelcfrw7::CComboBox* m_combo = nullptr;
  ombrelcfrw7::CComboBox* m_fixed_combo = nullptr;
  int m_new_edit_type = etLine;
  check_state m_new_check = csUnset;
  std::unique_ptr<IPropItem> m_prototype;
  bool m_removing = false;
};

/// The directory grid: a HALLINGridModel, rows of edit type 4 with a "..." button, and an
/// optional check-box column.
class CHALLINGrid : public CBaseGrid<HALLINGridModel> {
 public:
  CHALLINGrid(ombrelcfrw7::CVisualElement* parent, const ombrelc7::size<int>& size,
              ombrelc7::Alignment alignment);
  ~CHALLINGrid() override;

  /// Makes the editors and binds the last line.
  void Init() override;
  /// Shows or hides the column of ticks (second column); on by default.
  void enableCheckboxColumn(bool enable);
  /// A resizing model for the header; the caller keeps it (see KeepResizingModel).
  virtual ombrelgrid8::IResizingModel* createResizingModel();
  /// The grid takes `model` and sets it on the header.
  void KeepResizingModel(ombrelgrid8::IResizingModel* model);

 private:
  std::unique_ptr<ombrelgrid8::IResizingModel> m_kept_resizing;
};

extern template class CBaseGrid<HALLINGridModel>;

}  // namespace ombrelpropgrid2
