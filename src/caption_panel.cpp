#include "caption_panel_p.h"
#include "picture_names_p.h"

#include <tamsel3/caption_panel.h>
#include <tamsel3/resource.h>
#include <tamsel3/text_helpers.h>

#include <a11y/native.h>
#include <plaxi1/element_adapter.h>
#include <plaxi1/element_flags.h>
#include <plaxi1/element_shapes.h>
#include <plaxi1/icon_button.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <quern2/product_locations.h>
#include <zandor/debug.h>

#include <wx/dcclient.h>
#include <wx/event.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include <algorithm>
#include <array>

namespace tamsel3 {
namespace {

// Every label wraps to this many lines, whatever its m_max_lines says.
constexpr unsigned long wrap_lines = 5;
// The message pane sits this far right of the caption's left edge.
constexpr int message_indent = 50;
// Room under the texts that the height floor keeps.
constexpr int height_floor_room = 30;
constexpr int scroll_image_side = 15;

// The pictures that get_picture keeps for the process, by severity value.
struct severity_pictures_t {
  bool loaded = false;
  std::array<plaxi1::wxStaticPicture, 4> pictures;
};

severity_pictures_t& severity_pictures() {
  static severity_pictures_t instance;
  return instance;
}

int severity_index(caption_panel_t::severity_t severity) {
  switch (severity) {
    case caption_panel_t::severity_critical:
    case caption_panel_t::severity_error:
    case caption_panel_t::severity_warning:
    case caption_panel_t::severity_information: return severity;
    default: return caption_panel_t::severity_warning;
  }
}

wxColour frame_colour() { return wxSystemSettings::GetColour(wxSYS_COLOUR_INACTIVECAPTION); }

// A bordered rectangle as the root of a new adapter on `window`.
korvat2::intrusive_pointer_t<plaxi1::elements::RectangleElement> paint_frame(
    wxWindow* window, korvat2::smart_pointer_t<plaxi1::elements::ElementAdapter>& adapter) {
  korvat2::intrusive_pointer_t<plaxi1::elements::RectangleElement> rectangle(
      new plaxi1::elements::RectangleElement());
  rectangle->ShowBorder(true);
  adapter.reset(new plaxi1::elements::ElementAdapter(window));
  adapter->SetRootElement(rectangle);
  return rectangle;
}

}  // namespace

plaxi1::image_loader_t caption_images_loader() {
  const char* directory = quern2::IProductLocations::get()->getResourceDirectory();
  if (!directory || !*directory) {
    return plaxi1::image_loader_t(std::string());
  }
  return plaxi1::image_loader_t(create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
}

wxColour opaque_info_background(const wxColour& ground) {
  const wxColour info = wxSystemSettings::GetColour(wxSYS_COLOUR_INFOBK);
  const int alpha = info.Alpha();
  const auto mix = [alpha](int over, int under) {
    return (over * alpha + under * (255 - alpha) + 127) / 255;
  };
  return wxColour(mix(info.Red(), ground.Red()), mix(info.Green(), ground.Green()),
                  mix(info.Blue(), ground.Blue()));
}

void forget_severity_pictures() { severity_pictures() = severity_pictures_t(); }

// ---------------------------------------------------------------------------------------
// caption_label_t

caption_label_t::caption_label_t(wxWindow* parent, const std::string& text,
                                 wxWindow* window_for_get_parent_size)
    : wxStaticText(parent, wxID_ANY, wxString::FromUTF8(text)),
      m_text(text),
      m_window_for_get_parent_size(window_for_get_parent_size) {
  ZANDOR_ASSERT(m_window_for_get_parent_size != 0);
  // The base measured the text while it was being built, before this class could answer.
  InvalidateBestSize();
}

void caption_label_t::update_delta(int extra) {
  const int reference = m_window_for_get_parent_size ? m_window_for_get_parent_size->GetSize().GetWidth() : 0;
  m_delta = std::max(m_delta, extra + reference - GetSize().GetWidth());
}

bool caption_label_t::wrap_to_width(int width) {
  const int w = width - m_delta;
  if (w < -1) {
    return false;
  }
  wxClientDC dc(this);
  dc.SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal));
  unsigned long lines = 1;
  const std::string wrapped = plaxi1::wrap_text(m_text, w, this, lines, wrap_lines, &dc);
  SetLabelText(wxString::FromUTF8(wrapped));
  const bool changed = static_cast<int>(lines) != m_lines;
  m_lines = static_cast<int>(lines);
  return changed;
}

