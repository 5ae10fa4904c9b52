#pragma once
#include <korvat2/signal.h>
#include <plaxi1/modal.h>
#include <tamsel3/export.h>
#include <tamsel3/max_len_options.h>

#include <wx/panel.h>
#include <wx/timer.h>

#include <map>
#include <string>
#include <vector>

class wxInitDialogEvent;
class wxCloseEvent;
class wxTextCtrl;

namespace tamsel3 {

/// The dialog line's window class: a dialog whose modal run the modal callback may answer
/// and which takes help requests.
class TAMSEL3_API dummy : public plaxi1::modal_flavor<wxDialog> {};

/// The frame under every dialog (`T` = dummy) and every page or embedded panel
/// (`T` = wxPanel): the fixed sequence that turns a loaded layout into a working window,
/// the standard buttons, and the signal by which the window tells its owner that it ended.
///
/// Two-phase: the derived constructor names its layout object (`m_object_name`); the first
/// show or create loads it. GUI thread.
template <class T>
class TAMSEL3_API generic_base_t : public T, public korvat2::subscriber_base_t {
 public:
  generic_base_t();
  ~generic_base_t() override;
  generic_base_t(const generic_base_t&) = delete;
  generic_base_t& operator=(const generic_base_t&) = delete;

  /// Fired with the window and its end code when the window ends (pages).
  korvat2::signal_t<generic_base_t<T>*, int> m_end_dialog_signal;
  /// Fired with the outcome of a path check when its caller asks for it.
  korvat2::signal_t<bool> m_path_checked_signal;

  /// Reads the controls into the settings; the frame's does nothing.
  virtual void save_settings();
  /// Creates the window from `object_name` in `resource_file`; true on success.
  virtual bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                      const std::string& catalog_name, const std::string& object_name) = 0;
  /// Ends the window with `code`; the frame's fires `m_end_dialog_signal`.
  virtual void end_dialog(int code);
  /// The derived window's last word in initialisation, once per window.
  virtual void on_init_dialog();
  /// Before the window ends by OK; the frame's calls `save_settings`.
  virtual void on_ok();
  /// Before the window ends by Cancel, Escape or its frame's close box; the frame's does nothing.
  virtual void on_cancel();
  /// When Help is pressed; the frame's does nothing.
  virtual void on_help();
  /// Gives every direct child the interface font; again whenever the UI settings change.
  virtual void on_update_ui_settings();
  /// The OK button's handler: `on_ok`, then `end_dialog` with wxID_OK.
  virtual void handle_ok(wxCommandEvent& event);
  /// Loads "text.unknown" and the path messages from the catalog.
  virtual void load_auxiliary_strings();
  /// Applies the text length limits to the text fields among the direct children. A field
  /// never holds more than its limit, not even for a moment: an insertion that would go over
  /// keeps what fits (a paste too, in single-line fields), before any text handler hears of
  /// it, and `on_max_len` follows once per such insertion, within the edit: when the call
  /// that inserted returns, the field is cut and the user was warned. A field longer than
  /// its limit all the same (a lowered limit) is cut in its text event, and warned of there.
  /// -1 and a field without an entry stand for 10000.
  virtual void set_max_text_limit();
  /// The handler of `m_timer`, which the frame never starts; the frame's does nothing.
  virtual void handle_timer_event(wxTimerEvent& event);

  /// Runs the frame's initialisation once per window: size floor, standard buttons, interface font,
  /// text limits, catalog texts, then `on_init_dialog`. A repeated event applies the interface font
  /// again and nothing else.
  void handle_init_dialog_event(wxInitDialogEvent& event);
  /// The Cancel button's handler: `on_cancel`, then `end_dialog` with wxID_CANCEL.
  void handle_cancel(wxCommandEvent& event);
  /// The Help button's handler: calls `on_help`.
  void handle_help(wxCommandEvent& event);
  /// The close box's handler: as Cancel, `on_cancel` and then `end_dialog` with wxID_CANCEL.
  void handle_close(wxCloseEvent& event);

