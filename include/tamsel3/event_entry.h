#pragma once
#include <tamsel3/export.h>
/// One item of the in-place control's log with its said lines: the abstract entry, the
/// line it keeps, and the tag that an entry carries.
#include <korvat2/error.h>
#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>
#include <korvat2/variant_bag.h>
#include <pelit2/messenger.h>
#include <pelit2/progress.h>
#include <pelit2/severity.h>
#include <tamsel3/kept_lines.h>

#include <string>
#include <vector>

namespace ombrelcfrw7 {
class CCaption;
class CVisualElement;
}  // namespace ombrelcfrw7

namespace tamsel3 {

class event_log_t;
class message_t;

/// An entry's key in the control and the callback of its buttons.
struct TAMSEL3_API simple_tag_t {
  /// The entry's key in the control.
  unsigned int m_tag = 0;
  /// Fired with the id of a pressed button.
  korvat2::signal_t<int> m_callback;
};

/// The base of the log's entries: keeps the said lines, shows a line, and saves and loads
/// them. Counted; built and shown on the GUI thread.
class TAMSEL3_API event_entry_t : public pelit2::IMessenger, public korvat2::intrusive_pointer_impl_t {
 public:
  /// `log` may be null; the entry then shows no debug lines.
  explicit event_entry_t(event_log_t* log);

  /// Keeps the line without showing it; for use on one thread.
  void say(pelit2::ESeverity severity, const char* text) override;
  ~event_entry_t() override;
  /// Takes the entry off the screen.
  virtual void hide() = 0;
  /// Adds one sub-bag "message" with "msg" and "severity" per kept line. Always succeeds.
  virtual korvat2::error_code_t save(korvat2::variant_bag_t& bag);
  /// Shows `msg`, adding the connections of `callback` (if any) to the button callback.
  virtual korvat2::error_code_t update_message(const korvat2::intrusive_pointer_t<message_t>& msg,
                                               const korvat2::signal_t<int>* callback) = 0;
  /// The concrete entry's type name.
  virtual std::string get_type() = 0;
  /// Turns the entry into a gauge and gives its progress object.
  virtual pelit2::IProgress* get_progress() = 0;
  /// Hides the buttons, freezing the entry's interaction.
  virtual void hide_buttons() = 0;
  /// Shows a line under `parent`. A transient line (bit 1) goes into the caption of
  /// `caption_slot`, made on first use and reused by the next line; other lines are kept.
  /// A debug line (bit 16) is dropped unless debug lines are shown. GUI thread.
  virtual void say_impl(ombrelcfrw7::CVisualElement* parent, ombrelcfrw7::CCaption** caption_slot,
                        pelit2::ESeverity severity, const char* text);

  /// Says every line saved in `bag` through `messenger`, in order. Stops at the first
  /// line without a text "msg" or an int "severity", with the lines before it said.
  static korvat2::error_code_t load(const korvat2::variant_bag_t& bag, pelit2::IMessenger* messenger);

  /// Whether a kept line has a bit of `mask`.
  bool has_severity(pelit2::ESeverity mask) const;

  /// The log that shows the entry; may be null.
  event_log_t* m_log;
  /// The kept lines, in order.
  kept_lines_t m_messages;
  /// Whether debug lines are shown, copied from the log when built.
  bool m_show_debug;
};

}  // namespace tamsel3
