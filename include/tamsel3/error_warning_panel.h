#pragma once
#include <tamsel3/dialog_base.h>
#include <tamsel3/export.h>
#include <tamsel3/message_window.h>
#include <tamsel3/pref_base.h>

#include <wx/bitmap.h>
#include <wx/font.h>

#include <string>
#include <vector>

class wxCheckBox;
class wxGenericAnimationCtrl;
class wxKeyEvent;
class wxPaintEvent;
class wxStaticBitmap;
class wxStaticText;

namespace tamsel3 {

/// The visible form of a message_window_t: an icon, a main text in the large font, a
/// supplemental text, an optional check box and up to two buttons, on the layout
/// "panel.error_warning". The panel wraps its texts itself, by character counts from a
/// pixel width. It lives in any window: its buttons end it through `m_end_dialog_signal`
/// and it never ends a dialog itself. Ctrl+C copies its texts to the clipboard.
/// GUI thread.
class TAMSEL3_API error_warning_panel_t : public pref_base_t {
 public:
  /// Keeps a copy of `data`; the window comes with `create`.
  explicit error_warning_panel_t(const message_window_t& data);
  ~error_warning_panel_t() override;

  /// Fired when a change of settings or widths made the panel change its size.
  korvat2::signal_t<> m_layout_changed_signal;

  void on_init_dialog() override;
  /// Stores the check box's value and keeps it.
  void on_ok() override;
  /// Stores and keeps the check box's value for the Close button alone.
  void on_cancel() override;
  /// Takes the fonts of the UI settings, fills the controls again and fires
  /// `m_layout_changed_signal` when the size changed.
  void on_update_ui_settings() override;
  /// Texts, buttons and check box from the description; then fits the panel.
  virtual void fill_controls();

  /// Pixel widths to which the texts are wrapped; -1 means no limit, a value below -1 is
  /// ignored. Rewraps at once.
  void set_max_main_msg_width(int width);
  /// The same for the supplemental text.
  void set_max_supp_msg_width(int width);

  /// Passes the check box's value to its definition and, with `save`, keeps it there.
  void save_check_box_state(bool save);
  /// A copy of the description the panel shows.
  message_window_t get_window_data() const;

  /// Shows `animation` in place of the icon and starts it; on a scaled display, from its
  /// form at twice the size where it has one.
  void set_animation(const plaxi1::picture_t& animation);
  /// Shows the picture of the description's icon type.
  void load_images();
  /// Wraps the main and the supplemental text into their controls.
  void fill_text_controls();
  /// Wraps `message` into `text` in `font`; an empty message or a null control leaves the
  /// control as it is.
  void fill_static_text(wxStaticText* text, bool is_main, const std::string& message, wxFont font);
  /// How many average characters the text's width holds in its font.
  unsigned max_string_len_in_label(bool is_main);
  /// `text` (UTF-8) broken into lines of at most `max_chars` characters (code points; 0
  /// counts as 1). An LF ends a line and restarts the count; an empty text gives no line.
  /// A line ends at its last blank within the limit, and the blanks there are dropped; a
  /// line may also end on either side of an ideograph, kana or hangul, which are written
  /// without blanks. Where neither comes within the limit, the line is cut after
  /// `max_chars` characters. A host can rely on this: no line is cut inside a UTF-8
  /// sequence, no line is emitted empty in place of text, and every character but the
  /// blanks at a break is kept, in order. A word no longer than `max_chars` stays whole.
  std::vector<std::string> create_multi_line(unsigned max_chars, const std::string& text) const;
  /// The lines joined with LFs between them.
  std::string content_for_label(const std::vector<std::string>& lines) const;

  /// Puts the main and the supplemental text, a blank line between them, on the clipboard.
  bool copy_to_clipboard() const;
  /// The animation shown in place of the icon, or null.
  wxGenericAnimationCtrl* get_animation_ctrl() const { return m_animation; }

 protected:
  /// "m_main_instructions" of the layout: the main text.
  wxStaticText* m_main_instructions = nullptr;
  /// "m_supplemental_instructions" of the layout: the supplemental text.
  wxStaticText* m_supplemental_instructions = nullptr;
  /// "m_icon" of the layout.
  wxStaticBitmap* m_icon = nullptr;
  /// The GTK animation control can't show the toolkit's animations: they are generic ones.
  wxGenericAnimationCtrl* m_animation = nullptr;
  /// "m_checkBox5" of the layout: the check box of the description's definition.
  wxCheckBox* m_checkBox5 = nullptr;
  /// The icon's picture.
  wxBitmap m_bitmap;
  /// The main text's font, large.
  wxFont m_main_font;
  /// The supplemental text's font.
  wxFont m_supplemental_font;
  /// The width, in pixels, to which the main text wraps; -1 for no limit.
  int m_max_main_msg_width = 420;
  /// The width, in pixels, to which the supplemental text wraps; -1 for no limit.
  int m_max_supp_msg_width = 448;
  /// The description shown.
  message_window_t m_data;

 private:
  void set_max_msg_width(int& field, int width);
  void handle_char_hook(wxKeyEvent& event);
  void handle_first_paint(wxPaintEvent& event);
};

/// A dialog of its own around one error_warning_panel_t, on the layout
/// "dlg.error_warning_dialog"; `show_modal` of message_window_t runs it. It ends when its
/// panel ends, with the panel's code, and follows the panel's size. GUI thread.
class TAMSEL3_API error_warning_dialog_t : public dialog_base_t {
 public:
  /// Makes the panel, which becomes a child window at the first show.
  explicit error_warning_dialog_t(const message_window_t& data);
  ~error_warning_dialog_t() override;

  /// The panel inside the dialog.
  error_warning_panel_t* get_panel() const { return m_panel; }

  void on_init_dialog() override;
  /// Gives the panel the interface font and fits the dialog around it.
  void on_update_ui_settings() override;
  /// Ends the dialog with the panel's code.
  void on_end_panel(generic_base_t<wxPanel>* panel, int code);

 protected:
  /// The panel; a child window of the dialog once shown.
  error_warning_panel_t* m_panel = nullptr;

 private:
  void handle_char_hook(wxKeyEvent& event);
};

}  // namespace tamsel3
