#include <tamsel3/ask_dlg.h>
#include <tamsel3/common_dialogs.h>

#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include <wx/settings.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

namespace tamsel3 {
namespace {

constexpr int fixed_width = 400;
constexpr int height_floor = 170;

int height_of(const wxWindow* window) { return window ? window->GetSize().GetHeight() : 0; }

}  // namespace

// Rows with XRC ids are filled when this file is initialised, once the ids can be made.
wxBEGIN_EVENT_TABLE(ask_dlg_t, dialog_base_t)
  EVT_BUTTON(XRCID("m_button10"), ask_dlg_t::on_btn_browse_file)
wxEND_EVENT_TABLE()

ask_dlg_t::ask_dlg_t() { m_object_name = "dlg.ask"; }

void ask_dlg_t::set_filename(const std::string& filename) {
  m_filename = filename;
  if (m_file_field) {
    m_file_field->SetValue(wxString::FromUTF8(m_filename));
  }
}

void ask_dlg_t::on_init_dialog() {
  m_text_control = XRCCTRL(*this, "m_staticText7", wxStaticText);
  m_field_label = XRCCTRL(*this, "m_staticText6", wxStaticText);
  m_file_field = XRCCTRL(*this, "m_textCtrl9", wxTextCtrl);
  m_browse_button = XRCCTRL(*this, "m_button10", wxWindow);
  m_btn_ok = XRCCTRL(*this, "m_btn_ok", wxWindow);
  m_btn_cancel = XRCCTRL(*this, "m_btn_cancel", wxWindow);
  fill_controls();
  const wxSize min_size = calculate_min_size();
  SetMinSize(min_size);
  SetSize(wxDefaultCoord, wxDefaultCoord, min_size.GetWidth(), min_size.GetHeight(), wxSIZE_USE_EXISTING);
  place_centred();
  full_resize_update();
}

void ask_dlg_t::fill_controls() {
  load_messages();
  if (m_file_field) {
    m_file_field->SetValue(wxString::FromUTF8(m_filename));
  }
}

void ask_dlg_t::load_messages() {
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog(m_catalog_name);
  if (!catalog) {
    return;  // no catalog is no error: the texts stay empty
  }
  using ZANDOR_2_16::generic::argument;
  using ZANDOR_2_16::generic::varg_list;
  m_extensions = catalog->message("dlg.ask.extensions_lin").as_ustring(varg_list()).str();
  const std::string product =
      quern2::IProductLocations::get()->getProductText(quern2::IProductLocations::text_short_name);
  m_ask_text =
      catalog->message("dlg.ask.text").as_ustring(varg_list(argument("product_name", product))).str();
}

wxSize ask_dlg_t::calculate_min_size() {
  const int height = wxSystemSettings::GetMetric(wxSYS_CAPTION_Y, this) + height_of(m_field_label) + 10 +
                     2 * height_of(m_browse_button) + 29;
  return wxSize(fixed_width, height <= height_floor ? height_floor : height);
}

void ask_dlg_t::full_resize_update() {
  Layout();
  Refresh(true, nullptr);
  Update();
  if (m_text_control) {
    set_multiline_text(m_text_control, m_ask_text, wxNullFont);
  }
}

void ask_dlg_t::on_btn_browse_file(wxCommandEvent&) {
  if (!m_file_field) {
    return;
  }
  std::string path = m_file_field->GetValue().utf8_string();
  if (file_dlg(this, true, path, m_default_extension, m_extensions, "", "")) {
    m_file_field->SetValue(wxString::FromUTF8(path));
  }
}

void ask_dlg_t::on_ok() {
  if (m_file_field) {
    m_filename = m_file_field->GetValue().utf8_string();
  }
}

}  // namespace tamsel3
