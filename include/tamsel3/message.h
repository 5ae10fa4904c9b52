#pragma once
#include <tamsel3/export.h>
/// The value objects that a client hands to the in-place control: a header, a message with
/// buttons, its interactive and standard forms, and a progress message. All are counted
/// objects, passed as korvat2::intrusive_pointer_t, built on one thread and read on the GUI
/// thread once handed over.
#include <korvat2/error.h>
#include <korvat2/intrusive_pointer.h>
#include <korvat2/variant_bag.h>
#include <pelit2/severity.h>
#include <plaxi1/picture.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tamsel3 {

/// A picture (still, animated or empty) and a caption.
class TAMSEL3_API header_t : public korvat2::intrusive_pointer_impl_t {
 public:
  header_t() = default;
  /// A header with `caption` and `picture`.
  header_t(const std::string& caption, const plaxi1::picture_t& picture);
  ~header_t() override;

  /// The picture beside the caption; may be empty.
  plaxi1::picture_t m_picture;
  /// The caption, already translated.
  std::string m_caption;
};

/// A button of a message.
struct TAMSEL3_API message_button_t {
  /// What the control reports when the button is pressed; 0 means no button.
  int m_id = 0;
  /// The label, already translated.
  std::string m_name;
  /// Marks the default button.
  bool m_default = false;
};

/// A header with a text and buttons in display order.
class TAMSEL3_API message_t : public header_t {
 public:
  message_t() = default;
  /// A message without buttons.
  message_t(const std::string& caption, const std::string& text, const plaxi1::picture_t& picture);
  ~message_t() override;

  /// The button at `index`; beyond the end a shared empty button (id 0, no name, not default).
  const message_button_t& get_button(unsigned int index) const;

  /// Puts "msg", "cap" and, for a non-empty still picture, "img" (XPM text). Buttons aren't
  /// saved. Always succeeds.
  korvat2::error_code_t save(korvat2::variant_bag_t& bag) const;
  /// Takes what of "msg", "cap" and "img" is there; the rest stays as it was. A "msg" or
  /// "cap" that isn't text is reported and read as empty text. Always succeeds.
  korvat2::error_code_t load(const korvat2::variant_bag_t& bag);

  /// The message's text, already translated.
  std::string m_text;
  /// The buttons, in display order.
  std::vector<message_button_t> m_buttons;
};

/// A message with buttons of the client's own and a default among them.
class TAMSEL3_API interactive_message_t : public message_t {
 public:
  /// The default index when there is no default button.
  static constexpr std::uint32_t no_default = 0xFFFFFFFFu;

  interactive_message_t() = default;
  /// A message without buttons.
  interactive_message_t(const std::string& caption, const std::string& text,
                        const plaxi1::picture_t& picture = plaxi1::picture_t());

  /// Appends a button that isn't default; the first button becomes the default while there
  /// is none.
  void add_button(int id, const std::string& name);
  /// Renames every button with `id`.
  void set_button_name(int id, const std::string& name);
  /// Removes all buttons, and with them the default.
  void clear_buttons();
  /// The id of the default button, or -1 when there is none.
  int get_default_button() const;
  /// Makes the first button with `id` the default; false (and no change) when there is none.
  bool set_default_button(int id);

  /// Position of the default button in m_buttons, or no_default.
  std::uint32_t m_default_index = no_default;
};

/// A message with one of the standard button sets and no default button.
class TAMSEL3_API standard_message_t : public message_t {
 public:
  /// The button sets of set_buttons; any other value gives Close alone.
  enum standard_buttons_t : int {
    buttons_close = 0,            ///< close
    buttons_yes_no = 1,           ///< yes, no
    buttons_yes_no_retry = 2,     ///< yes, no, retry
    buttons_ok_cancel = 3,        ///< ok, cancel
    buttons_ok_cancel_retry = 4,  ///< ok, cancel, retry
    buttons_close_retry = 5,      ///< close, retry
  };
  /// The ids that standard buttons report; 6 isn't used, 0 means no button.
  enum button_id_t : int {
    button_close = 1,
    button_yes = 2,
    button_no = 3,
    button_ok = 4,
    button_cancel = 5,
    button_retry = 7,
  };
  /// The pictures of get_icon_by_type.
  enum icon_types_t : int {
    icon_error = 0,     ///< "error24"
    icon_warning = 1,   ///< "warning24"
    icon_ok = 2,        ///< "checkmark24"
    icon_info = 3,      ///< "info24"
    icon_progress = 4,  ///< the animation "progress"
  };

  /// Without buttons until set_buttons.
  standard_message_t() = default;
  /// With the buttons of `buttons`.
  standard_message_t(const std::string& caption, const std::string& text,
                     const plaxi1::picture_t& picture = plaxi1::picture_t(),
                     standard_buttons_t buttons = buttons_close);

  /// Keeps the kind and replaces the buttons by its set, labelled from the catalog, none default.
  void set_buttons(standard_buttons_t buttons);

  /// The picture of `type` from the resource archive; empty without the archive. A value
  /// above 4 is reported and gives "error24". GUI thread.
  static plaxi1::picture_t get_icon_by_type(icon_types_t type);

  /// The set of the last `set_buttons`.
  standard_buttons_t m_buttons_kind = buttons_close;
};

/// A header of a running task with a gauge.
class TAMSEL3_API progress_message_t : public header_t {
 public:
  progress_message_t() = default;
  /// A header with `caption` and `picture`, with a Cancel button when `can_cancel`.
  progress_message_t(const std::string& caption, const plaxi1::picture_t& picture = plaxi1::picture_t(),
                     bool can_cancel = false);
  ~progress_message_t() override;

  /// Whether the gauge's Cancel button is shown.
  bool m_can_cancel = false;
};

/// Only a name for the signature of the control's add_custom; nothing of it is used.
class TAMSEL3_API custom_message_t : public header_t {};

}  // namespace tamsel3
