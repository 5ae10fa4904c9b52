#include <tamsel3/generic_base.h>
#include <tamsel3/message_window.h>
#include <tamsel3/resource.h>
#include <tamsel3/text_helpers.h>
#include "text_limit_p.h"

#include <a11y/native.h>
#include <plaxi1/modal.h>
#include <plaxi1/ui_settings.h>
#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include <wx/app.h>
#include <wx/settings.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>

namespace tamsel3 {
namespace {

constexpr long default_max_len = 10000;

// wx tells only its window classes whether a window was given a font; one that wasn't shows
// its class's default, which is the toolkit's font. Asking GetFont would make a widget to
// find that default, again on every measure of its texts.
class font_probe_t : public wxWindow {
 public:
  static bool has_font(const wxWindow& window) { return (window.*(&font_probe_t::m_font)).IsOk(); }
  // Notes the font that a window without one shows already, without restyling it.
  static void note_font(wxWindow& window, const wxFont& font) { window.*(&font_probe_t::m_font) = font; }
};

const char* const path_message_keys[] = {"path.nonexisting",    "path.nonexisting_parent_dir",
                                         "path.empty_relative", "path.enter_valid_path",
                                         "path.invalid_file",   "path.invalid_directory"};

}  // namespace

template <class T>
generic_base_t<T>::generic_base_t()
    : m_resource_file(create_resource_filename("tamsel3.dat", "tamsel.xrc")),
      m_path_messages(path_message_count) {}

template <class T>
generic_base_t<T>::~generic_base_t() {
  // Every connection of the length limit goes, whatever class the child has: the children
  // outlive this part of the window, and a text event from one of them must not reach it.
  for (wxWindow* child : this->GetChildren()) {
    while (child->Unbind(wxEVT_TEXT_MAXLEN, &generic_base_t::on_max_len, this)) {
    }
    while (child->Unbind(wxEVT_TEXT, &generic_base_t::on_text_changed, this)) {
    }
    release_text_limit(dynamic_cast<wxTextCtrl*>(child));  // its handler asks this window
  }
}

template <class T>
void generic_base_t<T>::save_settings() {}

template <class T>
void generic_base_t<T>::end_dialog(int code) {
  m_end_dialog_signal(this, code);
}

template <class T>
void generic_base_t<T>::on_init_dialog() {}

template <class T>
void generic_base_t<T>::on_ok() {
  save_settings();
}

template <class T>
void generic_base_t<T>::on_cancel() {}

template <class T>
void generic_base_t<T>::on_help() {}

template <class T>
void generic_base_t<T>::on_update_ui_settings() {
  const wxFont font = plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal);
  // Setting a font restyles the widget and measures it again, which would be most of the
  // cost of a show: a child that was given no font shows the toolkit's already.
  const bool toolkit_font = font == wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
  for (wxWindow* child : this->GetChildren()) {
    if (!toolkit_font || font_probe_t::has_font(*child)) {
      child->SetFont(font);
    } else {
      font_probe_t::note_font(*child, font);
    }
  }
}

template <class T>
void generic_base_t<T>::handle_ok(wxCommandEvent&) {
  on_ok();
  end_dialog(wxID_OK);
}

template <class T>
void generic_base_t<T>::load_auxiliary_strings() {
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog("tamsel");
  if (!catalog) {
    return;  // no catalog is no error: the texts stay empty
  }
  const ZANDOR_2_16::generic::varg_list no_args;
  m_text_unknown = catalog->message("text.unknown").as_ustring(no_args).str();
  for (std::size_t index = 0; index < m_path_messages.size(); ++index) {
    m_path_messages[index] = catalog->message(path_message_keys[index]).as_ustring(no_args).str();
  }
}

template <class T>
void generic_base_t<T>::set_max_text_limit() {
  for (wxWindow* child : this->GetChildren()) {
    auto* field = dynamic_cast<wxTextCtrl*>(child);
    if (!field) {
      continue;
    }
    // Cut inside the toolkit's insertion, before any handler of the window hears of the
    // text; a repeated call keeps the first connection.
    const bool held = hold_text_at_limit(
        field, [this, field] { return limit_of(field); }, [this, field] { report_max_len(field); });
    // The toolkit's own single-line limit would refuse a paste that goes over whole, where
    // the hold keeps what fits: it is the fallback. Multi-line fields are still watched for
    // the same reason. A repeated call adds a connection; the first to answer stops the event.
    if (field->GetWindowStyle() & wxTE_MULTILINE) {
      field->Bind(wxEVT_TEXT, &generic_base_t::on_text_changed, this);
    } else {
      if (!held) {
        field->SetMaxLength(limit_of(field));
      }
      field->Bind(wxEVT_TEXT_MAXLEN, &generic_base_t::on_max_len, this);
    }
  }
}

template <class T>
void generic_base_t<T>::on_text_changed(wxCommandEvent& event) {
  event.Skip();  // the field's other listeners still hear of the change
  auto* field = get_ctrl_from_event<wxTextCtrl>(event);
  if (!field) {
    return;
  }
  const long limit = limit_of(field);
  const wxString value = field->GetValue();
  if (static_cast<int>(value.length()) <= limit) {
    return;  // the usual case: the insertion itself was cut
  }
  // A field longer than its limit all the same (the limit was lowered, or the insertion
  // couldn't be cut): cut it here, before any later handler or posted call sees the text.
  field->ChangeValue(value.Left(static_cast<size_t>(limit)));  // no new event
  report_max_len(field);
}

