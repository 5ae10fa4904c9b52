#pragma once
#include <tamsel3/export.h>
#include <tamsel3/pref_base.h>
#include <tamsel3/result_saving_data.h>

#include <plaxi1/style.h>

#include <string>

class wxButton;
class wxCheckBox;
class wxCommandEvent;
class wxRadioButton;
class wxSizeEvent;
class wxStaticText;

namespace tamsel3 {

/// The Result saving page: the name template of result directories and where results go.
/// The template field keeps to the rules as the user types (forbidden characters and
/// stray "@" go at once, a fault of form turns it red with the reason as tooltip); OK
/// mends what is left, never refuses, and warns about what it mended. Works on its own
/// copy of the data: `get_data()` after OK gives the result, after Cancel the original.
/// Layout "pref.result_saving". GUI thread.
class TAMSEL3_API result_saving_pp_t : public pref_base_t {
 public:
  /// Bits of the shown groups.
  enum show_flags_t {
    show_name = 1,              ///< the template with its label and explanation
    show_storage = 2,           ///< where results go; the folder is checked on OK only then
    show_vs_accessibility = 4,  ///< the check box, with `show_storage`
    show_curr_project_dir = 8,  ///< the first choice reads "current project folder"
    show_proj_default_folder = 16,
  };

  result_saving_pp_t(const result_saving_data_t& data, int flags);
  result_saving_pp_t(const result_saving_data_t& data, bool show_name, bool show_storage);

  result_saving_data_t get_data() const { return m_data; }

  /// Stores the fields into the data, mending what is wrong and warning about it. Checks of
  /// typing that haven't had their turn of the loop yet run first, so that what is stored
  /// is what the fields show once cleaned.
  void save_settings() override;
  void load_settings();
  void load_messages();
  void update_shown_controls();
  void process_enable_controls(bool enable);
  /// Mends a template for storing: cuts trailing white space, removes forbidden characters
  /// and stray "@", and falls back to the default template when what is left has no "@"
  /// or isn't valid. True when the user must hear of the change (not for white space).
  static bool filter_result_template(std::string& text);
  /// Keeps the first run of "@" and at most 8 of it, removing every other "@". True when
  /// the text changed.
  static bool replace_wrong_ats(std::string& text);

 protected:
  void on_init_dialog() override;
  void on_ok() override;
  void on_update_ui_settings() override;
  /// Shows a warning of the page; a host or a test replaces it.
  virtual void show_warning_message(const std::string& title, const std::string& text) const;

  void on_button_browse(wxCommandEvent& event);
  void on_radio_proj(wxCommandEvent& event);
  void on_radio_disk(wxCommandEvent& event);
  void on_text_edit(wxCommandEvent& event);
  void on_folder_text_edit(wxCommandEvent& event);
  void on_resize(wxSizeEvent& event);

  wxStaticText* m_staticText74 = nullptr;
  wxTextCtrl* m_textCtrl14 = nullptr;
  wxStaticText* m_staticText14 = nullptr;
  wxCheckBox* m_checkBox7 = nullptr;
  wxStaticText* m_staticText8 = nullptr;
  wxRadioButton* m_radioBtn13 = nullptr;
  wxRadioButton* m_radioBtn14 = nullptr;
  wxTextCtrl* m_textCtrl16 = nullptr;
  wxButton* m_button28 = nullptr;
  wxStaticText* m_text_proj_default_folder = nullptr;
  std::string m_restricted_symbols_text;
  std::string m_restricted_ats_text;
  std::string m_undefined_tooltip_text;
  std::string m_wrong_templ_title;
  std::string m_wrong_templ_details;
  std::string m_wrong_dir_title;
  std::string m_wrong_dir_details;
  std::string m_wrong_input_advice;
  std::string m_at_symbol = "@";
  std::string m_example_text;
  std::string m_curr_project_dir_text;
  std::string m_last_template;
  long m_insertion_point = 0;
  result_saving_data_t m_data;
  int m_show_flags;
  plaxi1::style_updater_t m_style_updater;

 private:
  void find_controls();
  /// The checks of typing that haven't run yet, at their turn of the loop or at OK.
  void run_pending_checks();
  /// The pass of `on_text_edit` over the template field.
  void check_template();
  void mark_template(const std::string& tooltip, bool error);

  bool m_template_check_pending = false;
  bool m_folder_check_pending = false;

  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
