#include <tamsel3/char_rules.h>
#include <tamsel3/common_dialogs.h>
#include <tamsel3/message_window.h>
#include <tamsel3/result_saving_pp.h>
#include <tamsel3/text_helpers.h>

#include <drumlin2/collection_controller.h>
#include <fathel2/result_directory_manager.h>
#include <korvat2/system.h>
#include <plaxi1/ui_settings.h>
#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/gdicmn.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>
#include <initializer_list>
#include <locale>
#include <utility>

namespace tamsel3 {
namespace {

constexpr std::size_t max_run = 8;
constexpr int example_margin = 30;

const char* default_template() {
  return drumlin2::ICollectionController::getDefaultResultDirectoryName(true);
}

fathel2::error_t validate(const std::string& text) {
  if (text.find('\0') != std::string::npos) {
    return fathel2::error_bad_character;  // the validator reads C strings and wouldn't see it
  }
  return fathel2::ResultDirectoryManager::validateResultDirectoryPattern(text.c_str());
}

std::string trim_right(std::string text) {
  const std::locale locale;
  while (!text.empty() && std::isspace(text.back(), locale)) {
    text.pop_back();
  }
  return text;
}

std::string value_of(const wxTextCtrl* field) {
  return field ? field->GetValue().utf8_string() : std::string();
}

template <class Control>
Control* find_control(wxWindow* root, const char* name) {
  return dynamic_cast<Control*>(root->FindWindow(wxXmlResource::GetXRCID(name)));
}

void show_if(wxWindow* window, bool show) {
  if (window) {
    window->Show(show);
  }
}

}  // namespace

// Rows with XRC ids are filled when this file is initialised, once the ids can be made.
wxBEGIN_EVENT_TABLE(result_saving_pp_t, pref_base_t)
  EVT_BUTTON(XRCID("m_button28"), result_saving_pp_t::on_button_browse)
  EVT_RADIOBUTTON(XRCID("m_radioBtn13"), result_saving_pp_t::on_radio_proj)
  EVT_RADIOBUTTON(XRCID("m_radioBtn14"), result_saving_pp_t::on_radio_disk)
  EVT_TEXT(XRCID("m_textCtrl14"), result_saving_pp_t::on_text_edit)
  EVT_TEXT(XRCID("m_textCtrl16"), result_saving_pp_t::on_folder_text_edit)
  EVT_SIZE(result_saving_pp_t::on_resize)
wxEND_EVENT_TABLE()

result_saving_pp_t::result_saving_pp_t(const result_saving_data_t& data, int flags)
    : m_data(data), m_show_flags(flags) {
  m_object_name = "pref.result_saving";
}

result_saving_pp_t::result_saving_pp_t(const result_saving_data_t& data, bool name, bool storage)
    : result_saving_pp_t(data,
                         show_vs_accessibility | (name ? show_name : 0) | (storage ? show_storage : 0)) {}

bool result_saving_pp_t::replace_wrong_ats(std::string& text) {
  std::size_t first = text.find('@');
  if (first == std::string::npos) {
    return false;
  }
  bool changed = false;
  std::size_t end = text.find_first_not_of('@', first);
  const std::size_t stray = end == std::string::npos ? std::string::npos : text.find('@', end);
  if (stray != std::string::npos) {
    std::string rest = text.substr(stray);
    rest.erase(std::remove(rest.begin(), rest.end(), '@'), rest.end());
    text = text.substr(0, stray) + rest;
    changed = true;
  }
  first = text.find('@');
  end = std::min(text.find_first_not_of('@', first), text.size());
  if (end - first > max_run) {
    text.erase(first + max_run, end - first - max_run);
    changed = true;
  }
  return changed;
}

bool result_saving_pp_t::filter_result_template(std::string& text) {
  text = trim_right(text);  // trailing blanks are no news to the user
  const bool chars_removed = replace_disabled_chars(text);
  const bool ats_removed = replace_wrong_ats(text);
  if (text.find('@') == std::string::npos || validate(text) != fathel2::error_none) {
    text = default_template();
    return true;
  }
  return chars_removed || ats_removed;
}

void result_saving_pp_t::on_text_edit(wxCommandEvent&) {
  // GTK moves the caret past an insertion only after its text event: judge the text then,
  // or at OK if that comes first.
  m_template_check_pending = true;
  CallAfter(&result_saving_pp_t::run_pending_checks);
}

void result_saving_pp_t::run_pending_checks() {
  if (std::exchange(m_template_check_pending, false)) {
    check_template();
  }
  if (std::exchange(m_folder_check_pending, false)) {
    check_file_or_folder(m_textCtrl16, false, true, false);  // its marking of the field is the point
  }
}

void result_saving_pp_t::check_template() {
  const std::string text = value_of(m_textCtrl14);
  if (!m_textCtrl14 || text == m_last_template) {
    return;  // the echo of the page's own change
  }
  m_insertion_point = m_textCtrl14->GetInsertionPoint();
  std::string copy = text;
  const bool chars_removed = replace_disabled_chars(copy);
  const bool ats_removed = replace_wrong_ats(copy);
  const fathel2::error_t error = validate(copy);
  if (copy != text || error != fathel2::error_none) {
    m_textCtrl14->ChangeValue(wxString::FromUTF8(copy));
    if (chars_removed) {
      mark_template(get_disabled_tooltip_text(m_restricted_symbols_text, file_disabled_chars, true), true);
    } else if (ats_removed) {
      mark_template(m_restricted_ats_text, true);
    } else {
      mark_template(fathel2::toString(error), true);
    }
  }
  m_last_template = copy;
  if (chars_removed || ats_removed) {
    // One step back, however many went: the common case is one character just typed.
    m_textCtrl14->SetInsertionPoint(std::max(0L, m_insertion_point - 1));
    return;
  }
  m_textCtrl14->SetInsertionPoint(m_insertion_point);
  if (error == fathel2::error_none) {
    mark_template("", false);
  }
}

void result_saving_pp_t::mark_template(const std::string& tooltip, bool error) {
  set_color_and_tooltip(m_textCtrl14, tooltip,
                        error ? *wxStockGDI::GetColour(wxStockGDI::COLOUR_RED)
                              : plaxi1::ui_settings_t::get()->get_color(plaxi1::color_text));
}

void result_saving_pp_t::on_folder_text_edit(wxCommandEvent&) {
  m_folder_check_pending = true;
  CallAfter(&result_saving_pp_t::run_pending_checks);
}

void result_saving_pp_t::on_button_browse(wxCommandEvent&) { process_browse_folder(this, m_textCtrl16); }

void result_saving_pp_t::on_radio_proj(wxCommandEvent&) { process_enable_controls(false); }

void result_saving_pp_t::on_radio_disk(wxCommandEvent&) { process_enable_controls(true); }

void result_saving_pp_t::on_resize(wxSizeEvent& event) {
  wrap_by_parent(this, m_staticText14, m_example_text, example_margin);
  event.Skip();
}

void result_saving_pp_t::process_enable_controls(bool enable) {
  if (m_textCtrl16) {
    m_textCtrl16->Enable(enable);
  }
  if (m_button28) {
    m_button28->Enable(enable);
  }
}

void result_saving_pp_t::on_ok() { save_settings(); }

void result_saving_pp_t::save_settings() {
  run_pending_checks();  // what is stored is what the fields show once cleaned
  std::string text = value_of(m_textCtrl14);
  const std::string as_left = text;
  std::string title;
  std::string details;
  if (filter_result_template(text)) {
    title = m_wrong_templ_title;
    details = m_wrong_templ_details;
  }
  m_data.set_name_template(text);
  const std::string folder = trim_right(value_of(m_textCtrl16));
  if ((m_show_flags & show_storage) && m_textCtrl16 && m_textCtrl16->IsThisEnabled() &&
      !check_file_or_folder(m_textCtrl16, false, true, false)) {
    m_data.set_folder(korvat2::stdpaths::get_temp_dir().as_string(false));
    if (title.empty()) {
      title = m_wrong_dir_title;
      details = m_wrong_dir_details;
    }
  } else {
    m_data.set_folder(folder);
  }
  if (!details.empty()) {
    // The validator says best what was wrong with the template as the user left it.
    const fathel2::error_t error = validate(as_left);
    details =
        error != fathel2::error_none ? std::string(fathel2::toString(error)) + "\n\n" : details + "\n\n";
    show_warning_message(title, details + m_wrong_input_advice);
  }
  m_data.set_vs_accessibility(m_checkBox7 && m_checkBox7->GetValue());
  m_data.set_proj_storing(m_radioBtn13 && m_radioBtn13->GetValue()
                              ? result_saving_data_t::proj_storing_in_project
                              : result_saving_data_t::proj_storing_on_disk);
}

void result_saving_pp_t::show_warning_message(const std::string& title, const std::string& text) const {
  // Over the page's window: a message belongs to the window it came from.
  show_msg_box(title, text, message_window_t::icon_warning, const_cast<result_saving_pp_t*>(this));
}

void result_saving_pp_t::load_messages() {
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog(m_catalog_name);
  if (!catalog) {
    return;  // no catalog is no error: the texts stay empty
  }
  using ZANDOR_2_16::generic::argument;
  using ZANDOR_2_16::generic::varg_list;
  const auto text = [catalog](const std::string& key, const varg_list& args = varg_list()) {
    return catalog->message(key).as_ustring(args).str();
  };
  const quern2::IProductLocations* product = quern2::IProductLocations::get();
  m_restricted_symbols_text = text("restricted_symbols_message");
  m_restricted_ats_text = text("pref.result_saving.restricted_ats_message");
  m_undefined_tooltip_text = text("pref.result_saving.undefined_tooltip_text");
  m_wrong_templ_title = text("pref.result_saving.wrong_result_templ");
  m_wrong_templ_details = text("pref.result_saving.wrong_result_templ_details");
  m_wrong_dir_title = text("pref.result_saving.wrong_result_dir");
  m_wrong_dir_details = text("pref.result_saving.wrong_result_dir_details");
  m_curr_project_dir_text = text("pref.result_saving.curr_project_dir");
  m_wrong_input_advice = text(
      "pref.result_saving.wrong_input_advice",
      varg_list(argument("product_name",
                         std::string(product->getProductText(quern2::IProductLocations::text_short_name)))));
  const std::string tag = product->getProductTag();
  // Products of 2011 explain the template in their own words.
  const std::string explanation_key =
      "pref.result_saving.at_explanation_" + tag + (product->getProductGeneration() == 11 ? "_2011" : "");
  set_max_len_options(m_textCtrl14, max_len_options_t(text("pref.result_saving.templ"), 10000, ""));
  set_max_len_options(m_textCtrl16, max_len_options_t(text("pref.result_saving.dir"), 10000, ""));
  m_example_text = text("pref.result_saving.example",
                        varg_list(argument("default_dir", std::string(default_template())),
                                  argument("analysis_type", text("pref.result_saving.at_example_" + tag)),
                                  argument("extension", tag))) +
                   " " + text(explanation_key);
}

void result_saving_pp_t::load_settings() {
  // With events: the saved values go through the checks of typing.
  if (m_textCtrl14) {
    m_textCtrl14->SetValue(wxString::FromUTF8(m_data.get_name_template()));
  }
  if (m_textCtrl16) {
    m_textCtrl16->SetValue(wxString::FromUTF8(m_data.get_folder()));
  }
  if (m_checkBox7) {
    m_checkBox7->SetValue(m_data.get_vs_accessibility());
  }
  const bool on_disk = m_data.get_proj_storing() != result_saving_data_t::proj_storing_in_project;
  if (m_radioBtn13 && !on_disk) {
    m_radioBtn13->SetValue(true);
  }
  if (m_radioBtn14 && on_disk) {
    m_radioBtn14->SetValue(true);
  }
  process_enable_controls(on_disk);
  load_messages();
  wrap_by_parent(this, m_staticText14, m_example_text, example_margin);
  Layout();
  const std::string default_folder = m_data.get_proj_default_folder();
  if (m_text_proj_default_folder) {
    m_text_proj_default_folder->SetLabel(wxString::FromUTF8(default_folder));
  }
  show_if(m_text_proj_default_folder, !default_folder.empty() && (m_show_flags & show_proj_default_folder));
}

void result_saving_pp_t::find_controls() {
  m_staticText74 = find_control<wxStaticText>(this, "m_staticText74");
  m_textCtrl14 = find_control<wxTextCtrl>(this, "m_textCtrl14");
  m_staticText14 = find_control<wxStaticText>(this, "m_staticText14");
  m_checkBox7 = find_control<wxCheckBox>(this, "m_checkBox7");
  m_staticText8 = find_control<wxStaticText>(this, "m_staticText8");
  m_radioBtn13 = find_control<wxRadioButton>(this, "m_radioBtn13");
  m_radioBtn14 = find_control<wxRadioButton>(this, "m_radioBtn14");
  m_textCtrl16 = find_control<wxTextCtrl>(this, "m_textCtrl16");
  m_button28 = find_control<wxButton>(this, "m_button28");
  m_text_proj_default_folder = find_control<wxStaticText>(this, "m_text_proj_default_folder");
}

void result_saving_pp_t::on_init_dialog() {
  find_controls();
  load_settings();
  if ((m_show_flags & show_curr_project_dir) && m_radioBtn13) {
    m_radioBtn13->SetLabel(wxString::FromUTF8(m_curr_project_dir_text));
  }
  update_shown_controls();
  m_style_updater.create(this);
  const auto style = [this](wxWindow* window, const plaxi1::style_t& look, int apply) {
    if (window) {  // a layout may lack a control
      m_style_updater.add(window, look, apply);
    }
  };
  style(m_text_proj_default_folder, plaxi1::style_t::create_dialog_style(), 0);
  style(this, plaxi1::style_t::create_dialog_style(), 0);
  style(m_textCtrl14, plaxi1::style_t::create_inplace_style(), 0);
  style(m_textCtrl16, plaxi1::style_t::create_inplace_style(), 0);
  style(m_staticText14, plaxi1::style_t::create_dialog_style(), plaxi1::style_updater_t::apply_dimmed_text);
  m_style_updater.propagate_style();
  on_update_ui_settings();
  if (GetParent()) {
    const wxSize room = GetParent()->GetClientSize();
    const wxSize size = GetSize();
    SetPosition(wxPoint(std::max(0, (room.GetWidth() - size.GetWidth()) / 2),
                        std::max(0, (room.GetHeight() - size.GetHeight()) / 2)));
    Layout();
  }
}

void result_saving_pp_t::update_shown_controls() {
  if (m_textCtrl14) {
    const int width = 25 * get_text_extent(m_textCtrl14, "a").GetWidth();
    m_textCtrl14->SetMinSize(wxSize(width, m_textCtrl14->GetMinSize().GetHeight()));
  }
  const bool name = m_show_flags & show_name;
  const bool storage = m_show_flags & show_storage;
  show_if(m_staticText74, name);
  show_if(m_textCtrl14, name);
  show_if(m_staticText14, name);
  for (wxWindow* window : std::initializer_list<wxWindow*>{m_staticText8, m_radioBtn13, m_radioBtn14,
                                                           m_textCtrl16, m_button28}) {
    show_if(window, storage);
  }
  show_if(m_checkBox7, storage && (m_show_flags & show_vs_accessibility));
  show_if(m_text_proj_default_folder,
          (m_show_flags & show_proj_default_folder) && !m_data.get_proj_default_folder().empty());
  Layout();
}

void result_saving_pp_t::on_update_ui_settings() {
  pref_base_t::on_update_ui_settings();
  if (m_text_proj_default_folder) {
    m_text_proj_default_folder->SetBackgroundColour(
        plaxi1::ui_settings_t::get()->get_color(plaxi1::color_list));
  }
}

}  // namespace tamsel3
