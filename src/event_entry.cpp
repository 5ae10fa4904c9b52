#include <tamsel3/event_entry.h>
#include <tamsel3/event_log.h>

#include <a11y/accessible.h>
#include <ombrelc/ombrelc.h>

namespace tamsel3 {

namespace {

const char* const MESSAGE_NAME = "message";
const char* const MSG_NAME = "msg";
const char* const SEVERITY_NAME = "severity";

namespace kv2 = korvat2;

bool has_bit(pelit2::ESeverity severity, unsigned bit) {
  return (static_cast<unsigned>(severity) & bit) != 0;
}

}  // namespace

event_entry_t::event_entry_t(event_log_t* log) : m_log(log), m_show_debug(log ? log->m_show_debug : false) {}

event_entry_t::~event_entry_t() = default;

void event_entry_t::say(pelit2::ESeverity severity, const char* text) {
  m_messages.add(severity, text ? text : "");
}

korvat2::error_code_t event_entry_t::save(korvat2::variant_bag_t& bag) {
  for (std::size_t line = 0; line < m_messages.size(); ++line) {
    korvat2::variant_bag_t entry;
    entry.put(MSG_NAME, std::string(m_messages.text(line)));
    entry.put(SEVERITY_NAME, static_cast<int>(m_messages.severity(line)));
    bag.add_variant_bag(MESSAGE_NAME, entry);
  }
  return korvat2::error::Success;
}

void event_entry_t::say_impl(ombrelcfrw7::CVisualElement* parent, ombrelcfrw7::CCaption** caption_slot,
                             pelit2::ESeverity severity, const char* text) {
  if (has_bit(severity, pelit2::severity_debug) && !m_show_debug) {
    return;
  }
  if (m_log) {
    m_log->m_has_changes = true;
  }
  const bool transient = has_bit(severity, pelit2::severity_transient);
  const int picture = m_log ? m_log->get_image_for(severity) : -1;
  ombrelcfrw7::CCaption* caption = *caption_slot;
  if (!transient) {
    *caption_slot = nullptr;
    m_messages.add(severity, text ? text : "", picture);
    if (auto* column = dynamic_cast<ombrelcfrw7::CLineColumn*>(parent)) {
      // The column draws kept lines itself; the status line that this one replaces goes.
      delete caption;
      column->LinesAdded();
      return;
    }
  }
  if (!caption) {
    caption = new ombrelcfrw7::CCaption(nullptr, ombrelc7::size<int>(0, 0), ombrelc7::alFill);
    caption->ReParent(parent, true);
  }
  caption->SetAutoSize(true);
  caption->AdjustHeight(!transient);
  caption->SetCaption(text ? text : "");
  caption->SetTextAlign(ombrelcfrw7::CCaption::taLeft | ombrelcfrw7::CCaption::taVCenter);
  caption->SetWordWrap(true);
  caption->SetImageIndex(picture);
  // Screen readers speak new lines: errors at once, others when the reader is idle; the
  // status line changes too often to be spoken.
  const bool urgent =
      has_bit(severity, pelit2::severity_error) || has_bit(severity, pelit2::severity_critical);
  caption->SetLive(transient ? a11y::politeness_t::off
                             : (urgent ? a11y::politeness_t::assertive : a11y::politeness_t::polite));
  if (transient) {
    *caption_slot = caption;
  }
}

// The checks stay in this one function, so that each report names the reader that failed;
// they are worded as the reports name them.
kv2::error_code_t event_entry_t::load(const kv2::variant_bag_t& bag, pelit2::IMessenger* messenger) {
  kv2::error_code_t result;
  if (!messenger) {
    result.raise(kv2::error::IsNotValidParameter, "pelit", __FILE__, __LINE__, __PRETTY_FUNCTION__);
    return result;
  }
  for (auto line = bag.begin_by_name<kv2::variant_bag_t>(MESSAGE_NAME); !line.at_end(); line.next()) {
    const kv2::variant_bag_t& entry = line.get_value();
    std::string text;
    {
      KV2_CHECK_RAISE(result, kv2::error::IsNotValidValue, entry.has<kv2::variant_t>(MSG_NAME));
      if (result.failed()) {
        return result;
      }
      const kv2::variant_t& value = *entry.get<kv2::variant_t>(MSG_NAME);
      KV2_CHECK_RAISE(result, kv2::error::IsNotValidValue, value.can_get<const zandor2::uchar_t*>());
      if (result.failed()) {
        return result;
      }
      text = value.get<std::string>();
    }
    KV2_CHECK_RAISE(result, kv2::error::IsNotValidValue, entry.has<kv2::variant_t>(SEVERITY_NAME));
    if (result.failed()) {
      return result;
    }
    const kv2::variant_t& value = *entry.get<kv2::variant_t>(SEVERITY_NAME);
    KV2_CHECK_RAISE(result, kv2::error::IsNotValidValue, value.can_get<int>());
    if (result.failed()) {
      return result;
    }
    messenger->say(static_cast<pelit2::ESeverity>(value.get<int>()), text.c_str());
  }
  return result;
}

bool event_entry_t::has_severity(pelit2::ESeverity mask) const {
  for (std::size_t line = 0; line < m_messages.size(); ++line) {
    if ((static_cast<unsigned>(m_messages.severity(line)) & static_cast<unsigned>(mask)) != 0) {
      return true;
    }
  }
  return false;
}

}  // namespace tamsel3
