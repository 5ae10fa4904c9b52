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

  /// A page on a copy of `data` that shows the groups of `flags` (a combination of show_flags_t).
  result_saving_pp_t(const result_saving_data_t& data, int flags);
  /// A page on a copy of `data`: the check box is always shown, with the name group when `show_name`
  /// and the storage group when `show_storage`.
  result_saving_pp_t(const result_saving_data_t& data, bool show_name, bool show_storage);

  /// The page's copy of the data: after OK what the user entered, mended; after Cancel the data given.
  result_saving_data_t get_data() const { return m_data; }

  /// Stores the fields into the data, mending what is wrong and warning about it. Checks of
  /// typing that haven't had their turn of the loop yet run first, so that what is stored
  /// is what the fields show once cleaned.
  void save_settings() override;
  /// Puts the data into the fields.
  void load_settings();
  /// Loads the warning texts, tooltips and labels from the catalog.
  void load_messages();
  /// Shows the groups that the flags ask for and hides the others.
  void update_shown_controls();
  /// Enables or disables the storage folder's field and its Browse button.
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

  /// Opens a folder dialog from the folder field and puts the choice in it.
  void on_button_browse(wxCommandEvent& event);
  /// "In the project" was chosen: the folder field is disabled.
  void on_radio_proj(wxCommandEvent& event);
  /// "On disk" was chosen: the folder field is enabled.
  void on_radio_disk(wxCommandEvent& event);
  /// Checks the template field as the user types, at the next turn of the loop.
  void on_text_edit(wxCommandEvent& event);
  /// Checks the folder field as the user types, at the next turn of the loop.
  void on_folder_text_edit(wxCommandEvent& event);
  /// Wraps the explanations to the page's new width.
  void on_resize(wxSizeEvent& event);

  /// "m_staticText74" of the layout: the template's label.
  wxStaticText* m_staticText74 = nullptr;
  /// "m_textCtrl14" of the layout: the name template.
  wxTextCtrl* m_textCtrl14 = nullptr;
  /// "m_staticText14" of the layout: the template's explanation with an example.
  wxStaticText* m_staticText14 = nullptr;
  /// "m_checkBox7" of the layout: the accessibility check box.
  wxCheckBox* m_checkBox7 = nullptr;
  /// "m_staticText8" of the layout: the storage group's label.
  wxStaticText* m_staticText8 = nullptr;
  /// "m_radioBtn13" of the layout: results in the project.
  wxRadioButton* m_radioBtn13 = nullptr;
  /// "m_radioBtn14" of the layout: results on disk.
  wxRadioButton* m_radioBtn14 = nullptr;
  /// "m_textCtrl16" of the layout: the folder of results on disk.
  wxTextCtrl* m_textCtrl16 = nullptr;
  /// "m_button28" of the layout: Browse.
  wxButton* m_button28 = nullptr;
  /// "m_text_proj_default_folder" of the layout: the project's default folder.
  wxStaticText* m_text_proj_default_folder = nullptr;
  /// Tooltip: the template held forbidden characters.
  std::string m_restricted_symbols_text;
  /// Tooltip: the template held stray "@".
  std::string m_restricted_ats_text;
  /// Tooltip of a template without "@".
  std::string m_undefined_tooltip_text;
  /// Title of the warning about a mended template.
  std::string m_wrong_templ_title;
  /// Details of the warning about a mended template.
  std::string m_wrong_templ_details;
  /// Title of the warning about a bad folder.
  std::string m_wrong_dir_title;
  /// Details of the warning about a bad folder.
  std::string m_wrong_dir_details;
  /// The advice that ends each warning.
  std::string m_wrong_input_advice;
  /// The character that stands for the result's number.
  std::string m_at_symbol = "@";
  /// The explanation's example, with "{template}" for the template.
  std::string m_example_text;
  /// The first choice's text when "current project folder" is asked for.
  std::string m_curr_project_dir_text;
  /// The template as it was before the last edit.
  std::string m_last_template;
  /// Where the cursor stood in the template before the last edit.
  long m_insertion_point = 0;
  /// The page's copy of the data.
  result_saving_data_t m_data;
  /// The show_flags_t bits of the shown groups.
  int m_show_flags;
  /// Follows the UI settings for the labels' styles.
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
