#include <ombrelpropgrid2/base_grid.h>

#include <algorithm>

namespace ombrelpropgrid2 {

template <class Model>
CBaseGrid<Model>::CBaseGrid(ombrelcfrw7::CVisualElement* parent, const ombrelc7::size<int>& size,
                            ombrelc7::Alignment alignment)
    : ombrelgrid8::CGrid(parent, size, alignment) {
  SetGridModel(new Model);
}

template <class Model>
CBaseGrid<Model>::~CBaseGrid() {
  // The rows go while the property editors they may be bound to still live.
  SetEditingModel(nullptr);
  SetModel(nullptr);
  m_model.reset();
  m_prototype.reset();
}

template <class Model>
void CBaseGrid<Model>::SetGridModel(Model* model) {
  SetEditingModel(model ? model->GetEditingModel() : nullptr);
  SetModel(model);
  m_model.reset(model);
  if (model) {
    model->changed.connect(this, &CBaseGrid::OnModelChanged);
    model->columns_changed.connect(this, &CBaseGrid::OnModelChanged);
  }
}

template <class Model>
void CBaseGrid<Model>::SetPrototype(IPropItem* prototype) {
  m_prototype.reset(prototype);
}

template <class Model>
void CBaseGrid<Model>::SaveEditorsData() {
  for (ombrelcfrw7::CEditor* editor :
       {static_cast<ombrelcfrw7::CEditor*>(m_line), static_cast<ombrelcfrw7::CEditor*>(m_more),
        static_cast<ombrelcfrw7::CEditor*>(m_fixed_combo)}) {
    if (editor && editor->IsVisible()) {
      editor->ProcessEditorCommand(ombrelcfrw7::ecAccept);
    }
  }
  // A last line that became a row keeps its editor open; with no row current, none stays.
  for (ombrelcfrw7::CEditor* editor :
       {static_cast<ombrelcfrw7::CEditor*>(m_line), static_cast<ombrelcfrw7::CEditor*>(m_more),
        static_cast<ombrelcfrw7::CEditor*>(m_fixed_combo)}) {
    if (editor) {
      editor->ShowEditor(false);
    }
  }
  SetCurrentRow(-1);
}

template <class Model>
void CBaseGrid<Model>::UpdateHeadersWidths() {
  ombrelgrid8::CGridHeader* header = GetViewer()->GetHeader();
  int sum = 0;
  for (int i = 0; i < header->GetColumnCount(); ++i) {
    sum += header->GetColumnWidth(i);
  }
  if (header->GetColumnCount() != 2) {
    return;
  }
  const int first = sum * 3 / 4;
  header->SetColumnWidth(0, first);
  header->SetColumnWidth(1, sum - first);
  Refresh();
}

template <class Model>
void CBaseGrid<Model>::BindEditor(ombrelcfrw7::CEditor* editor, PropertyEditor& property_editor,
                                  bool end_editing) {
  editor->ReParent(this, false);
  property_editor.SetEditor(editor);
  editor->Subscribe(&property_editor);
  editor->EndEditSignal().connect(&property_editor, &PropertyEditor::OnEndEdit);
  if (end_editing) {
    editor->EndEditSignal().connect(this, &CBaseGrid::OnEndEditing);
  }
  editor->ShowEditor(false);
}

template <class Model>
void CBaseGrid<Model>::CreateDefaultEditors(ombrelc7::ISysWindow* window) {
  if (!m_line) {
    m_line = new ombrelcfrw7::CLineEditor;
    m_line->Init(window);
    BindEditor(m_line, m_line_pe, true);
  }
  if (!m_more) {
    m_more = new CMoreEditor;
    m_more->Init(window);
    ombrelcfrw7::CButton* button = m_more->CreateDecoration(ombrelc7::size<int>(0, 0), ombrelc7::alEnd);
    button->SetCaption("...");
    button->SetCompact(true);
    button->ClickSignal().connect(this, &CBaseGrid::OnButtonClicked);
    BindEditor(m_more, m_more_pe, true);
  }
  if (!m_combo) {
    // A finished edit here starts neither a new row nor editing_finished.
    m_combo = new ombrelcfrw7::CComboBox;
    m_combo->Init(window, true);
    BindEditor(m_combo, m_combo_pe, false);
  }
  if (!m_fixed_combo) {
    m_fixed_combo = new ombrelcfrw7::CComboBox;
    m_fixed_combo->Init(window, false);
    BindEditor(m_fixed_combo, m_fixed_combo_pe, true);
  }
}

template <class Model>
void CBaseGrid<Model>::SetItemEditor(IPropItem* item) {
  if (!item) {
    return;
  }
  switch (item->GetEditType()) {
    case etLine: item->SetEditor(&m_line_pe); break;
    case etEditableCombo: item->SetEditor(&m_combo_pe); break;
    case etMore: item->SetEditor(&m_more_pe); break;
    case etFixedCombo: item->SetEditor(&m_fixed_combo_pe); break;
    default: break;  // etNone: the row keeps what it has
  }
}

template <class Model>
IPropItem* CBaseGrid<Model>::GetPropertyFromEditor(ombrelcfrw7::CBaseEditor* editor) {
  if (!editor) {
    return nullptr;
  }
  if (editor == m_line) {
    return m_line_pe.GetItem();
  }
  if (editor == m_more) {
    return m_more_pe.GetItem();
  }
  if (editor == m_combo) {
    return m_combo_pe.GetItem();
  }
  if (editor == m_fixed_combo) {
    return m_fixed_combo_pe.GetItem();
  }
  return nullptr;
}

template <class Model>
void CBaseGrid<Model>::OnButtonClicked(ombrelcfrw7::CButton*) {
  const int row = GetCurrentRow();
  click_data_t click;
  click.item = m_model ? m_model->getPropertyByRow(row) : nullptr;
  click.row = row;
  more_clicked(click);
}

template <class Model>
void CBaseGrid<Model>::OnEndEditing(ombrelcfrw7::CBaseEditor* editor, bool accepted) {
  if (!accepted || !m_model) {
    return;
  }
  IPropItem* last_line = m_model->getPropertyByRow(m_model->GetRowCount() - 1);
  if (!last_line) {
    return;
  }
  IPropItem* item = GetPropertyFromEditor(editor);
  if (!item) {
    return;
  }
  if (item == last_line) {
    if (!item->IsEmpty()) {
      RowAdding(item);
    }
    return;
  }
  const std::string value = item->GetStringValue();
  editing_finished(value, m_model->getIndexByProperty(item));
}

template <class Model>
IPropItem* CBaseGrid<Model>::MakeNewItem() const {
  if (m_prototype) {
    return m_prototype->Clone();
  }
  if (m_new_edit_type == etEditableCombo || m_new_edit_type == etFixedCombo || m_new_edit_type == etNone) {
    return new ComboProperty<std::string>(m_new_edit_type, csUnset);
  }
  return new Property<std::string>(m_new_edit_type, m_new_check);
}

template <class Model>
void CBaseGrid<Model>::RowAdding(IPropItem* last_line_item) {
  IPropItem* item = MakeNewItem();
  if (!last_line_item->GetCaption().empty()) {
    item->SetCaption(last_line_item->GetCaption());
  }
  if (!last_line_item->GetStringValue().empty()) {
    item->SetStringValue(last_line_item->GetStringValue());
  }
  if (m_model) {
    SetItemEditor(item);
    item->value_changed.connect(this, &CBaseGrid::OnExternalSetValue);
    m_model->AddItem(item);
  }
  // The edit goes on in the row just made.
  IPropertyEditor* open = last_line_item->GetEditor();
  if (open && open->GetItem() == last_line_item) {
    open->SetProperty(item);
  }
  if (m_model) {
    m_model->changed();
  }
  const int rows = m_model ? m_model->GetRowCount() - 1 : -1;
  row_added(item->GetStringValue(), rows - 1);
  last_line_item->Clear();
  if (!m_model) {
    // No model took the row: it dies here, and no editor keeps it.
    if (open && open->GetItem() == item) {
      open->SetProperty(nullptr);
    }
    item->release();
  }
  Refresh();
}

template <class Model>
void CBaseGrid<Model>::OnExternalSetValue(IPropItem* item) {
  if (!m_model) {
    return;
  }
  auto* property = dynamic_cast<Property<std::string>*>(item);
  if (!property || property != m_model->getPropertyByRow(m_model->GetRowCount() - 1)) {
    return;
  }
  RowAdding(property);
}

template <class Model>
void CBaseGrid<Model>::ClearRows() {
  DropFirstRows(m_model ? m_model->GetRowCount() - 1 : -1);
}

template <class Model>
void CBaseGrid<Model>::DropFirstRows(int count) {
  const int rows = m_model ? m_model->GetRowCount() - 1 : -1;
  for (int i = 0; i < std::min(count, rows); ++i) {
    m_model->DeleteItem(0);
  }
  SetEditingModel(m_model ? m_model->GetEditingModel() : nullptr);
}

template <class Model>
IPropItem* CBaseGrid<Model>::AppendRow(const std::string& value, int edit_type, int check) {
  auto* item = new Property<std::string>(edit_type, csUnset);
  item->SetValue(value);
  if (check == csClear || check == csTicked) {
    item->SetChecked(static_cast<check_state>(check));
  }
  if (!m_model) {
    delete item;
    return nullptr;
  }
  SetItemEditor(item);
  item->value_changed.connect(this, &CBaseGrid::OnExternalSetValue);
  m_model->AddItem(item);
  SetEditingModel(m_model->GetEditingModel());
  return item;
}

template <class Model>
void CBaseGrid<Model>::FinishFill(const std::string& hint) {
  if (m_model) {
    m_model->setLastLineText(hint);
    const int last = m_model->GetRowCount() - 1;
    GetViewer()->GetRowRange().SetRange(last, last);
  }
  // The rows and their cells are placed again, not only the viewer.
  GetViewer()->OnChange(GetViewer(), ombrelcfrw7::utLayout);
  if (m_model) {
    m_model->changed();
  }
}

template <class Model>
void CBaseGrid<Model>::MoveRowUp() {
  MoveCurrentRow(true);
}

template <class Model>
void CBaseGrid<Model>::MoveRowDown() {
  MoveCurrentRow(false);
}

template <class Model>
void CBaseGrid<Model>::MoveCurrentRow(bool up) {
  const int rows = m_model ? m_model->GetRowCount() - 1 : -1;
  const int row = GetCurrentRow();
  // The last line never moves, and nothing moves past it or above the first row.
  const bool movable = up ? row > 0 && row < rows : row >= 0 && row < rows - 1;
  if (m_model && movable) {
    const int moved = up ? m_model->MoveUp(row) : m_model->MoveDown(row);
    if (moved >= -1 && moved <= rows) {
      SetCurrentRow(moved);
    }
    m_model->changed();
  }
  if (m_model) {
    m_model->changed();
  }
}

template <class Model>
void CBaseGrid<Model>::RemoveRow(int row) {
  const int rows = m_model ? m_model->GetRowCount() - 1 : -1;
  if (row >= rows || m_removing || !m_model) {
    return;
  }
  if (row >= 0 && row < m_model->GetRowCount()) {
    m_removing = true;
    // The current row moves before the row goes, so that no editor stays on a dead item.
    m_model->getPropertyByRow(row)->SetEditor(nullptr);
    SetCurrentRow(row == 0 ? -1 : row - 1);
    m_model->DeleteItem(row);
  }
  m_removing = false;
  m_model->changed();
}

template class CBaseGrid<HALLINGridModel>;

// ---- the directory grid ------------------------------------------------------------------

namespace {

// Dragging an edge moves width between the column and its right neighbour, so that the
// columns keep filling the header.
class resizing_model_t : public ombrelgrid8::IResizingModel {
 public:
  int GetMinWidth(int) const override { return min_width; }
  void Resize(ombrelgrid8::CGridHeader& header, int column, int width) override {
    const int next = column + 1;
    if (next >= header.GetColumnCount()) {
      header.SetColumnWidth(column, std::max(width, min_width));
      return;
    }
    const int pair = header.GetColumnWidth(column) + header.GetColumnWidth(next);
    const int first = std::max(min_width, std::min(width, pair - min_width));
    header.SetColumnWidth(column, first);
    header.SetColumnWidth(next, pair - first);
  }