wxSize caption_label_t::DoGetBestSize() const {
  const wxSize best(0, wxStaticText::DoGetBestSize().GetHeight());
  CacheBestSize(best);
  return best;
}

void caption_label_t::DoSetSize(int x, int y, int width, int height, int) {
  wxStaticText::DoSetSize(x, y, width, height, wxSIZE_AUTO_HEIGHT);
}

// ---------------------------------------------------------------------------------------
// caption_panel_t: building

caption_panel_t::caption_panel_t(wxWindow* parent, const std::string& caption, const std::string& description)
    : panel_t(parent, wxID_ANY) {
  init(caption, description);
}

caption_panel_t::caption_panel_t(wxWindow* parent) : panel_t(parent, wxID_ANY) {}

caption_panel_t::~caption_panel_t() {
  // The adapters paint into windows that are going; they go first.
  m_message_adapter.reset();
  m_top_adapter.reset();
}

void caption_panel_t::init(const std::string& caption, const std::string& description) {
  plaxi1::ui_settings_t::get()->m_changed_signal.connect(this, &caption_panel_t::handle_ui_settings_changed);
  m_top_rectangle = paint_frame(this, m_top_adapter);
  auto* main_sizer = new wxBoxSizer(wxVERTICAL);
  main_sizer->Add(create_top_controls(caption, description), 0, wxEXPAND, 0);
  set_style(plaxi1::style_t::create_dialog_style());
  create_message_pane();
  main_sizer->Add(m_message_sizer, wxSizerFlags(1).Expand().Border(wxTOP, 5));
  SetSizer(main_sizer);
  main_sizer->Fit(this);
  Bind(wxEVT_SIZE, &caption_panel_t::on_size, this);
  on_ui_changed();
}

void caption_panel_t::create_message_pane() {
  m_message_sizer = new wxBoxSizer(wxHORIZONTAL);
  m_message_pane =
      new wxPanel(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxNO_BORDER);
  m_message_rectangle = paint_frame(m_message_pane, m_message_adapter);

  auto* pane_sizer = new wxBoxSizer(wxHORIZONTAL);
  // Stretched across the pane's height; an alignment would be ignored beside wxEXPAND.
  const wxSizerFlags flags = wxSizerFlags().Expand().Border(wxRIGHT | wxTOP | wxBOTTOM, 5);
  m_message_icon = new wxStaticBitmap(m_message_pane, wxID_ANY, wxNullBitmap);
  pane_sizer->Add(m_message_icon, 0, wxLEFT | wxRIGHT | wxTOP, 5);
  m_message_label = new caption_label_t(m_message_pane, "", this);
  pane_sizer->Add(m_message_label, wxSizerFlags(flags).Proportion(1));
  const wxSize image_size(scroll_image_side, scroll_image_side);
  m_prev_button =
      new plaxi1::wxIconButton(m_message_pane, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, image_size);
  m_next_button =
      new plaxi1::wxIconButton(m_message_pane, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, image_size);
  pane_sizer->Add(m_prev_button, flags);
  pane_sizer->Add(m_next_button, flags);
  m_prev_button->clicked.connect(this, &caption_panel_t::show_prev_message);
  m_next_button->clicked.connect(this, &caption_panel_t::show_next_message);
  // They show pictures only: screen readers read their labels.
  m_prev_button->SetLabel(wxString::FromUTF8(translate_message("msg.previous_message", {})));
  m_next_button->SetLabel(wxString::FromUTF8(translate_message("msg.next_message", {})));
  a11y::native_button(m_prev_button, [this] { show_prev_message(); });
  a11y::native_button(m_next_button, [this] { show_next_message(); });
  set_button_images();

  m_message_pane->SetSizer(pane_sizer);
  pane_sizer->Fit(m_message_pane);
  m_message_pane->Hide();
  m_message_sizer->Add(message_indent, 0, 0, wxEXPAND);
  m_message_sizer->Add(m_message_pane, 1);
}