template <class T>
long generic_base_t<T>::limit_of(wxTextCtrl* field) {
  const long limit = m_max_len_options[field].m_max_len;
  return limit == -1 ? default_max_len : limit;
}

template <class T>
void generic_base_t<T>::report_max_len(wxTextCtrl* field) {
  wxCommandEvent reached(wxEVT_TEXT_MAXLEN, field->GetId());
  reached.SetEventObject(field);
  on_max_len(reached);
}

template <class T>
void generic_base_t<T>::on_max_len(wxCommandEvent& event) {
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog("tamsel");
  auto* field = get_ctrl_from_event<wxTextCtrl>(event);
  if (!catalog || !field || plaxi1::is_closing(this)) {
    return;
  }
  max_len_options_t options = gen_max_len_options(field);
  const long limit = options.m_max_len == -1 ? default_max_len : options.m_max_len;
  const ZANDOR_2_16::generic::varg_list no_args;
  if (options.m_field_name.empty()) {
    options.m_field_name = catalog->message("text").as_ustring(no_args).str();
  }
  if (options.m_details_key.empty()) {
    options.m_details_key = "max_len_details";
  }
  using ZANDOR_2_16::generic::argument;
  const std::string main_text = catalog->message("max_len")
                                    .as_ustring(ZANDOR_2_16::generic::varg_list(argument(
                                        "field_name", set_1st_letter_uppercase(options.m_field_name))))
                                    .str();
  const ZANDOR_2_16::generic::varg_list details_args(
      argument("product_name",
               quern2::IProductLocations::get()->getProductText(quern2::IProductLocations::text_short_name)),
      argument("field_name", options.m_field_name), argument("max_len", limit));
  std::string details = catalog->message(options.m_details_key).as_ustring(details_args).str();
  if (details.empty()) {
    details = catalog->message("max_len_details").as_ustring(details_args).str();
  }
  show_msg_box(main_text, details, message_window_t::icon_warning, this);
}

template <class T>
void generic_base_t<T>::handle_timer_event(wxTimerEvent&) {}

template <class T>
void generic_base_t<T>::handle_init_dialog_event(wxInitDialogEvent&) {
  if (!m_initialized) {
    apply_size_floor();
    find_standard_buttons();
    if (m_btn_help) {
      m_btn_help->Enable(m_help_id != -1);
    }
    plaxi1::ui_settings_t::get()->m_changed_signal.connect(this, &generic_base_t::on_update_ui_settings);
  }
  on_update_ui_settings();  // also on a repeated init event
  if (m_initialized) {
    return;
  }
  // This order is part of the contract: on_init_dialog finds the limits set and the
  // path messages loaded, and the timer gets its id only after it.
  set_max_text_limit();
  load_auxiliary_strings();
  on_init_dialog();
  a11y::name_from_labels(this);  // the page's fields are read by the labels beside them
  m_timer.SetOwner(this, wxWindow::NewControlId());
  m_initialized = true;
}

template <class T>
void generic_base_t<T>::handle_cancel(wxCommandEvent&) {
  on_cancel();
  end_dialog(wxID_CANCEL);
}

template <class T>
void generic_base_t<T>::handle_help(wxCommandEvent&) {
  on_help();
}

template <class T>
void generic_base_t<T>::handle_close(wxCloseEvent&) {
  on_cancel();
  end_dialog(wxID_CANCEL);
}

template <class T>
void generic_base_t<T>::set_max_len_options(wxTextCtrl* control, max_len_options_t options) {
  m_max_len_options[control] = std::move(options);
  set_max_text_limit();
}

template <class T>
max_len_options_t generic_base_t<T>::gen_max_len_options(wxTextCtrl* control) {
  return m_max_len_options[control];
}

template <class T>
void generic_base_t<T>::apply_size_floor() {
  const wxSize size = this->GetSize();
  if (size.GetHeight() < m_min_height || size.GetWidth() < m_min_width) {
    this->SetSize(wxDefaultCoord, wxDefaultCoord, std::max(size.GetWidth(), m_min_width),
                  std::max(size.GetHeight(), m_min_height), wxSIZE_USE_EXISTING);
  }
  // A floor of 0 is no floor: as a minimum of 0 it would also override the best size that
  // sizers give a page, and squash it.
  this->SetMinSize(wxSize(m_min_width > 0 ? m_min_width : wxDefaultCoord,
                          m_min_height > 0 ? m_min_height : wxDefaultCoord));
}

template <class T>
void generic_base_t<T>::find_standard_buttons() {
  m_btn_ok = this->FindWindow(wxXmlResource::GetXRCID("m_btn_ok"));
  m_btn_cancel = this->FindWindow(wxXmlResource::GetXRCID("m_btn_cancel"));
  m_btn_help = this->FindWindow(wxXmlResource::GetXRCID("m_btn_help"));
}

template class generic_base_t<wxPanel>;
template class generic_base_t<dummy>;

}  // namespace tamsel3
