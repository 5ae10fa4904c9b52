#include <ombrelcfrw7/editors.h>

#include <ombrelc7/sys_window.h>

#include <wx/combobox.h>
#include <wx/textctrl.h>
#include <wx/window.h>

#include <gtk/gtk.h>

#include <algorithm>

namespace ombrelc7 {

std::unique_ptr<sender_list_t> CreateDefSenderList() { return std::make_unique<sender_list_t>(); }

}  // namespace ombrelc7

namespace ombrelcfrw7 {

using ombrelc7::rect;

CBaseEditor::CBaseEditor(CVisualElement* parent, const ombrelc7::size<int>& size,
                         ombrelc7::Alignment alignment)
    : CVisualElement(parent, size, alignment) {}

CBaseEditor::~CBaseEditor() {
  for (ombrelc7::CEditNotify* listener : m_listeners) {
    listener->NoticeStopped(this);
  }
}

void CBaseEditor::Subscribe(ombrelc7::CEditNotify* listener) {
  if (listener && std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end()) {
    m_listeners.push_back(listener);
    listener->NoticeStarted(this);
  }
}

void CBaseEditor::Unsubscribe(void* listener) {
  m_listeners.erase(std::remove_if(m_listeners.begin(), m_listeners.end(),
                                   [listener](ombrelc7::CEditNotify* l) {
                                     return static_cast<ombrelc7::IEditNotify*>(l) == listener;
                                   }),
                    m_listeners.end());
}

void CBaseEditor::ProcessEditorCommand(EditorCommand command) {
  if (command != ecAccept && command != ecCancel) {
    return;
  }
  m_keep_open = false;
  m_end_edit(this, command == ecAccept);
  if (!m_keep_open) {
    ShowEditor(false);
  }
  m_keep_open = false;
}

void CBaseEditor::ShowEditor(bool show) {
  if (show == IsVisible()) {
    return;
  }
  SetVisible(show);
  Notify([this, show](ombrelc7::CEditNotify* l) { l->EditOnVisibleChange(this, show); });
}

CEditor::CEditor() : CBaseEditor(nullptr, ombrelc7::size<int>(0, 0), ombrelc7::alNone) { SetVisible(false); }

CEditor::~CEditor() {
  if (m_native) {
    m_native->Unbind(wxEVT_DESTROY, &CEditor::OnNativeDestroy, this);
    m_native->Unbind(wxEVT_KEY_DOWN, &CEditor::OnNativeKey, this);
  }
}

void CEditor::AdoptNative(wxWindow* native) {
  m_native = native;
  m_native->Hide();
  m_native->Bind(wxEVT_KEY_DOWN, &CEditor::OnNativeKey, this);
  m_native->Bind(wxEVT_DESTROY, &CEditor::OnNativeDestroy, this);
}

void CEditor::OnNativeDestroy(wxWindowDestroyEvent& event) {
  if (event.GetEventObject() == m_native) {
    m_native = nullptr;
  }
  event.Skip();
}

void CEditor::OnNativeKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  Notify([this, key](ombrelc7::CEditNotify* l) { l->EditOnKeyDown(this, key); });
  if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) {
    Notify([this](ombrelc7::CEditNotify* l) { l->EditOnReturnPress(this); });
    ProcessEditorCommand(ecAccept);
  } else if (key == WXK_ESCAPE) {
    ProcessEditorCommand(ecCancel);
  } else {
    event.Skip();
  }
}

void CEditor::ShowEditor(bool show) {
  const bool was = IsVisible();
  CBaseEditor::ShowEditor(show);
  if (!m_native || was == show) {
    return;
  }
  if (show) {
    PlaceNative();
  } else {
    const bool had_focus = m_native->HasFocus();
    m_native->Hide();
    // The keys go back to the grid that the editor covered.
    if (had_focus && GetWindow()) {
      GetWindow()->GetWxWindow()->SetFocus();
    }
  }
}

void CEditor::ArrangeChildren() {
  CBaseEditor::ArrangeChildren();
  PlaceNative();
}

