#include "inplace_ctrl_p.h"

#include <tamsel3/event_log.h>
#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>
#include <tamsel3/message_entry.h>

#include <ombrelc/ombrelc.h>
#include <plaxi1/ui_settings.h>
#include <zandor/debug.h>

#include <wx/dcclient.h>

namespace tamsel3 {

namespace {

using ombrelc7::size;

// The width that the log asks for: 80 characters of a mixed-case sample, so that a line
// of ordinary text fits before it wraps.
wxString initial_width_sample() {
  wxString sample;
  for (int position = 0; position < 80; ++position) {
    sample += position % 3 == 0 ? 'X' : 'x';
  }
  return sample;
}

void set_background(ombrelcfrw7::CVisualElement* element, const wxColour& colour) {
  element->SetBkColor(colour);
  for (ombrelcfrw7::CVisualElement* child : element->GetChildren()) {
    set_background(child, colour);
  }
}

}  // namespace

// ---------------------------------------------------------------------------------------

inplace_ctrl_t::inplace_ctrl_t(wxWindow* parent, bool show_debug)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxNO_BORDER),
      m_impl(nullptr) {
  m_impl = new inplace_ctrl_impl_t(this, show_debug);
  m_menu.Append(copy_command_id, "Copy to clipboard", wxString());
  Connect(copy_command_id, wxEVT_COMMAND_MENU_SELECTED, wxCommandEventHandler(inplace_ctrl_t::handle_copy));
  // wx announces a window's end before its destructor runs, and the toolkit takes its
  // element tree down then: the entries must leave the tree first. Bound after the
  // toolkit's own handler, so called before it.
  Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent& event) {
    if (event.GetEventObject() == this) {
      delete m_impl;
      m_impl = nullptr;
    }
    event.Skip();
  });
}

inplace_ctrl_t::~inplace_ctrl_t() {
  // A panel deleted directly or going out of scope: wx would announce the end only from
  // its own destructor, after this one. Announce it now, while the panel is whole; the
  // handler above takes the entries down.
  SendDestroyEvent();
  delete m_impl;
  m_impl = nullptr;
}

unsigned int inplace_ctrl_t::add_message(const korvat2::intrusive_pointer_t<message_t>& msg,
                                         const korvat2::signal_t<int>& callback) {
  return m_impl->add_message(msg, callback);
}

unsigned int inplace_ctrl_t::add_progress(const korvat2::intrusive_pointer_t<progress_message_t>& msg,
                                          const korvat2::signal_t<int>& callback) {
  return m_impl->add_progress(msg, callback);
}

unsigned int inplace_ctrl_t::add_custom(const korvat2::intrusive_pointer_t<custom_message_t>& msg) {
  return m_impl->add_custom(msg);
}

korvat2::error_code_t inplace_ctrl_t::update_message(unsigned int tag,
                                                     const korvat2::intrusive_pointer_t<message_t>& msg,
                                                     const korvat2::signal_t<int>& callback) {
  return m_impl->update_message(tag, msg, callback);
}

korvat2::error_code_t inplace_ctrl_t::erase(unsigned int tag) { return m_impl->erase(tag); }

korvat2::error_code_t inplace_ctrl_t::clear() { return m_impl->clear(); }

pelit2::IMessenger* inplace_ctrl_t::get_messenger(unsigned int tag) { return m_impl->get_messenger(tag); }

pelit2::IProgress* inplace_ctrl_t::get_progress(unsigned int tag) { return m_impl->get_progress(tag); }

bool inplace_ctrl_t::has_severity(unsigned int tag, pelit2::ESeverity mask) {
  return m_impl->has_severity(tag, mask);
}

bool inplace_ctrl_t::has_changes() { return m_impl->has_changes(); }

korvat2::error_code_t inplace_ctrl_t::save(korvat2::variant_bag_t& bag) { return m_impl->save(bag); }

korvat2::error_code_t inplace_ctrl_t::load(const korvat2::variant_bag_t& bag) { return m_impl->load(bag); }

void inplace_ctrl_t::pupup_menu(wxPoint point) { PopupMenu(&m_menu, point); }

