#pragma once
#include <tamsel3/dialog_base.h>
#include <tamsel3/export.h>

class wxCheckBox;
class wxSizeEvent;
class wxTextCtrl;
class wxWindow;

namespace tamsel3 {

/// Shows a text that the user may edit and that goes to the system clipboard on OK; Cancel
/// leaves the clipboard alone. A host derives and replaces `fill_controls` to show a text
/// of its own. Has the help context 1000. GUI thread.
class TAMSEL3_API clipboard_dlg_t : public dialog_base_t {
 public:
  clipboard_dlg_t();

  /// Puts the text into the field, without a text event; the library's puts a sample.
  virtual void fill_controls();
  /// Lays the dialog out again at its new size.
  void on_resize(wxSizeEvent& event);

 protected:
  void on_init_dialog() override;
  /// Copies the field's text to the clipboard; when the clipboard can't be opened nothing
  /// is copied and the dialog ends all the same.
  void on_ok() override;

  /// "m_text_field" of the layout: the text.
  wxTextCtrl* m_text_field = nullptr;
  /// "m_checkBox14" of the layout: an option of a derived dialog's own; the library's doesn't read it.
  wxCheckBox* m_option_box = nullptr;
  /// "m_btn_ok" of the layout.
  wxWindow* m_ok_button = nullptr;
  /// "m_btn_cancel" of the layout.
  wxWindow* m_cancel_button = nullptr;

 private:
  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
