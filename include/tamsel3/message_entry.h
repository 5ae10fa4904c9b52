#pragma once
#include <tamsel3/export.h>
/// The in-place control's entry: a header, then a message with buttons or a gauge with
/// Cancel, and under them the lines that workers say.
#include <tamsel3/event_entry.h>
#include <tamsel3/progress.h>

// The pending lock is a field by value, so its header stays; the toolkit's elements are
// only pointed to and stay out.
#include <boost/thread/mutex.hpp>

#include <string>
#include <vector>

namespace ombrelcfrw7 {
class CButton;
class CCaption;
class CGaugeBoxEx;
class CImage;
class CLineColumn;
class CVertBox;
class CVisualElement;
template <class Box>
class CButtonsFlavor;
template <class Box>
class CMessageBoxTempl;
using CCustomMessageBox = CMessageBoxTempl<CVertBox>;
}  // namespace ombrelcfrw7

namespace plaxi1 {
class picture_t;
}

namespace tamsel3 {

class header_t;
class progress_message_t;

/// Shows `picture` in `image`: an animation runs, a still picture is converted for the
/// toolkit; an empty picture leaves the image empty.
TAMSEL3_API void set_ombrelc_icon(ombrelcfrw7::CImage& image, const plaxi1::picture_t& picture);

/// The one concrete entry. `say` and the signals of its progress object may come from any
/// thread; everything else belongs to the GUI thread.
class TAMSEL3_API message_entry_t : public event_entry_t, public korvat2::subscriber_base_t {
 public:
  /// The entry's type in a saved log: "message_entry_t".
  static const std::string type_name;

  /// A message entry showing `msg`.
  message_entry_t(event_log_t* log, unsigned int tag, const korvat2::intrusive_pointer_t<message_t>& msg);
  /// A prepared progress entry: the header shows, the gauge waits for get_progress.
  message_entry_t(event_log_t* log, unsigned int tag,
                  const korvat2::intrusive_pointer_t<progress_message_t>& msg);

  /// Keeps the line for the GUI thread; posts at most one task at a time. Any thread.
  void say(pelit2::ESeverity severity, const char* text) override;
  ~message_entry_t() override;
  void hide() override;
  korvat2::error_code_t save(korvat2::variant_bag_t& bag) override;
  korvat2::error_code_t update_message(const korvat2::intrusive_pointer_t<message_t>& msg,
                                       const korvat2::signal_t<int>* callback) override;
  std::string get_type() override;
  pelit2::IProgress* get_progress() override;
  void hide_buttons() override;

  /// Builds the visual tree; both constructors call it.
  void create();
  /// Shows the header's caption and picture and adds the connections of `callback`.
  void update_header(header_t* header, const korvat2::signal_t<int>* callback);

  // Handlers of the progress object's signals, the toolkit's and the say signal.
  /// The progress object started: shows the gauge with `title`.
  void start(std::string title);
  /// The progress object moved on by `step` positions of the gauge.
  void increase(int step);
  /// The progress object's status text changed to `text`.
  void message(std::string text);
  /// The progress object was canceled: the Cancel button goes disabled.
  void cancel();
  /// The gauge's Cancel button was pressed: cancels the progress object.
  void cancel_button_pressed(ombrelcfrw7::CButton* button);
  /// A button of the message was pressed: fires the message's signal with `id`.
  void on_button_pressed(int id);
  /// Shows the lines that `say` kept, in one batch, and allows the next post.
  void say_signal_handler();
  /// Appends the text of `element` and its children to `out`, for the clipboard.
  void do_string(ombrelcfrw7::CVisualElement* element, std::string& out);

  /// The entry's tag in the log.
  simple_tag_t m_tag;
  /// The message shown.
  korvat2::intrusive_pointer_t<message_t> m_message;
  /// The toolkit's box of the message.
  ombrelcfrw7::CCustomMessageBox* m_box = nullptr;
  /// The gauge with its Cancel button; null until the progress starts.
  ombrelcfrw7::CGaugeBoxEx* m_gauge = nullptr;
  /// The column of the lines: the kept ones, then the status line.
  ombrelcfrw7::CLineColumn* m_lines_box = nullptr;
  /// The status text of the running progress.
  ombrelcfrw7::CCaption* m_transient_caption = nullptr;
  /// The message's caption.
  ombrelcfrw7::CCaption* m_message_caption = nullptr;
  /// The message's buttons.
  ombrelcfrw7::CButtonsFlavor<ombrelcfrw7::CVertBox>* m_buttons = nullptr;
  /// The progress object handed to the worker.
  progress_impl_t m_progress;
  /// Posted to the GUI thread when lines wait.
  korvat2::signal_t<> m_say_signal;
  /// Lines said and not yet shown.
  std::vector<messenger_entry_t> m_pending;
  /// Guards `m_pending` and `m_pending_posted`; `say` takes it on any thread.
  boost::mutex m_pending_lock;
  /// Whether a task to show the pending lines is on its way.
  bool m_pending_posted = false;

 private:
  void connect_progress();
  void disconnect_progress();
};

}  // namespace tamsel3
