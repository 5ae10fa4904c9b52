#pragma once
#include <korvat2/pointers.h>
#include <plaxi1/picture.h>
#include <tamsel3/export.h>
#include <zandor/catalog.h>
#include <zandor/varg_list.h>

#include <string>

class wxWindow;

namespace tamsel3 {

/// A check box under a message by which the user suppresses it in future; the caller
/// implements it and decides where the choice is kept. Counted through add_ref/release.
class TAMSEL3_API i_check_box_definition {
 public:
  /// Takes a reference; `korvat2::sptr_t` calls it.
  virtual void add_ref() = 0;
  /// Drops a reference; the definition decides what the last one does.
  virtual void release() = 0;
  /// The key under which the choice is kept (free for the caller).
  virtual std::string get_key() const = 0;
  /// Loads the kept choice (free for the caller).
  virtual void load_state() = 0;
  /// Forgets the kept choice, so that the message shows again (free for the caller).
  virtual void reset_state() = 0;
  /// Whether the user chose not to see the message again. A checked definition makes `show_modal`
  /// return 7 at once, without a window and without `save_state`.
  virtual bool is_checked() const = 0;
  /// Receives the check box's value when the message ends by OK, Yes, Retry or Close; `save_state`
  /// follows at once.
  virtual void set_checked(bool checked) = 0;
  /// Keeps the current choice.
  virtual void save_state() = 0;
  /// The text beside the check box.
  virtual std::string get_label() const = 0;

 protected:
  virtual ~i_check_box_definition();
};

/// The description of one modal message: texts, buttons, icon and an optional check box.
/// A value without a window; `show_modal` brings it onto the screen. Copies share the
/// picture and the check box definition.
class TAMSEL3_API message_window_t {
 public:
  /// Which buttons appear; any other value shows as Close. A fixed type, so that every int
  /// is a value of it.
  enum button_type_t : int {
    buttons_close = 0,
    buttons_yes_no = 1,
    buttons_close_2 = 2,  ///< shown as Close
    buttons_ok_cancel = 3,
    buttons_close_4 = 4,  ///< shown as Close
    buttons_retry_cancel = 5,
    buttons_none = 6,
  };
  /// Which picture appears; any other value shows "error24".
  enum icon_types_t : int {
    icon_error = 0,
    icon_warning = 1,
    icon_ok = 2,
    icon_info = 3,
    icon_progress = 4,  ///< an animation
    icon_custom = 5,    ///< the caller's own picture, `m_picture`
  };
  /// Answers of show_modal and show_msg_box.
  enum answer_t : int {
    answer_close = 0,
    answer_yes = 1,
    answer_no = 2,
    answer_ok = 3,
    answer_cancel = 4,
    answer_retry = 5,
    answer_no_window = 6,  ///< show_msg_box found no window to show on
    answer_none = 7,       ///< suppressed by its check box, or ended without an answer
  };

  message_window_t() = default;

  /// An error with a Close button: the texts of `main_key` and `supplemental_key` in `catalog`,
  /// formatted with their arguments (`get_message`), and the error icon.
  static message_window_t simple_error_wnd(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string main_key,
                                           std::string supplemental_key,
                                           const ZANDOR_2_16::generic::varg_list& main_args,
                                           const ZANDOR_2_16::generic::varg_list& supplemental_args);
  /// A warning with the buttons `buttons`: the texts as for `simple_error_wnd`, and the warning icon.
  static message_window_t simple_warning_wnd(const ZANDOR_2_16::i18n::catalog_t& catalog,
                                             std::string main_key, std::string supplemental_key,
                                             button_type_t buttons,
                                             const ZANDOR_2_16::generic::varg_list& main_args,
                                             const ZANDOR_2_16::generic::varg_list& supplemental_args);
  /// As `simple_warning_wnd`, with the check box `check_box`.
  static message_window_t warning_wnd_with_check(const ZANDOR_2_16::i18n::catalog_t& catalog,
                                                 std::string main_key, std::string supplemental_key,
                                                 button_type_t buttons,
                                                 korvat2::sptr_t<i_check_box_definition> check_box,
                                                 const ZANDOR_2_16::generic::varg_list& main_args,
                                                 const ZANDOR_2_16::generic::varg_list& supplemental_args);
  /// The text of `key` formatted with `args`, or the key itself when the catalog hasn't
  /// it, so that a ready text may stand in for a key.
  static std::string get_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                                 const ZANDOR_2_16::generic::varg_list& args);
  /// The library's picture of an icon type; "error24" for types without one.
  static plaxi1::picture_t get_icon_by_type(icon_types_t type);

  /// Sets the main text to `get_message(catalog, key, args)`.
  void set_main_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                        const ZANDOR_2_16::generic::varg_list& args);
  /// Sets the supplemental text to `get_message(catalog, key, args)`.
  void set_supplemental_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                                const ZANDOR_2_16::generic::varg_list& args);
  /// Sets the details to `get_message(catalog, key, args)` and `m_has_details`.
  void set_details_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                           const ZANDOR_2_16::generic::varg_list& args);

  /// Big first line: what happened.
  std::string m_main_message;
  /// Smaller text under it.
  std::string m_supplemental_message;
  /// A long text that is kept and passed on; the message window doesn't show it.
  std::string m_details_message;
  /// Set by `set_details_message`.
  bool m_has_details = false;
  /// Which buttons appear.
  button_type_t m_button_type = buttons_close;
  /// Which picture appears.
  icon_types_t m_icon_type = icon_error;
  /// A help topic, copied along with the description; the library doesn't read it.
  std::string m_context_topic;
  /// When true, the dialog gets the context-help button of the window frame.
  bool m_context_help = false;
  /// The optional check box; null for none.
  korvat2::sptr_t<i_check_box_definition> m_check_box;
  /// The caller's own picture, for `icon_custom`: a still picture or an animation.
  plaxi1::picture_t m_picture;
};

/// Runs the message as a modal dialog and returns the answer (message_window_t::answer_t).
/// A checked check box suppresses it: 7 at once, no window. A null parent means the main
/// window, or none; so does a parent that is being destroyed (or its window is): a box is
/// never parented to a dying window. GUI thread.
TAMSEL3_API int show_modal(const message_window_t& data, wxWindow* parent);

/// A quick message with a Close button; the texts are shown as they stand. A null parent,
/// or one that is being destroyed, means the main window; without a live one nothing
/// appears and the answer is 6.
TAMSEL3_API int show_msg_box(const std::string& main_message, const std::string& supplemental_message,
                             message_window_t::icon_types_t icon, wxWindow* parent);

}  // namespace tamsel3
