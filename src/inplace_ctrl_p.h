#pragma once
// The implementation behind inplace_ctrl_t; only the library's sources and its tests see it.
#include <tamsel3/inplace_ctrl.h>

#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>
#include <ombrelc7/picture.h>

#include <map>

namespace ombrelcfrw7 {
class CScrollContainer;
class CVisualElement;
template <class T>
class CBaseControlTmpl;
}  // namespace ombrelcfrw7

namespace tamsel3 {

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
