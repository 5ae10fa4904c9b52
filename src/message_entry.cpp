#include <tamsel3/event_log.h>
#include <tamsel3/message.h>
#include <tamsel3/message_entry.h>
#include <tamsel3/text_helpers.h>

#include "picture_names_p.h"

#include <a11y/accessible.h>
#include <ombrelc/ombrelc.h>
#include <plaxi1/tasks.h>
#include <zandor/debug.h>

#include <wx/datetime.h>

namespace tamsel3 {

namespace {

using ombrelc7::size;

// The gauge's scale: the position divided by this is a percentage.
constexpr int positions_per_percent = progress_impl_t::scale / 100;

// The entry's kept lines, as its column of lines reads them.
class kept_lines_source_t : public ombrelcfrw7::ILineSource {
 public:
  explicit kept_lines_source_t(const kept_lines_t& lines) : m_lines(lines) {}
  std::size_t GetLineCount() const override { return m_lines.size(); }
  std::string_view GetLineText(std::size_t index) const override { return m_lines.text(index); }
  int GetLinePicture(std::size_t index) const override { return m_lines.picture(index); }
  // Screen readers speak a new error at once, other lines when they are idle.
  a11y::politeness_t GetLineLive(std::size_t index) const override {
    const auto urgent =
        static_cast<unsigned>(pelit2::severity_error) | static_cast<unsigned>(pelit2::severity_critical);
    return (static_cast<unsigned>(m_lines.severity(index)) & urgent) != 0 ? a11y::politeness_t::assertive
                                                                          : a11y::politeness_t::polite;
  }