 private:
  static constexpr int min_width = 20;
};

}  // namespace

CHALLINGrid::CHALLINGrid(ombrelcfrw7::CVisualElement* parent, const ombrelc7::size<int>& size,
                         ombrelc7::Alignment alignment)
    : CBaseGrid<HALLINGridModel>(parent, size, alignment) {
  SetNewRowEditType(etMore);
  SetNewRowCheckState(csUnset);
  CHALLINGrid::Init();
}

CHALLINGrid::~CHALLINGrid() = default;

void CHALLINGrid::Init() {
  CreateDefaultEditors(GetWindow());
  if (m_model) {
    IPropItem* last_line = m_model->getPropertyByRow(m_model->GetRowCount() - 1);
    SetItemEditor(last_line);
    last_line->value_changed.connect(static_cast<CBaseGrid*>(this), &CBaseGrid::OnExternalSetValue);
  }
  enableCheckboxColumn(true);
}

void CHALLINGrid::enableCheckboxColumn(bool enable) {
  SetCheckColumn(enable ? 1 : -1);
  if (m_model) {
    m_model->SetChecksShown(enable);
  }
  Refresh();
}

ombrelgrid8::IResizingModel* CHALLINGrid::createResizingModel() { return new resizing_model_t; }

void CHALLINGrid::KeepResizingModel(ombrelgrid8::IResizingModel* model) { m_kept_resizing.reset(model); }

}  // namespace ombrelpropgrid2