void inplace_ctrl_t::handle_copy(wxCommandEvent& /*event*/) { m_impl->handle_copy(); }

// ---------------------------------------------------------------------------------------

inplace_ctrl_impl_t::inplace_ctrl_impl_t(inplace_ctrl_t* owner, bool show_debug)
    : m_owner(owner), m_control(nullptr), m_log(nullptr) {
  ombrelc7::ISysWindow* window = ombrelc7::CreateWrapperForWx(owner);
  m_control = new ombrelcfrw7::CBaseControlTmpl<ombrelcfrw7::CScrollContainer>(window, size<int>(40, 40),
                                                                               ombrelc7::alClient);
  ombrelcfrw7::CScrollContainer* container = m_control->GetTypedContent();
  m_log = new event_log_t;
  m_log->ReParent(container, false);
  m_log->m_has_changes = false;
  m_log->m_show_debug = show_debug;
  m_image_list = ombrelc7::GetCurrentSystem()->CreateImageList();
  m_control->SetImageList(m_image_list.get());
  m_log->prepare_image_list(m_image_list.get());
  m_log->ContextMenuSignal().connect(this, &inplace_ctrl_impl_t::on_context_menu);
  container->SetScrolled(m_log);
  m_log->SetInitialWidth(measure_initial_width(), true);
  apply_background();
}

inplace_ctrl_impl_t::~inplace_ctrl_impl_t() {
  // Each entry takes its box out of the tree as it goes.
  m_entries.clear();
}

int inplace_ctrl_impl_t::measure_initial_width() const {
  wxWindowDC dc(m_owner);
  dc.SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal));
  return dc.GetTextExtent(initial_width_sample()).GetWidth();
}

void inplace_ctrl_impl_t::apply_background() {
  set_background(m_control->GetContent(), plaxi1::ui_settings_t::get()->get_color(plaxi1::color_window));
}

void inplace_ctrl_impl_t::hide_all_buttons() {
  for (auto& [tag, entry] : m_entries) {
    if (!entry) {
      ZANDOR_REPORT("entry != NULL");
      continue;
    }
    entry->hide_buttons();
  }
}

unsigned int inplace_ctrl_impl_t::add_entry(message_entry_t* entry, const korvat2::signal_t<int>& callback) {
  const unsigned int tag = entry->m_tag.m_tag;
  m_entries[tag] = entry;
  // Present connections stay single: the client may pass the same callback again.
  entry->m_tag.m_callback.copy_connections_from(callback);
  return tag;
}

unsigned int inplace_ctrl_impl_t::add_message(const korvat2::intrusive_pointer_t<message_t>& msg,
                                              const korvat2::signal_t<int>& callback) {
  hide_all_buttons();
  m_log->m_has_changes = true;
  return add_entry(new message_entry_t(m_log, m_next_tag++, msg), callback);
}

unsigned int inplace_ctrl_impl_t::add_progress(const korvat2::intrusive_pointer_t<progress_message_t>& msg,
                                               const korvat2::signal_t<int>& callback) {
  hide_all_buttons();
  m_log->m_has_changes = true;
  return add_entry(new message_entry_t(m_log, m_next_tag++, msg), callback);
}

unsigned int inplace_ctrl_impl_t::add_custom(const korvat2::intrusive_pointer_t<custom_message_t>& /*msg*/) {
  m_log->m_has_changes = true;
  ZANDOR_REPORT("add_custom not impl");
  return 0;
}

korvat2::error_code_t inplace_ctrl_impl_t::update_message(
    unsigned int tag, const korvat2::intrusive_pointer_t<message_t>& new_msg,
    const korvat2::signal_t<int>& callback) {
  m_log->m_has_changes = true;
  const auto found = m_entries.find(tag);
  KV2_CHECK_MSG(found != m_entries.end(), "m_entries.find(tag) != m_entries.end()", korvat2::error::False);
  const korvat2::error_code_t updated = found->second->update_message(new_msg, &callback);
  KV2_CHECK_MSG(updated.succeeded(), "m_entries[tag]->update_message(new_msg, &callback).succeeded()",
                updated);
  return korvat2::error::Success;
}

