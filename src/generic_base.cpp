#include <tamsel3/generic_base.h>
#include <tamsel3/resource.h>

#include <plaxi1/ui_settings.h>
#include <quern2/catalog_registry.h>

#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>

namespace tamsel3 {
namespace {

constexpr long default_max_len = 10000;

const char* const path_message_keys[] = {"path.nonexisting",    "path.nonexisting_parent_dir",
                                         "path.empty_relative", "path.enter_valid_path",
                                         "path.invalid_file",   "path.invalid_directory"};

}  // namespace

template <class T>
generic_base_t<T>::generic_base_t()
    : m_resource_file(create_resource_filename("tamsel3.dat", "tamsel.xrc")),
      m_path_messages(path_message_count) {}

template <class T>
generic_base_t<T>::~generic_base_t() = default;

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
  const korvat2::intrusive_pointer_t<plaxi1::ui_settings_t> settings = plaxi1::ui_settings_t::get();
  for (wxWindow* child : this->GetChildren()) {
    child->SetFont(settings->get_font(plaxi1::font_normal));
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
    if (auto* field = dynamic_cast<wxTextCtrl*>(child)) {
      const long limit = m_max_len_options[field].m_max_len;
      field->SetMaxLength(limit == -1 ? default_max_len : limit);
    }
  }
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
    this->SetSize(-1, -1, std::max(size.GetWidth(), m_min_width), std::max(size.GetHeight(), m_min_height),
                  0);
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
