#include <tamsel3/advanced_panel.h>
#include <tamsel3/resource.h>

#include <plaxi1/elements.h>
#include <plaxi1/image_loader.h>
#include <plaxi1/ui_settings.h>

#include <wx/sizer.h>

#include <algorithm>
#include <array>
#include <map>

namespace tamsel3 {
namespace {

using namespace plaxi1::elements;

// The content sizer's place in the outer one: all the room, inside the border.
constexpr int content_flags = static_cast<int>(wxEXPAND) | static_cast<int>(wxALL);  // 0x20f0
// What the border is measured from when neither the caption nor the button has a height.
constexpr int default_title_height = 19;
// How far in from the frame's left edge the title starts.
constexpr int title_indent = 19;

// The button's pictures of one state, by the looks that it sets them for.
struct look_t {
  image_state_t state;
  const char* opened;
  const char* closed;
};
constexpr std::array<look_t, 4> button_looks{{
    {image_normal, "advanced_open", "advanced_close"},
    {image_hover, "advanced_open_hovered", "advanced_close_hovered"},
    {image_pressed, "advanced_open_pressed", "advanced_close_pressed"},
    {image_disabled, "advanced_open_disabled", "advanced_close_disabled"},
}};

// Every panel of the process shows the same eight pictures: each is read once, when a
// panel first needs it. Never freed, so that no image outlives the toolkit at exit.
const wxImage& button_picture(const plaxi1::image_loader_t& loader, const std::string& name) {
  static auto* const pictures = new std::map<std::string, wxImage>;
  auto found = pictures->find(name);
  if (found == pictures->end()) {
    found = pictures->emplace(name, loader.load_static_picture(name).getImage(true)).first;
  }
  return found->second;
}

plaxi1::ui_settings_t& settings() { return *plaxi1::ui_settings_t::get(); }

// The colour that a window shows as its ground. A panel without a colour of its own paints
// none under GTK, so its parent's shows, while wx reports the class's default colour for
// it; top-level windows and windows given a colour report what they paint.
wxColour shown_background(const wxWindow* window) {
  for (const wxWindow* shown = window; shown; shown = shown->GetParent()) {
    if (shown->UseBgCol() || shown->IsTopLevel()) {
      return shown->GetBackgroundColour();
    }
  }
  return window->GetBackgroundColour();
}

}  // namespace

wxBEGIN_EVENT_TABLE(advanced_panel_t, wxPanel)
  EVT_SIZE(advanced_panel_t::on_resize)
wxEND_EVENT_TABLE()

advanced_panel_t::advanced_panel_t(wxWindow* parent, const std::string& caption, int id)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxNO_BORDER) {
  init(caption);
}

advanced_panel_t::~advanced_panel_t() = default;

void advanced_panel_t::init(const std::string& caption) {
  SetName("advanced_panel_t");
  SetLabel("advanced_panel_t");
  m_adapter.reset(new ElementAdapter(this));
  m_root = new RectangleElement();
  m_adapter->SetRootElement(m_root);
  build_elements(caption);
  settings().m_changed_signal.connect(this, &advanced_panel_t::apply_colors);
  reset_border();

  auto* outer = new wxBoxSizer(wxVERTICAL);
  m_content_sizer = new wxBoxSizer(wxVERTICAL);
  SetSizer(outer, true);
  add_content_sizer();
  outer->SetSizeHints(this);
  apply_colors();
  Layout();
}

// The frame fills the panel; the title sits on its top line, a little in from the left:
// the button in a holder that keeps it clear of the top, then the caption.
void advanced_panel_t::build_elements(const std::string& caption) {
  const int spacing = settings().get_metric(plaxi1::metric_spacing);
  m_frame = new RectangleElement(m_root, pos_fill_v | pos_expand_h);
  m_frame->SetBorderStyle(border_solid);
  new SpacerElement(m_frame, pos_left | pos_top, wxSize(title_indent, 0));
  m_title_bg = new RectangleElement(m_frame, pos_left | pos_top);
  m_title_bg->SetTestID("advanced_panel_bg_rect");
  new SpacerElement(m_frame, pos_expand_h | pos_center_v);

  new SpacerElement(m_title_bg, pos_left | pos_fill_v, wxSize(0, 0));
  UIElement::ptr_t holder(new UIElement(m_title_bg, pos_left | pos_center_v));
  new SpacerElement(holder, pos_left | pos_top, wxSize(0, 2 * spacing));
  m_button = new IconButton(holder, pos_left | pos_top, 0);
  m_button->SetTestID("advanced_panel_button");
  // No ground of its own in any state of an unselected or selected button: the pictures
  // carry the looks.
  for (int state = 0; state < 8; ++state) {
    m_button->SetColor(state, wxColour());
  }
  m_button->pressed.connect(this, &advanced_panel_t::on_open_close);
  m_button->SetAccessibleName(caption);
  m_button->SetAccessibleExpanded(m_opened);
  set_button_images();

  new SpacerElement(m_title_bg, pos_left | pos_center_v, wxSize(2 * spacing, 0));
  m_caption = new TextElement(m_title_bg, pos_left | pos_center_v, wxString::FromUTF8(caption));
  m_caption->SetTestID("advanced_panel_text");
  new SpacerElement(m_title_bg, pos_left | pos_center_v, wxSize(4 * spacing, 0));
}

