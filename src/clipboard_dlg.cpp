#include <tamsel3/clipboard_dlg.h>

#include <a11y/native.h>

#include <wx/checkbox.h>
#include <wx/clipbrd.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

namespace tamsel3 {
wxBEGIN_EVENT_TABLE(clipboard_dlg_t, dialog_base_t)
  EVT_SIZE(clipboard_dlg_t::on_resize)
wxEND_EVENT_TABLE()

clipboard_dlg_t::clipboard_dlg_t() {
  m_help_id = 1000;
  m_object_name = "dlg.clipboard";
}

void clipboard_dlg_t::on_init_dialog() {
  m_text_field = XRCCTRL(*this, "m_textCtrl13", wxTextCtrl);
  m_option_box = XRCCTRL(*this, "m_checkBox14", wxCheckBox);
  m_ok_button = XRCCTRL(*this, "m_btn_ok", wxWindow);
  m_cancel_button = XRCCTRL(*this, "m_btn_cancel", wxWindow);
  if (m_text_field) {
    a11y::set_name(m_text_field, GetTitle());  // no label stands by the dialog's one field
  }
  place_centred();
  fill_controls();
}

void clipboard_dlg_t::fill_controls() {
  if (m_text_field) {
    m_text_field->ChangeValue("Sample text");
  }
}

void clipboard_dlg_t::on_resize(wxSizeEvent&) {
  Layout();
  Refresh(true, nullptr);
  Update();
}

void clipboard_dlg_t::on_ok() {
  wxClipboard* clipboard = wxClipboardBase::Get();
  if (!clipboard->Open()) {
    return;  // another program holds it: the dialog ends without a word
  }
  clipboard->Clear();
  const wxString text = m_text_field ? m_text_field->GetValue() : wxString();
  clipboard->SetData(new wxTextDataObject(text));  // the clipboard owns the data from here
  clipboard->Close();
}

}  // namespace tamsel3
