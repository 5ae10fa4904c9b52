#include <tamsel3/experimental_options_panel.h>
#include <tamsel3/message_window.h>
#include <tamsel3/text_helpers.h>

#include <plaxi1/style.h>
#include <plaxi1/ui_settings.h>

#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>

namespace tamsel3 {
namespace {

// The banner's own colours: they must read as "all normal" and "something unusual is on"
// whatever the desktop's theme.
const wxColour off_background(0, 57, 87);
const wxColour on_background(162, 27, 0);
constexpr int description_chars = 72;

wxWindow* find_by_name(wxWindow* root, const char* name) {
  return root->FindWindow(wxXmlResource::GetXRCID(name));
}

// The banners are deep in every theme: their texts start from a colour that is light in
// every theme, where the window background would be dark in a dark one.
const wxColour& status_text_colour(bool on) {
  static const wxColour base = plaxi1::ui_settings_t::get()->get_color(plaxi1::color_banner_text);
  static const wxColour off_text = plaxi1::color_helpers_t::make_gradient(base, off_background, 0.5);
  static const wxColour on_text = plaxi1::color_helpers_t::make_gradient(base, on_background, 0.5);
  return on ? on_text : off_text;
}

}  // namespace

// Each check box is connected as it is made: the table has no rows of its own.
wxBEGIN_EVENT_TABLE(experimental_options_panel_t, pref_base_t)
wxEND_EVENT_TABLE()

experimental_options_panel_t::experimental_options_panel_t(boost::shared_ptr<feature_list_config_t> list,
                                                           boost::shared_ptr<active_features_config_t> active)
    : m_feature_list_config(std::move(list)), m_active_features_config(std::move(active)) {
  m_object_name = "panel.experimental";
}

bool experimental_options_panel_t::is_experimental_on() const {
  return std::any_of(m_features.begin(), m_features.end(), [](const feature_info_t& f) { return f.enabled; });
}

void experimental_options_panel_t::on_init_dialog() {
  m_experimental_descr = find_by_name(this, "m_experimental_descr");
  m_experimental_status = find_by_name(this, "m_experimental_status");
  m_mesage_panel = find_by_name(this, "m_mesage_panel");
  m_feature_list_wnd = find_by_name(this, "m_feature_list_wnd");
  load_settings();
  on_update_ui_settings();
  wrap_description();
}

void experimental_options_panel_t::wrap_description() {
  // A long explanation would otherwise set the width of the whole page; a measure in
  // characters keeps the lines readable in any font.
  if (auto* text = dynamic_cast<wxStaticText*>(m_experimental_descr)) {
    text->Wrap(description_chars * get_text_extent(text, "n").GetWidth());
  }
}

void experimental_options_panel_t::load_settings() {
  load_feature_list();
  load_enabled_features();
}

void experimental_options_panel_t::load_feature_list() {
  if (!m_feature_list_config) {
    return;
  }
  // A missing list shows as an empty one, but its features stay unknown for saving.
  m_list_read = m_feature_list_config->load() || m_list_read;
  const int count = m_feature_list_config->get_count();
  for (int i = 0; i < count; ++i) {
    add_feature(m_feature_list_config->get_feature(i));
  }
}

void experimental_options_panel_t::load_enabled_features() {
  if (!m_active_features_config) {
    return;
  }
  m_active_features_config->load();
  // The records only: the boxes stay as they were made, and the banner tells what is on.
  for (feature_info_t& feature : m_features) {
    feature.enabled = m_active_features_config->is_turned_on(feature.env_variable);
  }
}

void experimental_options_panel_t::add_feature(const feature_list_config_t::feature_info_t& info) {
  if (info.name.empty() || info.env_variable.empty()) {
    return;
  }
  add_feature(feature_info_t{info.env_variable, info.name, info.description, false});
}

void experimental_options_panel_t::add_feature(const feature_info_t& info) {
  if (std::find(m_features.begin(), m_features.end(), info) != m_features.end()) {
    return;
  }
  m_features.push_back(info);
  add_checkbox(info.name, info.description, info.enabled);
  on_update_ui_settings();
}

void experimental_options_panel_t::add_checkbox(const std::string& name, const std::string& description,
                                                bool checked) {
  if (!m_feature_list_wnd || !m_feature_list_wnd->GetSizer()) {
    return;
  }
  auto* box = new wxCheckBox(m_feature_list_wnd, wxID_ANY, wxString::FromUTF8(name));
  box->SetValue(checked);
  box->Bind(wxEVT_CHECKBOX, &experimental_options_panel_t::on_checkbox, this);
  set_tooltip(description, box);
  m_feature_list_wnd->GetSizer()->Add(box, 0, wxALL, 5);
  m_feature_list_wnd->GetSizer()->Layout();
}

void experimental_options_panel_t::on_checkbox(wxCommandEvent& event) {
  const auto* box = get_ctrl_from_event<wxCheckBox>(event);
  if (!box) {
    return;
  }
  const std::string label = box->GetLabel().utf8_string();
  const auto found = std::find_if(m_features.begin(), m_features.end(),
                                  [&](const feature_info_t& f) { return f.name == label; });
  if (found != m_features.end()) {
    found->enabled = box->GetValue();
  }
  on_update_ui_settings();
}

void experimental_options_panel_t::on_update_ui_settings() {
  pref_base_t::on_update_ui_settings();
  const korvat2::intrusive_pointer_t<plaxi1::ui_settings_t> settings = plaxi1::ui_settings_t::get();
  const bool on = is_experimental_on();
  if (m_experimental_descr) {
    m_experimental_descr->SetFont(settings->get_font(plaxi1::font_normal));
    m_experimental_descr->SetForegroundColour(settings->get_color(plaxi1::color_banner_text));
  }
  if (m_experimental_status) {
    m_experimental_status->SetFont(settings->get_font(plaxi1::font_large));
    m_experimental_status->SetForegroundColour(status_text_colour(on));
  }
  if (m_mesage_panel) {
    m_mesage_panel->SetBackgroundColour(on ? on_background : off_background);
  }
  if (m_feature_list_wnd) {
    m_feature_list_wnd->SetBackgroundColour(settings->get_color(plaxi1::color_list));
  }
  if (GetHandle()) {  // a host may add features before the page is created
    Layout();
    Refresh();
  }
}

void experimental_options_panel_t::save_settings() {
  m_restart_requested = prompt_restart_now();  // asked on every OK, changed or not
  // Writing without a list that was read would drop every feature that is on.
  if (!m_active_features_config || !m_list_read) {
    return;
  }
  m_active_features_config->clear();
  for (const feature_info_t& feature : m_features) {
    if (feature.enabled) {
      m_active_features_config->turn_on(feature.env_variable);
    }
  }
  m_active_features_config->save();
}

bool experimental_options_panel_t::prompt_restart_now() const {
  const ZANDOR_2_16::generic::varg_list none;
  message_window_t window;
  window.m_main_message = translate_message("panel.experimental.restart_prompt_title", none);
  window.m_supplemental_message = translate_message("panel.experimental.restart_prompt_description", none);
  window.m_button_type = message_window_t::buttons_yes_no;
  window.m_icon_type = message_window_t::icon_warning;
  // Over the page's window: a message belongs to the window it came from.
  return show_modal(window, const_cast<experimental_options_panel_t*>(this)) == message_window_t::answer_yes;
}

}  // namespace tamsel3