korvat2::error_code_t inplace_ctrl_impl_t::erase(unsigned int tag) {
  m_log->m_has_changes = true;
  const auto found = m_entries.find(tag);
  KV2_CHECK_MSG(found != m_entries.end(), "m_entries.find(tag) != m_entries.end()", korvat2::error::False);
  found->second->hide();
  m_entries.erase(found);
  return korvat2::error::Success;
}

korvat2::error_code_t inplace_ctrl_impl_t::clear() {
  m_messenger_proxy.m_target = nullptr;
  m_progress_proxy.m_target = nullptr;
  if (m_entries.empty()) {
    return korvat2::error::Success;
  }
  for (auto& [tag, entry] : m_entries) {
    const korvat2::intrusive_pointer_t<event_entry_t> keep(entry);
    keep->hide();
  }
  m_entries.clear();
  m_log->m_has_changes = true;
  return korvat2::error::Success;
}

pelit2::IMessenger* inplace_ctrl_impl_t::get_messenger(unsigned int tag) {
  const auto found = m_entries.find(tag);
  if (found == m_entries.end()) {
    m_messenger_proxy.m_target = nullptr;
    return nullptr;
  }
  m_messenger_proxy.m_target = found->second.get();
  return &m_messenger_proxy;
}

pelit2::IProgress* inplace_ctrl_impl_t::get_progress(unsigned int tag) {
  const auto found = m_entries.find(tag);
  if (found == m_entries.end()) {
    m_progress_proxy.m_target = nullptr;
    return nullptr;
  }
  m_progress_proxy.m_target = found->second->get_progress();
  return &m_progress_proxy;
}

bool inplace_ctrl_impl_t::has_severity(unsigned int tag, pelit2::ESeverity mask) {
  const auto found = m_entries.find(tag);
  return found != m_entries.end() && found->second->has_severity(mask);
}

event_entry_t* inplace_ctrl_impl_t::get_entry(unsigned int tag) const {
  const auto found = m_entries.find(tag);
  return found == m_entries.end() ? nullptr : found->second.get();
}

bool inplace_ctrl_impl_t::has_changes() { return m_log->m_has_changes; }

korvat2::error_code_t inplace_ctrl_impl_t::save(korvat2::variant_bag_t& bag) {
  for (auto& [tag, entry] : m_entries) {
    if (entry->get_type() != message_entry_t::type_name) {
      continue;
    }
    korvat2::variant_bag_t saved;
    const bool err = entry->save(saved).succeeded();
    ZANDOR_ASSERT(err);
    bag.add_variant_bag(message_entry_t::type_name.c_str(), saved);
  }
  m_log->m_has_changes = false;
  return korvat2::error::Success;
}

korvat2::error_code_t inplace_ctrl_impl_t::load(const korvat2::variant_bag_t& bag) {
  const korvat2::signal_t<int> no_callback;
  for (auto entry = bag.begin_by_name<korvat2::variant_bag_t>(message_entry_t::type_name.c_str());
       !entry.at_end(); entry.next()) {
    const korvat2::variant_bag_t& value = entry.get_value();
    korvat2::intrusive_pointer_t<message_t> message(new message_t);
    if (message->load(value).failed()) {
      ZANDOR_REPORT("message->load(value)");
    }
    const unsigned int tag = add_message(message, no_callback);
    pelit2::IMessenger* pelit = get_messenger(tag);
    // The entry's reader has told which line is corrupt; this tells whose load it was.
    KV2_CHECK(event_entry_t::load(value, pelit).succeeded(), nullptr);
  }
  m_log->m_has_changes = false;
  return korvat2::error::Success;
}

void inplace_ctrl_impl_t::handle_copy() { ombrelcfrw7::CopyToClipboard(m_control->GetContent()); }

void inplace_ctrl_impl_t::on_context_menu(ombrelcfrw7::CVisualElement* /*element*/, int x, int y) {
  m_owner->pupup_menu(wxPoint(x, y));
}

}  // namespace tamsel3