 private:
  const kept_lines_t& m_lines;
};

void append_line(std::string& out, std::string_view text) {
  out += "\n    ";
  out += text;
}

}  // namespace

const std::string message_entry_t::type_name = "message_entry_t";

void set_ombrelc_icon(ombrelcfrw7::CImage& image, const plaxi1::picture_t& picture) {
  image.Clear();
  // A message's picture is the caller's own: it tells no severity, only what it is.
  image.SetAccessibleName(picture_name(picture.is_animation() ? "progress" : "message"));
  if (picture.is_animation()) {
    image.SetAnimation(ombrelc7::CreateAnimation(picture.get_animation(), picture.get_animation_2x()));
    image.StartAnimation();
    return;
  }
  if (picture.is_image()) {
    ombrelc7::ombrelc_ptr<ombrelc7::IRasterPicture> raster =
        ombrelc7::GetCurrentSystem()->CreateRasterPicture(size<int>(1, 1));
    ombrelc7::Bitmap2RasterPicture(picture.get_image().getBitmap(true), raster.get());
    image.SetRasterPicture(raster.get());
  }
}

message_entry_t::message_entry_t(event_log_t* log, unsigned int tag,
                                 const korvat2::intrusive_pointer_t<message_t>& msg)
    : event_entry_t(log), m_message(msg) {
  m_tag.m_tag = tag;
  create();
  update_message(msg, nullptr);
  m_say_signal.connect(this, &message_entry_t::say_signal_handler);
}

message_entry_t::message_entry_t(event_log_t* log, unsigned int tag,
                                 const korvat2::intrusive_pointer_t<progress_message_t>& msg)
    : event_entry_t(log) {
  m_tag.m_tag = tag;
  create();
  m_gauge->GetCancelButton()->SetVisible(msg && msg->m_can_cancel);
  update_header(msg.get(), nullptr);
  m_say_signal.connect(this, &message_entry_t::say_signal_handler);
}

message_entry_t::~message_entry_t() {
  if (m_box) {
    m_box->ReParent(nullptr, true);
    delete m_box;
  }
}

void message_entry_t::create() {
  m_box = new ombrelcfrw7::CCustomMessageBox(nullptr, size<int>(0, 0), ombrelc7::alFill);
  m_box->AsStringSignal().connect(this, &message_entry_t::do_string);
  if (m_log) {
    m_box->ReParent(m_log, false);
  }
  auto* content = new ombrelcfrw7::CVertBox(m_box, size<int>(10, 10), ombrelc7::alStretch);

  m_message_caption = new ombrelcfrw7::CCaption(content, size<int>(0, 0), ombrelc7::alFill);
  m_message_caption->SetTextAlign(ombrelcfrw7::CCaption::taLeft | ombrelcfrw7::CCaption::taVCenter);
  m_message_caption->SetAutoSize(true);
  m_message_caption->AdjustHeight(true);
  m_message_caption->SetWordWrap(true);
  m_message_caption->SetVisible(false);
  // The message that ends a run, or replaces it, is spoken when it shows.
  m_message_caption->SetLive(a11y::politeness_t::polite);

  m_lines_box = new ombrelcfrw7::CLineColumn(content, size<int>(0, 0), ombrelc7::alFill,
                                             std::make_unique<kept_lines_source_t>(m_messages));
  m_lines_box->SetAccessibleName(translate_message("a11y.log.lines", {}));

  m_gauge = new ombrelcfrw7::CGaugeBoxEx(content, size<int>(0, 0), ombrelc7::alFill);
  m_gauge->SetMax(static_cast<double>(progress_impl_t::scale));
  m_gauge->CancelSignal().connect(this, &message_entry_t::cancel_button_pressed);
  ombrelcfrw7::CButton* cancel_button = m_gauge->GetCancelButton();
  cancel_button->SetCaption(translate_message("btn.cancel", {}));
  cancel_button->SetAutoSize(true);
  cancel_button->AdjustHeight(true);
  m_gauge->SetVisible(false);

  m_buttons =
      new ombrelcfrw7::CButtonsFlavor<ombrelcfrw7::CVertBox>(content, size<int>(0, 0), ombrelc7::alFill);
  m_buttons->ButtonSignal().connect(this, &message_entry_t::on_button_pressed);
  m_buttons->GetButtonSet()->SetVisible(false);

  m_box->ForceRearrange();
}

void message_entry_t::update_header(header_t* header, const korvat2::signal_t<int>* callback) {
  ZANDOR_ASSERT(header);
  if (!header) {
    return;
  }
  m_box->GetCaption()->SetCaption(header->m_caption);
  if (!header->m_picture.is_empty()) {
    set_ombrelc_icon(*m_box->GetImage(), header->m_picture);
  }
  if (callback) {
    m_tag.m_callback.copy_connections_from(*callback);
  }
}

korvat2::error_code_t message_entry_t::update_message(const korvat2::intrusive_pointer_t<message_t>& msg,
                                                      const korvat2::signal_t<int>* callback) {
  if (!m_message) {
    disconnect_progress();
  }
  m_message = msg;
  update_header(m_message.get(), callback);
  const std::string date(wxDateTime::Now().Format("%c").utf8_str());
  m_message_caption->UseHTML(true);
  m_message_caption->SetCaption("<i>" + date + " </i> " + (m_message ? m_message->m_text : std::string()));
  m_message_caption->SetVisible(true);
  m_gauge->SetVisible(false);
  ombrelcfrw7::CButtonSet* set = m_buttons->GetButtonSet();
  set->ClearButtons();
  if (!m_message || m_message->m_buttons.empty()) {
    set->SetVisible(false);
  } else {
    for (const message_button_t& button : m_message->m_buttons) {
      set->AddButton(button.m_name, button.m_id);
    }
    set->SetVisible(true);
  }
  if (m_transient_caption) {
    m_transient_caption->SetVisible(false);
    m_transient_caption = nullptr;
  }
  return korvat2::error::Success;
}

pelit2::IProgress* message_entry_t::get_progress() {
  m_message.reset();
  if (m_buttons) {
    m_buttons->GetButtonSet()->SetVisible(false);
    m_buttons->GetButtonSet()->ClearButtons();
  }
  if (m_gauge) {
    m_gauge->SetVisible(true);
  }
  connect_progress();
  return &m_progress;
}

void message_entry_t::connect_progress() {
  m_progress.m_start_signal.connect(this, &message_entry_t::start);
  m_progress.m_progress_signal.connect(this, &message_entry_t::increase);
  m_progress.m_message_signal.connect(this, &message_entry_t::message);
  m_progress.m_cancel_signal.connect(this, &message_entry_t::cancel);
}

void message_entry_t::disconnect_progress() {
  m_progress.m_start_signal.disconnect(this, &message_entry_t::start);
  m_progress.m_progress_signal.disconnect(this, &message_entry_t::increase);
  m_progress.m_message_signal.disconnect(this, &message_entry_t::message);
  m_progress.m_cancel_signal.disconnect(this, &message_entry_t::cancel);
}

void message_entry_t::say(pelit2::ESeverity severity, const char* text) {
  boost::mutex::scoped_lock lock(m_pending_lock);
  m_pending.push_back(messenger_entry_t{severity, text ? text : ""});
  if (m_pending_posted) {
    return;
  }
  plaxi1::tasks::PostSignal(m_say_signal);
  m_pending_posted = true;
}

void message_entry_t::say_signal_handler() {
  std::vector<messenger_entry_t> lines;
  {
    boost::mutex::scoped_lock lock(m_pending_lock);
    lines.swap(m_pending);
    m_pending_posted = false;
  }
  ombrelc7::ISysWindow* window = m_log ? m_log->GetWindow() : nullptr;
  if (window) {
    window->LockUpdate(true);
    window->SuspendLayout(true);
  }
  for (const messenger_entry_t& line : lines) {
    say_impl(m_lines_box, &m_transient_caption, line.m_severity, line.m_text.c_str());
  }
  if (window) {
    window->SuspendLayout(false);
    window->LockUpdate(false);
  }
}

// The public signature takes it by value; a host compiles against it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void message_entry_t::message(std::string text) {
  if (!m_message) {
    say_impl(m_lines_box, &m_transient_caption, pelit2::severity_transient, text.c_str());
  }
}