  /// Assigns one field's limit and applies the limits again.
  void set_max_len_options(wxTextCtrl* control, max_len_options_t options);
  /// A copy of the field's entry, made with the defaults when there is none.
  max_len_options_t gen_max_len_options(wxTextCtrl* control);
  /// Cuts a multi-line field that is longer than its limit, at once, and warns.
  void on_text_changed(wxCommandEvent& event);
  /// Warns that a field reached its limit, naming the field and the limit. No warning
  /// while the window is closing (destroyed or scheduled for destruction): the box would
  /// be parented to a dying window.
  void on_max_len(wxCommandEvent& event);

  /// Checks a path field as the user types: cleans it (`validate_path`), resolves a
  /// relative path through $PATH and `m_path_candidates` when `search_path`, and requires
  /// an absolute path that exists (`must_exist`) or whose first existing ancestor is
  /// reached without passing a folder that result directories keep for themselves. Colours
  /// the field and gives it a tooltip that says what is wrong; an empty field keeps the
  /// normal colour. Without the catalog the field is still cleaned and judged, and the
  /// colour alone tells: the tooltip stays empty. With `notify`, fires
  /// `m_path_checked_signal` with the outcome.
  template <class Control>
  bool check_file_or_folder(Control* control, bool must_exist, bool notify, bool search_path);

  /// Whether the layout was loaded.
  bool is_loaded() const { return m_loaded; }
  /// Whether the initialisation ran (it runs once per window).
  bool is_initialized() const { return m_initialized; }

 protected:
  /// Indexes of `m_path_messages`.
  enum path_message_t {
    path_nonexisting = 0,
    path_nonexisting_parent_dir = 1,
    path_empty_relative = 2,
    path_enter_valid_path = 3,
    path_invalid_file = 4,
    path_invalid_directory = 5,
    path_message_count = 6
  };

  /// "m_btn_ok" of the layout; null when it has none.
  wxWindow* m_btn_ok = nullptr;
  /// "m_btn_cancel" of the layout; null when it has none.
  wxWindow* m_btn_cancel = nullptr;
  /// "m_btn_help" of the layout; null when it has none. Enabled only with a help id.
  wxWindow* m_btn_help = nullptr;
  /// The layout object that the first show or create loads.
  std::string m_object_name;
  /// Free for the derived window; the frame never reads it.
  std::string m_reserved_text_1;
  /// The layout file; it starts as "tamsel.xrc" in the library's archive "tamsel3.dat".
  std::string m_resource_file;
  /// The catalog of the window's texts.
  std::string m_catalog_name = "tamsel";
  /// Free for the derived window; the frame never reads it.
  std::string m_reserved_text_2;
  /// The catalog's "text.unknown", for values that can't be shown.
  std::string m_text_unknown;
  /// The path messages of the catalog, indexed by `path_message_t`.
  std::vector<std::string> m_path_messages;
  /// The help id; -1 (no help) disables the Help button.
  int m_help_id = -1;
  /// Set once the layout is loaded.
  bool m_loaded = false;
  /// Set once the initialisation has run.
  bool m_initialized = false;
  /// A timer owned by the window; it gets its id after `on_init_dialog` and the frame never starts it.
  wxTimer m_timer;
  /// The text length limits by field.
  std::map<wxTextCtrl*, max_len_options_t> m_max_len_options;
  /// The smallest width the window may take; 0 for none.
  int m_min_width = 0;
  /// The smallest height the window may take; 0 for none.
  int m_min_height = 0;
  /// Folders in which `check_file_or_folder` looks for a relative path, after $PATH.
  std::vector<std::string> m_path_candidates;

 private:
  void apply_size_floor();
  void find_standard_buttons();
  /// The field's limit, 10000 for -1 or for a field without an entry.
  long limit_of(wxTextCtrl* field);
  void report_max_len(wxTextCtrl* field);
};

/// The event's object as a `Control`, or null when it is none or of another class.
template <class Control>
Control* get_ctrl_from_event(const wxEvent& event) {
  return dynamic_cast<Control*>(event.GetEventObject());
}

extern template class generic_base_t<wxPanel>;
extern template class generic_base_t<dummy>;

}  // namespace tamsel3
