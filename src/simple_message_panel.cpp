
#include <tamsel3/caption_panel.h>
#include <tamsel3/simple_message_panel.h>
#include <tamsel3/text_helpers.h>
#include "caption_panel_p.h"
#include "picture_names_p.h"

#include <a11y/native.h>
#include <plaxi1/element_adapter.h>
#include <plaxi1/element_shapes.h>
#include <plaxi1/ui_settings.h>

#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

namespace tamsel3 {
namespace {

const char* severity_picture_name(simple_message_panel_t::severity_t severity) {
  switch (severity) {
    case simple_message_panel_t::severity_critical: return "severity_critical";
    case simple_message_panel_t::severity_error: return "severity_error";
    case simple_message_panel_t::severity_warning: return "severity_warn";
    default: return "severity_info";
  }
}

}  // namespace

simple_message_panel_t::simple_message_panel_t(wxWindow* parent)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxNO_BORDER) {
  plaxi1::ui_settings_t::get()->m_changed_signal.connect(this,
                                                         &simple_message_panel_t::handle_ui_settings_changed);
  m_rectangle = new plaxi1::elements::RectangleElement();
  m_rectangle->ShowBorder(true);
  m_adapter.reset(new plaxi1::elements::ElementAdapter(this));
  m_adapter->SetRootElement(m_rectangle);

  auto* sizer = new wxBoxSizer(wxHORIZONTAL);
  sizer->Add(5, 0);
  m_icon_control = new wxStaticBitmap(this, wxID_ANY, wxNullBitmap);
  sizer->Add(m_icon_control, 0, wxLEFT | wxRIGHT | wxTOP, 5);
  m_label = new caption_label_t(this, "", this);
  m_label->m_max_lines = 2;
  // Stretched across the height; an alignment would be ignored beside wxEXPAND.
  sizer->Add(m_label, wxSizerFlags(1).Expand().Border(wxRIGHT | wxTOP | wxBOTTOM, 5));

  Bind(wxEVT_SIZE, &simple_message_panel_t::on_size, this);
  SetSizer(sizer);
  on_ui_changed();
}

simple_message_panel_t::~simple_message_panel_t() { m_adapter.reset(); }

void simple_message_panel_t::on_ui_changed() {
  // Over the window it sits on, as the caption panel's message pane: the same colour in
  // themes whose tooltip colour is translucent.
  const wxColour ground =
      GetParent() ? GetParent()->GetBackgroundColour() : wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
  const wxColour background = opaque_info_background(ground);
  SetBackgroundColour(background);
  m_rectangle->SetBkColor(background);
  m_rectangle->SetBorderColor(wxSystemSettings::GetColour(wxSYS_COLOUR_INACTIVECAPTION));
  // Tooltip backgrounds are dark in some themes: the text takes the tooltips' colour.
  m_label->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_INFOTEXT));
  m_label->update_delta(0);
}

// A theme change also changes how much text fits a line: the text wraps again at once.
void simple_message_panel_t::handle_ui_settings_changed() {
  on_ui_changed();
  wrap_label(GetSize().GetWidth());
  if (GetParent()) {
    GetParent()->Layout();
  }
}

void simple_message_panel_t::set_message(severity_t severity, const std::string& text) {
  if (text.empty()) {
    Hide();
    return;
  }
  const plaxi1::image_loader_t loader = caption_images_loader();
  m_icon_control->SetBitmap(loader.load_static_picture(severity_picture_name(severity)).getBundle());
  a11y::set_name(m_icon_control, wxString::FromUTF8(picture_name(severity_kind(severity))));
  m_label->m_text = text;
  set_tooltip(text, m_label);
}

void simple_message_panel_t::enable(bool show) { Show(show); }

void simple_message_panel_t::on_size(wxSizeEvent& event) {
  wrap_label(event.GetSize().GetWidth());
  event.Skip();
}

// The room around the label is known only once the sizer has placed it at this width; the
// delta taken when the panel was built, before any layout, falls short of it, and the
// label would then cut the lines that it wraps again by itself.
void simple_message_panel_t::wrap_label(int width) {
  if (!IsShown()) {
    return;
  }
  Layout();
  m_label->update_delta(0);
  if (m_label->wrap_to_width(width) && m_label->GetParent()) {
    m_label->GetParent()->Layout();
  }
}

}  // namespace tamsel3