wxSizer* caption_panel_t::create_top_controls(const std::string& caption, const std::string& description) {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  auto* caption_row = new wxBoxSizer(wxHORIZONTAL);
  caption_row->Add(7, 0);
  m_caption = new caption_label_t(this, caption, this);
  m_caption->m_max_lines = 1;
  caption_row->Add(m_caption, wxSizerFlags(1).CentreVertical().Border(wxALL, 5));
  sizer->Add(caption_row, 0, wxEXPAND);

  auto* description_row = new wxBoxSizer(wxHORIZONTAL);
  description_row->Add(7, 0);
  m_description = new caption_label_t(this, description, this);
  m_description->m_max_lines = 5;
  description_row->Add(m_description, 1, wxLEFT | wxRIGHT | wxBOTTOM, 5);
  sizer->Add(description_row, 0, wxEXPAND);
  return sizer;
}

void caption_panel_t::set_button_images() {
  const plaxi1::image_loader_t loader = caption_images_loader();
  if (loader.get_location().empty() || !m_prev_button || !m_next_button) {
    return;
  }
  struct row_t {
    int state;
    const char* prev;
    const char* next;
  };
  // The left button shows its disabled image in the normal state too.
  static const row_t rows[] = {
      {plaxi1::elements::image_normal, "scroll_left_disabled", "scroll_right_normal"},
      {plaxi1::elements::image_hover, "scroll_left_hover", "scroll_right_hover"},
      {plaxi1::elements::image_pressed, "scroll_left_pressed", "scroll_right_pressed"},
      {plaxi1::elements::image_disabled, "scroll_left_disabled", "scroll_right_disabled"},
  };
  for (const row_t& row : rows) {
    m_prev_button->SetImage(row.state, loader.load_static_picture(row.prev).getImage(true));
    m_next_button->SetImage(row.state, loader.load_static_picture(row.next).getImage(true));
  }
}

plaxi1::wxStaticPicture caption_panel_t::get_picture(severity_t severity) {
  severity_pictures_t& kept = severity_pictures();
  if (!kept.loaded) {
    const plaxi1::image_loader_t loader = caption_images_loader();
    if (loader.get_location().empty()) {
      return {};
    }
    static const char* const names[] = {"severity_critical", "severity_error", "severity_warn",
                                        "severity_info"};
    for (std::size_t i = 0; i < kept.pictures.size(); ++i) {
      kept.pictures[i] = loader.load_static_picture(names[i]);
    }
    kept.loaded = true;
  }
  return kept.pictures[severity_index(severity)];
}

// ---------------------------------------------------------------------------------------
// caption_panel_t: looks and sizes

void caption_panel_t::set_style(plaxi1::style_t style) {
  const korvat2::intrusive_pointer_t<plaxi1::ui_settings_t> settings = plaxi1::ui_settings_t::get();
  const wxColour background = settings->get_color(style.m_color);
  if (m_caption) {
    m_caption->SetFont(settings->get_font(plaxi1::font_bold));
    m_caption->SetBackgroundColour(background);
  }
  if (m_description) {
    m_description->SetFont(settings->get_font(plaxi1::font_normal));
    m_description->SetBackgroundColour(background);
  }
  if (m_message_label) {
    m_message_label->SetFont(settings->get_font(plaxi1::font_normal));
  }
}

void caption_panel_t::on_ui_changed() {
  const plaxi1::style_t style = plaxi1::style_t::create_dialog_style();
  const wxColour ground = plaxi1::ui_settings_t::get()->get_color(style.m_color);
  if (m_top_rectangle) {
    m_top_rectangle->SetBkColor(ground);
    m_top_rectangle->SetBorderColor(frame_colour());
  }
  if (m_message_pane) {
    m_message_pane->SetBackgroundColour(opaque_info_background(ground));
  }
  if (m_message_label) {
    // Tooltip backgrounds are dark in some themes: the text takes the tooltips' colour.
    m_message_label->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_INFOTEXT));
  }
  if (m_message_rectangle) {
    m_message_rectangle->SetBkColor(opaque_info_background(ground));
    m_message_rectangle->SetBorderColor(frame_colour());
  }
  for (plaxi1::wxIconButton* button : {m_prev_button, m_next_button}) {
    if (button) {
      button->SetBackgroundColour(opaque_info_background(ground));
    }
  }
  set_style(style);
  Layout();
  if (!m_message_icon || !m_message_label || !m_description || !m_caption) {
    return;
  }
  int extra = m_message_icon->GetSize().GetWidth();
  if (m_prev_button && m_prev_button->IsShown()) {
    extra += 2 * m_prev_button->GetSize().GetWidth() + 10;
  }
  m_message_label->update_delta(extra);
  m_description->update_delta(0);
  m_caption->update_delta(0);
}

