#pragma once
#include <korvat2/intrusive_pointer.h>
#include <korvat2/pointers.h>
#include <korvat2/signal.h>
#include <plaxi1/picture.h>
#include <plaxi1/style.h>
#include <tamsel3/export.h>
#include <tamsel3/pref_base.h>

#include <wx/stattext.h>

#include <cstddef>
#include <string>
#include <vector>

class wxBoxSizer;
class wxSizeEvent;
class wxSizer;
class wxStaticBitmap;

namespace plaxi1 {
class wxIconButton;
namespace elements {
class ElementAdapter;
class RectangleElement;
}  // namespace elements
}  // namespace plaxi1

namespace tamsel3 {

/// A static text that wraps its text to a width it is given and never asks for width of
/// its own, so that a sizer gives it what the window has. The width it wraps to is the
/// given one less `m_delta`, the room that the layout keeps around the label inside
/// `m_window_for_get_parent_size`. A wrap keeps at most five lines, the last ending in
/// "…" when text was cut. GUI thread.
class TAMSEL3_API caption_label_t : public wxStaticText {
 public:
  /// `window_for_get_parent_size` must not be null (an assertion reports it).
  caption_label_t(wxWindow* parent, const std::string& text, wxWindow* window_for_get_parent_size);

  /// Raises `m_delta` to `extra` plus the width of `m_window_for_get_parent_size` less the
  /// label's own width, where that is larger: the delta only grows.
  void update_delta(int extra);
  /// Wraps `m_text` to `width - m_delta` pixels in the normal UI font and shows the result.
  /// False without a change of the number of lines, or when that width is below -1.
  virtual bool wrap_to_width(int width);

  /// The full, unwrapped text.
  std::string m_text;
  /// The window whose width bounds the label's; never null.
  wxWindow* m_window_for_get_parent_size = nullptr;
  /// The room that the layout keeps around the label, taken off the width it wraps to.
  int m_delta = 0;
  /// Lines of the last wrap.
  int m_lines = 0;
  /// What the owner meant the label to hold (1 for a caption, 5 for a description); the
  /// wrap keeps five lines whatever it says.
  int m_max_lines = -1;

 protected:
  /// Width 0 and the height of the text as it stands.
  wxSize DoGetBestSize() const override;
  /// Sets the size with the height taken from the text where none is given.
  void DoSetSize(int x, int y, int width, int height, int flags) override;
};

/// The strip across the top of a page: a bold caption, a description of up to five lines
/// under it and, under these, a message pane indented by 50 pixels that shows one message
/// at a time, with its severity's icon and, while there are several messages, two scroll
/// buttons. Messages are kept most severe first; a new one comes on show when it is more
/// severe than the head of the list (or is the first). The labels wrap to the panel's
/// width, and the panel's minimum height is what its text needs.
///
/// A host can rely on these, which are intended as they stand: `hide_message_pane` only
/// forgets the shown message (the pane stays until a later message or removal changes
/// it); `clear_messages` empties the list and leaves the pane; a message of id 0 on show
/// is pushed aside by any later forced or more severe one, as if none were shown;
/// `set_read_only(false)` shows the pane, even after `disable`. The minimum height follows
/// every change of the texts, of the width and of the pane's visibility. A change of the
/// UI settings gives the panel its new colours and fonts and wraps its texts again.
/// GUI thread.
class TAMSEL3_API caption_panel_t : public panel_t, public korvat2::_internal::subscriber_base_t {
 public:
  /// Severity of a message; a lower value is more severe. Any other value of the
  /// underlying int is valid and shows as a warning.
  enum severity_t : int {
    severity_critical = 0,
    severity_error = 1,
    severity_warning = 2,
    severity_information = 3,
  };

  /// A message of the panel: its id, severity and text.
  struct message_info_t {
    /// The id that add_message gave.
    int m_id = 0;
    /// How severe it is.
    severity_t m_severity = severity_critical;
    /// The text shown.
    std::string m_text;
  };

  /// Builds the panel with its caption and description.
  caption_panel_t(wxWindow* parent, const std::string& caption, const std::string& description);
  /// Builds the empty window; a derived class calls `init`.
  explicit caption_panel_t(wxWindow* parent);
  ~caption_panel_t() override;

  /// Makes the children: the caption, the description and the hidden message pane.
  void init(const std::string& caption, const std::string& description);

  /// Stores the flag and shows the message pane exactly when it is false.
  void set_read_only(bool read_only) override;
  /// Shows `text` as the caption and wraps it to the panel's width.
  virtual void set_caption(const std::string& text);
  /// Shows `text` as the description and wraps it to the panel's width.
  virtual void set_description(const std::string& text);
  /// Whether the panel is read-only (`set_read_only`).
  virtual bool get_read_only() const;
  /// Hides the message pane for good.
  virtual void disable();

