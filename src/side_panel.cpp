#include <tamsel3/side_panel.h>

#include <plaxi1/elements.h>
#include <plaxi1/ui_settings.h>
#include <zandor/debug.h>

#include <algorithm>

namespace tamsel3 {

namespace {

using namespace plaxi1::elements;

constexpr int area_count = 3;
constexpr int style_count = 3;

// The colours of a button, by state index, in the order they are set. The pressed and
// selected state (5) is set twice to the same colour.
struct state_color_t {
  int state;
  plaxi1::default_colors_t color;
};
constexpr state_color_t button_colors[] = {
    {state_normal, plaxi1::color_button_normal},
    {state_pressed, plaxi1::color_button_pressed},
    {state_hover, plaxi1::color_button_hover},
    {state_selected | state_pressed, plaxi1::color_button_hover},
    {state_selected, plaxi1::color_button_selected},
    {state_selected | state_pressed, plaxi1::color_button_hover},
    {state_disabled, plaxi1::color_button_disabled},
    {state_disabled | state_selected, plaxi1::color_button_disabled},
    {state_disabled | state_hover, plaxi1::color_button_disabled},
};

// A holder keeps its element's place along the vertical axis, and always spans the area.
int holder_flags(int element_flags) {
  if (element_flags & pos_top) {
    return pos_expand_h | pos_top;
  }
  if (element_flags & pos_center_v) {
    return pos_expand_h | pos_center_v;
  }
  if (element_flags & pos_fill_v) {
    return pos_expand_h | pos_fill_v;
  }
  return (element_flags & pos_bottom) ? pos_expand_h | pos_bottom : pos_expand_h;
}

bool is_common_style(int style) {
  return style == side_panel_t::button_style_normal || style == side_panel_t::button_style_large;
}

}  // namespace

side_panel_t::side_panel_t(wxWindow* parent, int id)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxNO_BORDER) {
  init();
}

// The adapter goes first: it stops drawing the tree that the panel's members still hold.
side_panel_t::~side_panel_t() { m_adapter.reset(); }

void side_panel_t::init() {
  SetName("side_panel_t");
  SetLabel("side_panel_t");
  m_holder_spacing = wxSize(5, 10);
  m_button_border = wxSize(2, 2);
  m_adapter.reset(new ElementAdapter(this));
  m_bg = new BgImageElement();
  m_adapter->SetRootElement(m_bg);
  m_areas.resize(area_count);
  m_buttons.resize(style_count);
  m_sizes.resize(style_count);

  // In the order of the screen: a 5-pixel margin left, the three areas, a margin right.
  new SpacerElement(m_bg, pos_left | pos_top, wxSize(5, 0));
  m_areas[area_top] = new UIElement(m_bg, pos_expand_h | pos_top);
  m_areas[area_middle] = new UIElement(m_bg, pos_expand_h | pos_fill_v);
  m_areas[area_bottom] = new UIElement(m_bg, pos_expand_h | pos_bottom);
  new SpacerElement(m_bg, pos_right | pos_top, wxSize(5, 0));

  plaxi1::ui_settings_t::get()->m_changed_signal.connect(this, &side_panel_t::on_update_ui_settings);
  calc_new_sizes();
}

side_panel_t::element_ptr_t side_panel_t::create_holder_element(area_type_t area, int position_flags) {
  element_ptr_t holder(new UIElement(m_areas[area], holder_flags(position_flags)));
  new SpacerElement(holder, pos_expand_h | pos_top, m_holder_spacing);
  return holder;
}

void side_panel_t::add_element(const element_ptr_t& element, area_type_t area) {
  if (!element) {
    ZANDOR_REPORT("element != nullptr");
    return;
  }
  element->ChangeParent(create_holder_element(area, element->GetPositionFlags()));
  element->visibility_changed.connect(this, &side_panel_t::on_element_hidden);
  update_panel_min_size();
}

side_panel_t::button_ptr_t side_panel_t::add_button(const wxString& text, const plaxi1::picture_t& picture,
                                                    button_style_t style) {
  button_ptr_t button(new RoundBgButton(m_areas[area_middle], pos_left | pos_top, 0, false));
  init_button(button, text, picture, style);
  add_button(button, area_middle, style);
  return button;
}

