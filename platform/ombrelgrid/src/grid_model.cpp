#include <ombrelpropgrid2/grid_model.h>
#include <ombrelpropgrid2/property.h>
#include <ombrelpropgrid2/property_editor.h>

#include <a11y/native.h>
#include <ombrelcfrw7/editors.h>

#include <wx/string.h>

#include <algorithm>
#include <utility>

namespace ombrelpropgrid2 {

namespace {

// Opens the editor bound to a row, through the row's property editor.
class editing_model_t : public ombrelgrid8::IEditingModel {
 public:
  explicit editing_model_t(BaseGridModel* model) : m_model(model) {}

  bool BeginEdit(int row) override {
    IPropItem* item = m_model->getPropertyByRow(row);
    auto* editor = item && item->GetEnabled() ? dynamic_cast<PropertyEditor*>(item->GetEditor()) : nullptr;
    if (!editor || !editor->GetEditor()) {
      return false;
    }
    if (m_active && m_active != editor && m_active->GetEditor()->IsVisible()) {
      m_active->GetEditor()->ProcessEditorCommand(ombrelcfrw7::ecAccept);
    }
    m_active = editor;
    // The field is read by the row it edits, or by the column of a row without a caption.
    const std::string name = item->GetCaption().empty() ? m_model->GetColumnCaption(0) : item->GetCaption();
    a11y::set_name(editor->GetEditor()->GetNativeControl(), wxString::FromUTF8(name));
    return editor->BeginEdit(item);
  }
  void EndEdit(bool accept) override {
    if (GetActiveEditor()) {
      m_active->GetEditor()->ProcessEditorCommand(accept ? ombrelcfrw7::ecAccept : ombrelcfrw7::ecCancel);
    }
  }
  ombrelcfrw7::CVisualElement* GetActiveEditor() const override {
    return m_active && m_active->GetEditor() && m_active->GetEditor()->IsVisible() ? m_active->GetEditor()
                                                                                   : nullptr;
  }
  int GetEditingRow() const override {
    return GetActiveEditor() && m_active->GetItem() ? m_model->getIndexByProperty(m_active->GetItem()) : -1;
  }

 private:
  BaseGridModel* m_model;
  PropertyEditor* m_active = nullptr;
};

}  // namespace

BaseGridModel::BaseGridModel(int last_line_edit_type)
    : m_last_line(new Property<std::string>(last_line_edit_type, csUnset)),
      m_editing(new editing_model_t(this)) {}

BaseGridModel::~BaseGridModel() {
  for (IPropItem* item : m_items) {
    item->release();
  }
}

int BaseGridModel::GetRowCount() const { return static_cast<int>(m_items.size()) + 1; }

IPropItem* BaseGridModel::getPropertyByRow(int row) const {
  if (row >= 0 && row < static_cast<int>(m_items.size())) {
    return m_items[row];
  }
  return row == static_cast<int>(m_items.size()) ? m_last_line.get() : nullptr;
}

int BaseGridModel::getIndexByProperty(IPropItem* item) const {
  if (item && item == m_last_line.get()) {
    return static_cast<int>(m_items.size());
  }
  const auto it = std::find(m_items.begin(), m_items.end(), item);
  return item && it != m_items.end() ? static_cast<int>(it - m_items.begin()) : -1;
}

void BaseGridModel::AddItem(IPropItem* item) {
  // No search for doubles: a fill of many rows stays linear.
  if (item && item != m_last_line.get()) {
    m_items.push_back(item);
  }
}

void BaseGridModel::DeleteItem(int row) {
  if (row >= 0 && row < static_cast<int>(m_items.size())) {
    IPropItem* item = m_items[row];
    m_items.erase(m_items.begin() + row);
    item->release();
  }
}

int BaseGridModel::MoveUp(int row) {
  if (row < 0 || row >= GetRowCount()) {
    return -2;
  }
  if (row == 0 || row >= static_cast<int>(m_items.size())) {
    return row;
  }
  std::swap(m_items[row], m_items[row - 1]);
  return row - 1;
}

int BaseGridModel::MoveDown(int row) {
  if (row < 0 || row >= GetRowCount()) {
    return -2;
  }
  if (row + 1 >= static_cast<int>(m_items.size())) {
    return row;
  }
  std::swap(m_items[row], m_items[row + 1]);
  return row + 1;
}

void BaseGridModel::setLastLineText(const std::string& text) { m_last_line_text = text; }

void BaseGridModel::SetColumnCaptions(const std::string& first, const std::string& second) {
  m_captions = {first};
  if (!second.empty()) {
    m_captions.push_back(second);
  }
  columns_changed();
}

std::string BaseGridModel::GetColumnCaption(int column) const {
  return column >= 0 && column < GetColumnCount() ? m_captions[column] : std::string();
}

std::string BaseGridModel::GetCellText(int row, int column, bool& hint) const {
  hint = false;
  IPropItem* item = getPropertyByRow(row);
  if (!item || column != 0) {
    return std::string();
  }
  if (item == m_last_line.get() && item->IsEmpty()) {
    hint = true;
    return m_last_line_text;
  }
  return item->GetStringValue();
}

int BaseGridModel::GetCheck(int row) const {
  IPropItem* item = getPropertyByRow(row);
  if (!m_checks || !item || item == m_last_line.get()) {
    return -1;
  }
  return item->GetChecked();
}

bool BaseGridModel::ToggleCheck(int row) {
  if (GetCheck(row) < 0) {
    return false;
  }
  IPropItem* item = getPropertyByRow(row);
  item->SetChecked(item->GetChecked() == csTicked ? csClear : csTicked);
  changed();
  return true;
}

}  // namespace ombrelpropgrid2