  /// Adds a message behind those of its severity and before the less severe ones, and
  /// shows it when it is the first or more severe than the head was. Returns its id;
  /// ids aren't reused.
  int add_message(severity_t severity, const std::string& text);
  /// Replaces a message's text; unknown ids are ignored.
  void edit_message(int id, const std::string& text);
  /// The message of that id; id 0, severity 0 and an empty text when there is none.
  message_info_t get_message(int id) const;
  /// Removes a message; unknown ids are ignored. When it was on show, the head of the
  /// list comes on show while the pane is shown, and the pane goes with the last message.
  void remove_message(int id);
  /// Empties the list; the pane keeps what it shows.
  void clear_messages();
  /// The number of messages in the list.
  std::size_t get_message_count() const { return m_messages.size(); }
  /// The id at `index` of the list, or -1.
  int get_message_id(int index) const;
  /// The index in the list of `id` (which must not be negative), or -1.
  int get_message_index(int id) const;

  /// Shows the message of `id`. Unless `force`, a message that is at most as severe as the
  /// one on show leaves that one on show. A message with an empty text is never shown.
  void show_message(int id, bool force);
  /// Shows the next message of the list, after the last the first.
  void show_next_message();
  /// Shows the previous message of the list, before the first the last.
  void show_prev_message();
  /// Forgets which message is on show; the pane stays as it is.
  void hide_message_pane();

  /// The icon of a severity, loaded with the others at the first call and kept for the
  /// process; "severity_warn" for a value out of range. Empty, and nothing kept, while the
  /// picture index has no location.
  static plaxi1::wxStaticPicture get_picture(severity_t severity);
  /// Gives the scroll buttons their images; the left one shows its disabled image also
  /// when it is enabled.
  void set_button_images();
  /// Shows the scroll buttons exactly while there is more than one message. True when
  /// that changed their visibility.
  bool update_buttons();
  /// Fonts and background of the labels from `style`.
  void set_style(plaxi1::style_t style);

 protected:
  /// Makes the caption and the description and gives the sizer that holds them.
  virtual wxSizer* create_top_controls(const std::string& caption, const std::string& description);
  /// Wraps the labels to the new width and sets the minimum height that their text needs.
  virtual void on_size(wxSizeEvent& event);
  /// Colours and fonts from the UI settings, and the labels' deltas.
  virtual void on_ui_changed();

  /// The background of the caption and the description.
  korvat2::intrusive_pointer_t<plaxi1::elements::RectangleElement> m_top_rectangle;
  /// The bold caption.
  caption_label_t* m_caption = nullptr;
  /// The text of the message on show.
  caption_label_t* m_message_label = nullptr;
  /// The description under the caption.
  caption_label_t* m_description = nullptr;
  /// The icon of the message on show.
  wxStaticBitmap* m_message_icon = nullptr;
  /// The background of the message pane.
  korvat2::intrusive_pointer_t<plaxi1::elements::RectangleElement> m_message_rectangle;
  /// The message pane.
  wxPanel* m_message_pane = nullptr;
  /// The left scroll button: the previous message.
  plaxi1::wxIconButton* m_prev_button = nullptr;
  /// The right scroll button: the next message.
  plaxi1::wxIconButton* m_next_button = nullptr;
  /// Set while `on_size` runs, so that the layout it causes doesn't run it again.
  bool m_in_on_size = false;
  /// The sizer of the message pane.
  wxBoxSizer* m_message_sizer = nullptr;
  /// Holds `m_top_rectangle` in the window.
  korvat2::smart_pointer_t<plaxi1::elements::ElementAdapter> m_top_adapter;
  /// Holds `m_message_rectangle` in the window.
  korvat2::smart_pointer_t<plaxi1::elements::ElementAdapter> m_message_adapter;
  /// Set by `disable`: the pane stays hidden.
  bool m_disabled = false;
  /// The read-only flag.
  bool m_read_only = false;
  /// The messages, most severe first.
  std::vector<message_info_t> m_messages;
  /// The id of the message on show; -1 for none.
  int m_current_id = -1;
  /// The id of the next message added.
  int m_next_id = 0;

 private:
  void create_message_pane();
  void handle_ui_settings_changed();
  void update_height_floor();
  void layout_parent();
  void show_label_text(caption_label_t* label, const std::string& text);
  std::vector<message_info_t>::iterator find_message(int id);
  std::vector<message_info_t>::const_iterator find_message(int id) const;
  void show_at_offset(int offset);
};

}  // namespace tamsel3