// A theme change also changes how much text fits a line: the labels wrap again, as at a
// change of size, and the host lays out around the new height.
void caption_panel_t::handle_ui_settings_changed() {
  on_ui_changed();
  wxSizeEvent event(GetSize(), GetId());
  event.SetEventObject(this);
  on_size(event);
  layout_parent();
}

void caption_panel_t::on_size(wxSizeEvent& event) {
  event.Skip();
  if (m_in_on_size || !m_description || !m_message_pane || !m_message_label || !m_caption || !m_prev_button) {
    return;
  }
  m_in_on_size = true;
  const int width = event.GetSize().GetWidth();
  const bool description_changed = m_description->wrap_to_width(width);
  const bool message_changed = m_message_pane->IsShown() && m_message_label->wrap_to_width(width);
  m_caption->wrap_to_width(width);

  update_height_floor();
  if (description_changed || message_changed) {
    // The parent may be placing its children now, from this panel's old height, and would
    // put back those places after a layout run from here: it lays out once it's done.
    CallAfter(&caption_panel_t::layout_parent);
  }
  m_in_on_size = false;
}

void caption_panel_t::update_height_floor() {
  if (!m_description || !m_message_pane || !m_message_label || !m_caption || !m_prev_button) {
    return;
  }
  // The heights the texts need, which the layout may not have given them yet.
  int floor =
      m_caption->GetBestSize().GetHeight() + m_description->GetBestSize().GetHeight() + height_floor_room;
  if (m_message_pane->IsShown()) {
    floor += std::max(m_message_label->GetBestSize().GetHeight(), m_prev_button->GetBestSize().GetHeight());
  }
  SetMinSize(wxSize(-1, floor));
}

// The floor follows each change of the texts and of the pane, not only changes of size:
// else the host would keep the old height, and clip the pane that just came on show.
void caption_panel_t::layout_parent() {
  update_height_floor();
  if (GetParent()) {
    GetParent()->Layout();
  }
}

// ---------------------------------------------------------------------------------------
// caption_panel_t: texts and states

void caption_panel_t::set_caption(const std::string& text) { show_label_text(m_caption, text); }

void caption_panel_t::set_description(const std::string& text) { show_label_text(m_description, text); }

void caption_panel_t::show_label_text(caption_label_t* label, const std::string& text) {
  if (!label) {
    return;
  }
  label->m_text = text;
  set_tooltip(text, label);
  label->wrap_to_width(GetSize().GetWidth());
  layout_parent();
}

void caption_panel_t::set_read_only(bool read_only) {
  m_read_only = read_only;
  if (m_message_pane) {
    m_message_pane->Show(!read_only);
    layout_parent();
  }
}

bool caption_panel_t::get_read_only() const { return m_read_only; }

void caption_panel_t::disable() {
  if (m_message_pane) {
    m_message_pane->Hide();
    layout_parent();
  }
  m_disabled = true;
}

// ---------------------------------------------------------------------------------------
// caption_panel_t: the message list

std::vector<caption_panel_t::message_info_t>::iterator caption_panel_t::find_message(int id) {
  return std::find_if(m_messages.begin(), m_messages.end(),
                      [id](const message_info_t& m) { return m.m_id == id; });
}

std::vector<caption_panel_t::message_info_t>::const_iterator caption_panel_t::find_message(int id) const {
  return std::find_if(m_messages.begin(), m_messages.end(),
                      [id](const message_info_t& m) { return m.m_id == id; });
}

int caption_panel_t::add_message(severity_t severity, const std::string& text) {
  const int id = m_next_id++;
  auto place = m_messages.end();
  for (int value = severity + 1; value <= severity_information && place == m_messages.end(); ++value) {
    place = std::find_if(m_messages.begin(), m_messages.end(),
                         [value](const message_info_t& m) { return m.m_severity == value; });
  }
  bool show_first = false;
  message_info_t message;
  message.m_id = id;
  message.m_severity = severity;
  message.m_text = text;
  if (place != m_messages.end()) {
    ZANDOR_ASSERT(m_messages.size() > 0);
    show_first = severity < m_messages.front().m_severity;
    m_messages.insert(place, message);
  } else {
    show_first = m_messages.empty();
    m_messages.push_back(message);
  }
  if (show_first) {
    show_message(id, true);
  }
  return id;
}

