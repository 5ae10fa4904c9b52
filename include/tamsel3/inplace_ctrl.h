#pragma once
#include <tamsel3/export.h>
/// The in-place message control: a panel with a scrolling column of message boxes and
/// progress gauges that a tool shows instead of modal dialogs.
#include <tamsel3/progress.h>

#include <korvat2/error.h>
#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>
#include <korvat2/variant_bag.h>
#include <pelit2/severity.h>

#include <wx/menu.h>
#include <wx/panel.h>

namespace tamsel3 {

class custom_message_t;
class event_entry_t;
class event_log_t;
class inplace_ctrl_impl_t;
class message_entry_t;
class message_t;
class progress_message_t;

/// The panel. Every member is for the GUI thread; workers use only the messenger and
/// progress interfaces that it hands out, and must be stopped before the entry they
/// report to is erased or cleared.
class TAMSEL3_API inplace_ctrl_t : public wxPanel {
 public:
  /// `show_debug` shows the lines of debug severity.
  inplace_ctrl_t(wxWindow* parent, bool show_debug);
  ~inplace_ctrl_t() override;

  /// Adds a message and returns its tag; earlier items lose their buttons. The connections
  /// of `callback` are copied: it receives the id of a pressed button.
  unsigned int add_message(const korvat2::intrusive_pointer_t<message_t>& msg,
                           const korvat2::signal_t<int>& callback);
  /// Adds a progress item; its gauge shows once get_progress is called for its tag.
  unsigned int add_progress(const korvat2::intrusive_pointer_t<progress_message_t>& msg,
                            const korvat2::signal_t<int>& callback);
  /// Not supported: reports it, marks the control changed and returns 0.
  unsigned int add_custom(const korvat2::intrusive_pointer_t<custom_message_t>& msg);
  /// Replaces the item's message (a gauge becomes a message). An unknown tag is reported
  /// and gives kv2::error::False, which counts as succeeded.
  korvat2::error_code_t update_message(unsigned int tag, const korvat2::intrusive_pointer_t<message_t>& msg,
                                       const korvat2::signal_t<int>& callback);
  /// Removes an item; an unknown tag is reported and gives kv2::error::False.
  korvat2::error_code_t erase(unsigned int tag);
  /// Removes every item; tags go on counting.
  korvat2::error_code_t clear();
  /// The control's one messenger, aimed at the item; null for an unknown tag.
  pelit2::IMessenger* get_messenger(unsigned int tag);
  /// The control's one progress interface, aimed at the item, which becomes a gauge; null
  /// for an unknown tag.
  pelit2::IProgress* get_progress(unsigned int tag);
  /// Whether a kept line of the item has a bit of `mask`.
  bool has_severity(unsigned int tag, pelit2::ESeverity mask);
  /// Whether the content changed since the last save or load.
  bool has_changes();
  /// Writes one "message_entry_t" bag per item; clears has_changes.
  korvat2::error_code_t save(korvat2::variant_bag_t& bag);
  /// Adds the items of `bag` behind the present ones; their lines arrive through the event
  /// loop. Clears has_changes.
  korvat2::error_code_t load(const korvat2::variant_bag_t& bag);

  /// Shows the context menu at `point` (client coordinates).
  void pupup_menu(wxPoint point);
  /// Copies the whole content as text to the clipboard.
  void handle_copy(wxCommandEvent& event);

  /// The id of the menu's copy command.
  static constexpr int copy_command_id = 5032;

  friend struct inplace_ctrl_test_access_t;

 private:
  inplace_ctrl_impl_t* m_impl;
  wxMenu m_menu;
};

}  // namespace tamsel3
