#pragma once
/// The in-place message control: a panel with a scrolling column of message boxes and
/// progress gauges that a tool shows instead of modal dialogs.
#include <tamsel3/progress.h>

#include <korvat2/error.h>
#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>
#include <korvat2/variant_bag.h>
#include <ombrelc7/picture.h>
#include <pelit2/severity.h>

#include <wx/menu.h>
#include <wx/panel.h>

#include <map>

namespace ombrelcfrw7 {
class CScrollContainer;
class CVisualElement;
template <class T>
class CBaseControlTmpl;
}  // namespace ombrelcfrw7

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
class inplace_ctrl_t : public wxPanel {
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

  /// The implementation; for tests and hosts that look at what the control shows.
  inplace_ctrl_impl_t* get_impl() const { return m_impl; }
  /// The context menu, with its one copy entry.
  wxMenu& get_menu() { return m_menu; }

 private:
  inplace_ctrl_impl_t* m_impl;
  wxMenu m_menu;
};

/// The work behind inplace_ctrl_t, on the visual-element toolkit. GUI thread.
class inplace_ctrl_impl_t : public korvat2::subscriber_base_t {
 public:
  inplace_ctrl_impl_t(inplace_ctrl_t* owner, bool show_debug);
  ~inplace_ctrl_impl_t() override;

  unsigned int add_message(const korvat2::intrusive_pointer_t<message_t>& msg,
                           const korvat2::signal_t<int>& callback);
  unsigned int add_progress(const korvat2::intrusive_pointer_t<progress_message_t>& msg,
                            const korvat2::signal_t<int>& callback);
  unsigned int add_custom(const korvat2::intrusive_pointer_t<custom_message_t>& msg);
  korvat2::error_code_t update_message(unsigned int tag, const korvat2::intrusive_pointer_t<message_t>& msg,
                                       const korvat2::signal_t<int>& callback);
  korvat2::error_code_t erase(unsigned int tag);
  korvat2::error_code_t clear();
  pelit2::IMessenger* get_messenger(unsigned int tag);
  pelit2::IProgress* get_progress(unsigned int tag);
  bool has_severity(unsigned int tag, pelit2::ESeverity mask);
  bool has_changes();
  korvat2::error_code_t save(korvat2::variant_bag_t& bag);
  korvat2::error_code_t load(const korvat2::variant_bag_t& bag);
  void handle_copy();

  /// The log's context menu request: shows the owner's menu at the point.
  void on_context_menu(ombrelcfrw7::CVisualElement* element, int x, int y);

  /// The log; for tests and hosts that look at what it shows.
  event_log_t* get_log() const { return m_log; }
  /// The entry of `tag`, or null; for tests and diagnostics.
  event_entry_t* get_entry(unsigned int tag) const;

 private:
  unsigned int add_entry(message_entry_t* entry, const korvat2::signal_t<int>& callback);
  void hide_all_buttons();
  void apply_background();
  int measure_initial_width() const;

  inplace_ctrl_t* m_owner;
  ombrelc7::ombrelc_ptr<ombrelc7::IImageList> m_image_list;
  ombrelcfrw7::CBaseControlTmpl<ombrelcfrw7::CScrollContainer>* m_control;
  event_log_t* m_log;
  messenger_proxy_t m_messenger_proxy;
  progress_proxy_t m_progress_proxy;
  std::map<unsigned int, korvat2::intrusive_pointer_t<event_entry_t>> m_entries;
  unsigned int m_next_tag = 0;
};

}  // namespace tamsel3