void caption_panel_t::edit_message(int id, const std::string& text) {
  const auto found = find_message(id);
  if (found == m_messages.end()) {
    return;
  }
  found->m_text = text;
  if (id == m_current_id) {
    show_message(id, false);
  }
}

caption_panel_t::message_info_t caption_panel_t::get_message(int id) const {
  const auto found = find_message(id);
  return found == m_messages.end() ? message_info_t() : *found;
}

void caption_panel_t::remove_message(int id) {
  const auto found = find_message(id);
  if (found == m_messages.end()) {
    return;
  }
  m_messages.erase(found);
  if (id != m_current_id) {
    return;
  }
  if (!m_messages.empty()) {
    // A hidden pane stays hidden, and the erased id stays the current one.
    if (m_message_pane && m_message_pane->IsShown()) {
      show_message(m_messages.front().m_id, true);
    }
    return;
  }
  update_buttons();
  if (m_message_pane) {
    m_message_pane->Hide();
  }
  m_current_id = -1;
  layout_parent();
}

void caption_panel_t::clear_messages() { m_messages.clear(); }

int caption_panel_t::get_message_id(int index) const {
  if (index < 0 || index >= static_cast<int>(m_messages.size())) {
    return -1;
  }
  return m_messages[index].m_id;
}

int caption_panel_t::get_message_index(int id) const {
  ZANDOR_ASSERT(id >= 0);
  if (id < 0) {
    return -1;
  }
  const auto found = find_message(id);
  return found == m_messages.end() ? -1 : static_cast<int>(found - m_messages.begin());
}

void caption_panel_t::show_message(int id, bool force) {
  const auto found = find_message(id);
  if (found == m_messages.end() || found->m_text.empty()) {
    return;
  }
  const message_info_t message = *found;
  // A message of id 0 on show counts as none.
  const int current_index = m_current_id > 0 ? get_message_index(m_current_id) : -1;
  if (!force && id != m_current_id && m_current_id != -1 && current_index != -1 &&
      m_messages[current_index].m_severity <= message.m_severity) {
    return;
  }
  m_current_id = id;
  const bool changed = update_buttons();
  m_in_on_size = false;
  if (!m_message_pane || !m_message_icon || !m_message_label || !m_prev_button) {
    return;
  }
  m_message_icon->SetBitmap(get_picture(message.m_severity).getBundle());
  a11y::set_name(m_message_icon, wxString::FromUTF8(picture_name(severity_kind(message.m_severity))));
  m_message_label->m_text = message.m_text;
  set_tooltip(message.m_text, m_message_label);

  const int extra = m_prev_button->IsShown() ? 2 * m_prev_button->GetSize().GetWidth() + 5 : 0;
  m_message_label->wrap_to_width(GetClientSize().GetWidth() - extra);
  m_message_pane->Layout();
  const bool was_shown = m_message_pane->IsShown();
  if (!m_disabled) {
    m_message_pane->Show();
  }
  if (changed || was_shown != m_message_pane->IsShown()) {
    on_ui_changed();
  }
  layout_parent();
  Layout();
}

bool caption_panel_t::update_buttons() {
  if (!m_prev_button || !m_next_button) {
    return false;
  }
  const bool want = m_messages.size() > 1;
  if (m_prev_button->IsShown() == want) {
    return false;
  }
  m_prev_button->Show(want);
  m_next_button->Show(want);
  return true;
}

void caption_panel_t::show_at_offset(int offset) {
  if (m_messages.empty() || m_current_id < 0) {
    return;
  }
  const int index = get_message_index(m_current_id);
  if (index < 0) {
    return;
  }
  const int count = static_cast<int>(m_messages.size());
  show_message(m_messages[(index + offset + count) % count].m_id, true);
}

void caption_panel_t::show_next_message() { show_at_offset(1); }

void caption_panel_t::show_prev_message() { show_at_offset(-1); }

void caption_panel_t::hide_message_pane() { m_current_id = -1; }

}  // namespace tamsel3