void side_panel_t::init_button(const button_ptr_t& button, const wxString& text,
                               const plaxi1::picture_t& picture, button_style_t /*style*/) {
  if (picture.is_animation()) {
    button->SetAnimation(picture.get_animation(), picture.get_animation_2x());
  } else if (!picture.is_empty() && picture.is_image()) {
    button->SetImage(picture.get_image().getImage(true));
  }
  button->GetText()->SetText(text);
  button->SetTestID(text.utf8_string());
}

void side_panel_t::add_button(const button_ptr_t& button, area_type_t area, button_style_t style) {
  if (!button) {
    ZANDOR_REPORT("button != nullptr");
    return;
  }
  button->ChangeParent(create_holder_element(area, button->GetPositionFlags()));
  setup_button_style(button, style);
  button->SetTestID(button->GetText()->GetText().utf8_string());
}

side_panel_t::element_ptr_t side_panel_t::get_area(area_type_t area) { return m_areas[area]; }

void side_panel_t::setup_button_style(const button_ptr_t& button, button_style_t style) {
  button->visibility_changed.connect(this, &side_panel_t::on_element_hidden);
  button->SetPressingMode(press_on_release);
  button->GetText()->SetTextTruncation(false);
  button->SetBorderSize(m_button_border);
  set_button_font_and_color(button, style);
  m_buttons[style].push_back(button);
  set_up_button_size(button, style);
}

void side_panel_t::calc_new_sizes() {
  m_sizes[button_style_normal] = wxSize(100, 23);
  m_sizes[button_style_large] = wxSize(160, 46);
  m_sizes[button_style_own] = wxSize(-1, -1);
  for (const button_style_t style : {button_style_normal, button_style_large}) {
    wxSize& common = m_sizes[style];
    // The size that each button asks for, not the common size that it was given.
    for (const button_ptr_t& button : m_buttons[style]) {
      const wxSize wanted = button->GetNaturalSize();
      common.x = std::max(common.x, wanted.x);
      common.y = std::max(common.y, wanted.y);
    }
  }
}

void side_panel_t::update_button_sizes() {
  for (const button_style_t style : {button_style_normal, button_style_large}) {
    for (const button_ptr_t& button : m_buttons[style]) {
      button->SetFixedSize(m_sizes[style]);
    }
  }
}

void side_panel_t::set_up_button_size(const button_ptr_t& button, button_style_t style) {
  if (is_common_style(style)) {
    const wxSize before = m_sizes[style];
    calc_new_sizes();
    if (m_sizes[style] == before) {
      button->SetFixedSize(m_sizes[style]);
    } else {
      update_button_sizes();
    }
  }
  update_panel_min_size();
}

void side_panel_t::update_panel_min_size() {
  const korvat2::intrusive_pointer_t<plaxi1::elements::Layout> layout = m_bg->GetLayout();
  SetMinSize(layout->GetMinSize());
}

void side_panel_t::on_element_hidden(const element_ptr_t& element) {
  if (element->m_parent) {
    element->m_parent->SetVisible(element->IsVisible());
  }
  Refresh();
}

void side_panel_t::on_update_ui_settings() {
  update_button_colors();
  calc_new_sizes();
  update_button_sizes();
  update_panel_min_size();
}

void side_panel_t::update_button_colors() {
  for (const button_style_t style : {button_style_normal, button_style_large}) {
    for (const button_ptr_t& button : m_buttons[style]) {
      set_button_font_and_color(button, style);
    }
  }
}

void side_panel_t::set_button_font_and_color(const button_ptr_t& button, button_style_t style) {
  const auto settings = plaxi1::ui_settings_t::get();
  if (style == button_style_normal) {
    button->GetText()->SetFont(settings->get_font(plaxi1::font_normal));
  } else if (style == button_style_large) {
    button->GetText()->SetFont(settings->get_font(plaxi1::font_large));
  }
  for (const state_color_t& entry : button_colors) {
    button->SetColor(entry.state, settings->get_color(entry.color));
  }
}

void side_panel_t::set_bg_image(const wxImage& image) {
  set_bg_static_picture(plaxi1::wxStaticPicture(image));
}

void side_panel_t::set_bg_static_picture(const plaxi1::wxStaticPicture& picture) {
  m_bg_picture = picture;
  m_bg->SetBgStaticPicture(picture);
}

wxImage side_panel_t::get_bg_image() const { return m_bg_picture.getImage(true); }

void side_panel_t::set_bg_color(const wxColour& color) { m_bg->SetBkColor(color); }

wxColour side_panel_t::get_bg_color() const { return m_bg->GetBkColor(); }

}  // namespace tamsel3
