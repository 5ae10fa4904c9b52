#pragma once
#include <tamsel3/editor_data.h>
#include <tamsel3/export.h>
#include <tamsel3/pref_base.h>

#include <string>

class wxCheckBox;
class wxChoice;
class wxCommandEvent;
class wxListBox;
class wxStaticText;
class wxTextCtrl;

namespace tamsel3 {

/// The preference page of the external editors, on the layout "pref.editor": per language
/// the registry's editors, of which the user selects one, marks a default or adds a custom
/// one by browsing for a program. Works on a copy of the registry and never asks the
/// desktop; the host reads the result with `get_data` after OK and saves it. GUI thread.
class TAMSEL3_API editor_pp_t : public pref_base_t {
 public:
  /// Bits of `flags`: 1 without 2 lets the user choose the language, 8 shows the default
  /// tick box, 16 the info line.
  enum show_flags_t : int {
    show_language_list = 1,
    show_language_text = 2,
    show_default = 8,
    show_info = 16,
  };

  /// A page on a copy of `data`, showing the parts of `flags` (show_flags_t bits).
  editor_pp_t(const editor_data_t& data, int flags);

  /// The registry as the host gave it or as OK left it.
  editor_data_t get_data() const { return m_committed_data; }
  void save_settings() override;
  void on_init_dialog() override;
  /// Fills the page from a fresh copy of the host's registry; once per page.
  void load_settings();
  /// Shows the language's choice or its name, the default tick box and the info line as the flags ask.
  void update_shown_controls();
  /// The name of the editor selected in the list; empty for the browse entry, for none and
  /// for a text that no editor of the language shows.
  std::string get_selected_editor_name() const;

  /// Text of the list's last entry, which adds a custom editor.
  static std::string browse_editor_display_name;
  /// Follows the display name of the system's default editor in the list.
  static std::string system_default_suffix;

 protected:
  /// Fills the list with the editors of `language` and selects the selected editor.
  void update_state_for_language(language_info::language_t language);
  /// The arguments of `editor`'s command line, after its program.
  std::string get_cmd_line_args(const korvat2::system_editor_t& editor) const;
  /// Shows the info line about `editor`, the editor chosen for `language`.
  void fill_info_message(language_info::language_t language, const korvat2::system_editor_t& editor);
  /// The language's choice changed: shows the editors of the new language.
  void on_language_changed(wxCommandEvent& event);
  /// An entry of the list was clicked: selects that editor, or browses for a program at the last entry.
  void on_editor_list_clicked(wxCommandEvent& event);
  /// The command line was edited: the selected editor takes the new arguments.
  void on_cmd_line_edit(wxCommandEvent& event);
  /// The default tick box changed: the selected editor becomes the default, ticked or not; the page
  /// never clears a default.
  void on_set_as_default(wxCommandEvent& event);

 private:
  bool browse_for_editor(language_info::language_t language);
  void show_selected_editor(language_info::language_t language, const std::string& name);
  void set_default_tick(bool ticked);

  editor_data_t m_committed_data;
  editor_data_t m_work_data;
  int m_show_flags;
  wxWindow* m_language_gap = nullptr;
  wxChoice* m_language = nullptr;
  wxStaticText* m_language_text = nullptr;
  wxListBox* m_editor_list = nullptr;
  wxStaticText* m_static_text_cmd_line = nullptr;
  wxTextCtrl* m_command_line = nullptr;
  wxCheckBox* m_default = nullptr;
  wxStaticText* m_info_text = nullptr;
  bool m_updating_list = false;

  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
