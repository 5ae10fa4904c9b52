#pragma once
#include <tamsel3/dialog_base.h>
#include <tamsel3/export.h>

#include <string>

class wxCommandEvent;
class wxSize;
class wxStaticText;
class wxTextCtrl;
class wxWindow;

namespace tamsel3 {

/// Asks the user where a file that the product needs is: an explanation, a field with a
/// browse button, OK and Cancel. The host sets the name, shows the dialog modally, and on
/// wxID_OK reads the name back; the file's existence isn't checked. The explanation is
/// wrapped to the display's proportions. GUI thread.
class TAMSEL3_API ask_dlg_t : public dialog_base_t {
 public:
  ask_dlg_t();

  /// Stores `filename`, and shows it in the field once the field exists.
  void set_filename(const std::string& filename);
  /// The file name: as set, or as the user left it after OK.
  std::string get_filename() const { return m_filename; }

  /// Puts the explanation and the file name into the controls.
  void fill_controls();
  /// Reads the explanation and the browse filter from the catalog; without one they stay.
  void load_messages();
  /// A fixed width of 400, and the height of the caption, the field and two button rows,
  /// never below 170.
  wxSize calculate_min_size();
  /// Lays the dialog out again and wraps the explanation to the display's proportions.
  void full_resize_update();
  /// Opens a file dialog from the field's name and puts the choice in the field.
  void on_btn_browse_file(wxCommandEvent& event);

 protected:
  void on_init_dialog() override;
  void on_ok() override;

  /// The file name.
  std::string m_filename;
  /// The explanation over the field.
  std::string m_ask_text;
  /// "m_text_control" of the layout: the explanation.
  wxStaticText* m_text_control = nullptr;
  /// "m_field_label" of the layout: the field's label.
  wxStaticText* m_field_label = nullptr;
  /// "m_file_field" of the layout: the file name.
  wxTextCtrl* m_file_field = nullptr;
  /// "m_browse_button" of the layout.
  wxWindow* m_browse_button = nullptr;
  /// The extension given to a name typed without one in the file dialog.
  std::string m_default_extension;
  /// The file dialog's filter.
  std::string m_extensions;
  /// Whether the explanation was wrapped to the dialog's final size.
  bool m_recalculated = false;

 private:
  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