void advanced_panel_t::reset_border() {
  int height = std::max(m_caption->GetWantedHeight(), m_button->GetWantedHeight());
  if (height == 0) {
    height = default_title_height;
  }
  m_border = height + 1;
  m_frame->SetMargin(margin_t(m_border / 2));
}

void advanced_panel_t::add_content_sizer() { GetSizer()->Add(m_content_sizer, 1, content_flags, m_border); }

void advanced_panel_t::add(wxWindow* window, int proportion, int flag, int border, wxObject* user_data) {
  if (window) {
    window->Reparent(this);
    m_content_sizer->Add(window, proportion, flag, border, user_data);
    window->Show(m_opened);
  }
  fit_content();
}

void advanced_panel_t::add(wxSizer* sizer, int proportion, int flag, int border, wxObject* user_data) {
  if (sizer) {
    m_content_sizer->Add(sizer, proportion, flag, border, user_data);
    sizer->ShowItems(m_opened);
  }
  fit_content();
}

void advanced_panel_t::fit_content() {
  GetSizer()->SetSizeHints(this);
  // Hidden controls take no room in the sizer: a closed panel keeps the square that
  // shows its title, or a host's layout would squeeze the title away.
  if (!m_opened) {
    update_min_size();
  }
  Layout();
}

void advanced_panel_t::clear() { m_content_sizer->Clear(false); }

void advanced_panel_t::set_caption(const std::string& caption) {
  m_caption->SetText(wxString::FromUTF8(caption));
  reset_border();
  // A sizer item's border can't be changed in place.
  GetSizer()->Detach(m_content_sizer);
  add_content_sizer();
  Refresh();
}

std::string advanced_panel_t::get_caption() const { return m_caption->GetText().utf8_string(); }

void advanced_panel_t::open(bool opened) {
  if (opened != m_opened) {
    on_open_close(0);
  }
}

void advanced_panel_t::on_open_close(int) {
  m_opened = !m_opened;
  m_button->SetAccessibleExpanded(m_opened);
  set_button_images();
  m_content_sizer->ShowItems(m_opened);
  update_min_size();
  if (wxWindow* parent = GetParent()) {
    parent->Layout();
  }
  m_open_signal(m_opened);
}

void advanced_panel_t::update_min_size() {
  SetMinSize(m_opened ? GetSizer()->GetMinSize() : wxSize(2 * m_border, 2 * m_border));
  Layout();
}

void advanced_panel_t::set_button_images() {
  const plaxi1::image_loader_t loader(create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  if (loader.get_location().empty()) {
    return;
  }
  for (const look_t& look : button_looks) {
    m_button->SetImage(look.state, button_picture(loader, m_opened ? look.opened : look.closed));
  }
}

void advanced_panel_t::apply_colors() {
  const wxColour background = shown_background(this);
  m_root->SetBkColor(background);
  m_root->SetBorderColor(background);
  m_frame->SetBkColor(background);
  m_frame->SetBorderColor(settings().get_color(plaxi1::color_border));
  m_title_bg->SetBkColor(background);
  m_title_bg->SetBorderColor(background);
  m_caption->SetFont(settings().get_font(plaxi1::font_normal));
  m_caption->SetColor(settings().get_color(plaxi1::color_heading));
  for (wxSizerItem* item : m_content_sizer->GetChildren()) {
    item->Show(m_opened);
  }
}

bool advanced_panel_t::Enable(bool enable) {
  m_button->Enable(enable);
  m_caption->SetColor(settings().get_color(enable ? plaxi1::color_heading : plaxi1::color_border));
  return wxPanel::Enable(enable);
}

void advanced_panel_t::on_resize(wxSizeEvent&) {
  Layout();
  Refresh();
}

}  // namespace tamsel3
