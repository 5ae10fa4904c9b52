#pragma once
#include <tamsel3/export.h>
#include <tamsel3/generic_base.h>

#include <string>

class wxFont;
class wxHelpEvent;
class wxStaticText;

namespace tamsel3 {

/// A dialog of the library, shown modally or modelessly by a host. Its layout is loaded
/// at the first show; a failed load gives 0 (modal) or false (modeless) and no message.
/// GUI thread.
class TAMSEL3_API dialog_base_t : public generic_base_t<dummy> {
 public:
  dialog_base_t();

  /// Fired with the help topic when help is asked for and the topic isn't empty.
  korvat2::signal_t<const std::string&> m_help_signal;

  /// Runs the dialog modally and returns its end code: wxID_OK (5100), wxID_CANCEL (5101),
  /// another code that the dialog chose, or 0 when the layout couldn't be loaded. A parent
  /// that is being destroyed is replaced by the main window (or none); a dialog loaded over
  /// a parent that is going by now isn't run, and gives wxID_CANCEL.
  virtual int show_modal(wxWindow* parent);
  /// Help was asked for by the modal callback: as the Help button, `on_help`.
  void help_activated() override;
  /// Shows or hides the dialog as wxDialog does; a dialog that appears paints at once,
  /// after its initialisation, rather than at the toolkit's next frame.
  bool Show(bool show = true) override;
  /// As wxDialog's; the Help button of a dialog without help is disabled as it is added.
  void AddChild(wxWindowBase* child) override;

  /// Shows or hides the dialog without a modal loop; false when the layout couldn't be
  /// loaded, else the result of Show.
  bool show_nonmodal(wxWindow* parent, bool show);
  /// Sets the topic that `m_help_signal` carries; an empty topic fires nothing.
  void set_help_topic(const std::string& topic) { m_help_topic = topic; }
  /// Sets the dialog's label, name and title.
  void set_title(const std::string& text);
  /// The dialog's title.
  std::string get_title() const;
  /// The parent's size times the factors, at least `min_size` (negative parts count as 0);
  /// without a parent, `min_size` as it is.
  wxSize get_proportional_size(float width_factor, float height_factor, const wxSize& min_size) const;

  bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                              const std::string& catalog_name, const std::string& object_name) override;
  void end_dialog(int code) override;
  /// Fires `m_help_signal` with the help topic, when it isn't empty.
  void on_help() override;
  /// The OK button's handler: `on_ok`, which may set another return code, then the end of the dialog
  /// with the return code, wxID_OK unless changed.
  void handle_ok(wxCommandEvent& event) override;

  /// The close box's handler: as Cancel, ends the dialog with wxID_CANCEL.
  void handle_close(wxCloseEvent& event);
  /// The help key's or context help's handler: `on_help`.
  void handle_dialog_help(wxHelpEvent& event);

  /// Lays `message` into `text` so that the dialog gets about the proportions of the
  /// display: wrapped at the width that a dialog of its height would have at the display's
  /// aspect ratio, plus an average word, and never below the one-line dialog's width.
  void set_multiline_text(wxStaticText* text, const std::string& message, wxFont font);

 protected:
  /// The topic of `m_help_signal`.
  std::string m_help_topic;

 private:
  void grow_to_fit();
  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