int CEditor::GetTextInset() const {
  if (!m_native || !m_native->GetHandle() || !GTK_IS_ENTRY(m_native->GetHandle())) {
    return 0;
  }
  // The entry's own border and padding, in the state it is in: the theme's, as GTK lays it.
  GtkStyleContext* style = gtk_widget_get_style_context(m_native->GetHandle());
  const GtkStateFlags state = gtk_style_context_get_state(style);
  GtkBorder border{};
  GtkBorder padding{};
  gtk_style_context_get_border(style, state, &border);
  gtk_style_context_get_padding(style, state, &padding);
  return border.left + padding.left;
}

void CEditor::PlaceNative() {
  if (!m_native || !IsVisible()) {
    return;
  }
  rect<int> area = GetWindowRect();
  GetEditorRect(area);
  if (area.empty()) {
    m_native->Hide();
    return;
  }
  m_native->SetSize(area.left, area.top, area.width(), area.height());
  if (!m_native->IsShown()) {
    m_native->Show();
    m_native->SetFocus();  // the edit goes on where the user looks
  }
}

void CLineEditor::Init(ombrelc7::ISysWindow* window) {
  if (!window || GetNativeControl()) {
    return;
  }
  auto* text = new wxTextCtrl(window->GetWxWindow(), wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxTE_PROCESS_ENTER | wxBORDER_NONE);
  AdoptNative(text);
  text->Bind(wxEVT_TEXT, &CLineEditor::OnNativeText, this);
}

void CLineEditor::OnNativeText(wxCommandEvent& event) {
  if (!m_setting) {
    Notify([this](ombrelc7::CEditNotify* l) { l->EditOnChangeText(this); });
  }
  event.Skip();
}

void CLineEditor::SetText(const std::string& utf8) {
  if (auto* text = static_cast<wxTextCtrl*>(GetNativeControl())) {
    m_setting = true;
    text->ChangeValue(wxString::FromUTF8(utf8));
    m_setting = false;
  }
}

std::string CLineEditor::GetText() const {
  auto* text = static_cast<wxTextCtrl*>(GetNativeControl());
  return text ? text->GetValue().utf8_string() : std::string();
}

long CLineEditor::GetInsertionPoint() const {
  auto* text = static_cast<wxTextCtrl*>(GetNativeControl());
  return text ? text->GetInsertionPoint() : 0;
}

void CLineEditor::SetInsertionPoint(long position) {
  if (auto* text = static_cast<wxTextCtrl*>(GetNativeControl())) {
    text->SetInsertionPoint(position);
  }
}

void CComboBox::Init(ombrelc7::ISysWindow* window, bool editable) {
  if (!window || GetNativeControl()) {
    return;
  }
  m_editable = editable;
  auto* combo = new wxComboBox(window->GetWxWindow(), wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               0, nullptr, wxTE_PROCESS_ENTER | (editable ? 0 : wxCB_READONLY));
  AdoptNative(combo);
  combo->Bind(wxEVT_TEXT, &CComboBox::OnNativeText, this);
}

void CComboBox::OnNativeText(wxCommandEvent& event) {
  Notify([this](ombrelc7::CEditNotify* l) { l->EditOnChangeText(this); });
  event.Skip();
}

void CComboBox::SetText(const std::string& utf8) {
  auto* combo = static_cast<wxComboBox*>(GetNativeControl());
  if (!combo) {
    return;
  }
  if (m_editable) {
    combo->ChangeValue(wxString::FromUTF8(utf8));
  } else {
    // A fixed box shows only its values; GTK keeps the old choice on wxNOT_FOUND.
    const int index = combo->FindString(wxString::FromUTF8(utf8));
    if (index == wxNOT_FOUND) {
      FillNative();
    }
    combo->SetSelection(index);
  }
}

std::string CComboBox::GetText() const {
  auto* combo = static_cast<wxComboBox*>(GetNativeControl());
  return combo ? combo->GetValue().utf8_string() : std::string();
}

void CComboBox::FillNative() {
  auto* combo = static_cast<wxComboBox*>(GetNativeControl());
  combo->Clear();
  for (const std::string& value : m_values) {
    combo->Append(wxString::FromUTF8(value));
  }
}

void CComboBox::SetValues(const std::vector<std::string>& values) {
  auto* combo = static_cast<wxComboBox*>(GetNativeControl());
  if (!combo) {
    return;
  }
  const std::string kept = GetText();
  m_values = values;
  FillNative();
  SetText(kept);
}

}  // namespace ombrelcfrw7