// The public signature takes it by value; a host compiles against it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void message_entry_t::start(std::string title) {
  if (!m_message) {
    m_box->GetCaption()->SetCaption(title);
  }
}

void message_entry_t::increase(int step) { m_gauge->Increase(static_cast<double>(step)); }

void message_entry_t::cancel() { m_tag.m_callback(static_cast<int>(standard_message_t::button_cancel)); }

void message_entry_t::cancel_button_pressed(ombrelcfrw7::CButton* button) {
  if (button) {
    button->Enable(false);
  }
  m_progress.cancel();
}

void message_entry_t::on_button_pressed(int id) {
  m_buttons->GetButtonSet()->SetVisible(false);
  m_tag.m_callback(id);
}

void message_entry_t::hide() {
  m_box->SetVisible(false);
  if (m_gauge) {
    m_gauge->SetVisible(false);
  }
}

void message_entry_t::hide_buttons() { m_buttons->GetButtonSet()->SetVisible(false); }

std::string message_entry_t::get_type() { return type_name; }

korvat2::error_code_t message_entry_t::save(korvat2::variant_bag_t& bag) {
  if (m_message) {
    const korvat2::error_code_t saved = m_message->save(bag);
    if (saved.failed()) {
      // Reported in the words of the call, with the code that it gave.
      korvat2::error::checked_failure("m_msg->save(bag).succeeded()",
                                      saved.as_string(korvat2::error_code_t::with_value).c_str(), __FILE__,
                                      __LINE__, __PRETTY_FUNCTION__);
    }
  }
  return event_entry_t::save(bag);
}

void message_entry_t::do_string(ombrelcfrw7::CVisualElement* /*element*/, std::string& out) {
  out = m_box->GetCaption()->AsString();
  const std::string message_text = m_message_caption->AsString();
  if (!message_text.empty()) {
    append_line(out, message_text);
  }
  for (std::size_t line = 0; line < m_messages.size(); ++line) {
    append_line(out, m_messages.text(line));
  }
  if (m_transient_caption) {
    append_line(out, m_transient_caption->AsString());
  }
  if (m_message) {
    return;
  }
  const int percent = static_cast<int>(m_gauge->GetPos()) / positions_per_percent;
  append_line(out, translate_message("inplace_ctrl.progressed",
                                     ZANDOR_2_16::generic::varg_list(ZANDOR_2_16::generic::argument(
                                         "cur_progress", ZANDOR_2_16::types::variant(percent)))));
}

}  // namespace tamsel3
