#include <ombrelpropgrid2/property.h>
#include <ombrelpropgrid2/property_editor.h>

#include <ombrelcfrw7/editors.h>
#include <plaxi1/tooltip.h>

#include <wx/window.h>

namespace ombrelpropgrid2 {

void PropertyEditor::SetProperty(IPropItem* item) {
  m_item = item;
  if (!m_editor || !m_editor->IsVisible()) {
    return;
  }
  if (item) {
    m_editor->SetText(item->GetStringValue());
    m_editor->KeepOpen();
  } else {
    m_editor->ShowEditor(false);
  }
}

void PropertyEditor::SetEditorText(const std::string& text) {
  if (m_editor && m_editor->IsVisible()) {
    m_editor->SetText(text);
  }
}

bool PropertyEditor::BeginEdit(IPropItem* item) {
  if (!m_editor || !item) {
    return false;
  }
  m_item = item;
  m_editor->SetText(item->GetStringValue());
  m_editor->ShowEditor(true);
  return true;
}

void PropertyEditor::OnEndEdit(ombrelcfrw7::CBaseEditor* editor, bool accepted) {
  if (accepted && m_item && editor) {
    m_item->SetStringValue(editor->GetText());
  }
}

void PropertyEditor::EditOnVisibleChange(ombrelcfrw7::CBaseEditor*, bool visible) {
  if (!visible) {
    m_item = nullptr;  // a closed box edits no row
  }
}

namespace {

// Takes the bytes of `symbols` out of `text` (UTF-8; the symbols are ASCII, which never
// occurs inside a longer sequence) and counts the characters taken before `caret`.
bool strip_symbols(std::string& text, const std::string& symbols, long caret, long& removed_before) {
  std::string kept;
  long index = 0;
  removed_before = 0;
  for (const char c : text) {
    const bool starts_char = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    if (symbols.find(c) != std::string::npos) {
      removed_before += index < caret ? 1 : 0;
    } else {
      kept += c;
    }
    index += starts_char ? 1 : 0;
  }
  const bool removed = kept.size() != text.size();
  text.swap(kept);
  return removed;
}

}  // namespace

void LinePropertyEditor<std::string>::EditOnChangeText(ombrelcfrw7::CBaseEditor* editor) {
  auto* line = dynamic_cast<ombrelcfrw7::CLineEditor*>(editor);
  if (!line || m_restricted_symbols.empty()) {
    return;
  }
  std::string text = line->GetText();
  const long caret = line->GetInsertionPoint();
  long removed_before = 0;
  if (!strip_symbols(text, m_restricted_symbols, caret, removed_before)) {
    return;
  }
  line->SetText(text);
  line->SetInsertionPoint(caret - removed_before);
  if (wxWindow* native = line->GetNativeControl()) {
    const std::string& tip = m_tooltip_text.empty() ? m_restricted_symbols : m_tooltip_text;
    if (plaxi1::wxCustomTooltip* tooltip = plaxi1::SetTooltip(native, tip, wxID_ANY, true)) {
      tooltip->ShowNow();
    }
  }
  m_tooltip_shown = true;
}

void LinePropertyEditor<std::string>::EditOnVisibleChange(ombrelcfrw7::CBaseEditor* editor, bool visible) {
  PropertyEditor::EditOnVisibleChange(editor, visible);
  m_tooltip_shown = false;
  auto* line = dynamic_cast<ombrelcfrw7::CEditor*>(editor);
  if (!visible && line && line->GetNativeControl()) {
    plaxi1::SetTooltip(line->GetNativeControl(), std::string(), wxID_ANY, false);
  }
}

void ComboPropertyEditor<std::string>::EditOnVisibleChange(ombrelcfrw7::CBaseEditor* editor, bool visible) {
  auto* combo = dynamic_cast<ombrelcfrw7::CComboBox*>(editor);
  auto* item = dynamic_cast<ComboProperty<std::string>*>(GetItem());
  if (visible && combo && item) {
    std::vector<std::string> values;
    values.reserve(item->getAdditionalCount());
    for (int i = 0; i < item->getAdditionalCount(); ++i) {
      values.push_back(item->getAdditionalValue(i));
    }
    combo->SetValues(values);
    combo->SetText(item->GetStringValue());
  }
  PropertyEditor::EditOnVisibleChange(editor, visible);
}

}  // namespace ombrelpropgrid2
