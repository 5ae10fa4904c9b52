// A host window with a side panel: three large tabs with pictures (one of them busy with
// the library's progress animation), two small ones at the bottom, a product line above and
// a version line below, over a gradient drawn for the theme. A click selects the tab and
// the host area says which button was pressed.
#include "entries.h"

#include <plaxi1/elements.h>
#include <plaxi1/image_loader.h>
#include <plaxi1/screenshot.h>
#include <plaxi1/style.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/resource.h>
#include <tamsel3/side_panel.h>

#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/graphics.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace gallery {
namespace {

using plaxi1::elements::RoundBgButton;
using plaxi1::elements::TextElement;
using tamsel3::side_panel_t;

using draw_t = std::function<void(wxGraphicsContext& gc, const wxColour& ink)>;

// A picture of 24 logical pixels, drawn at 1x and at 2x, with room at its left so that it
// stands clear of the button's rounded edge.
plaxi1::wxStaticPicture icon(const draw_t& draw) {
  constexpr int side = 24;
  constexpr int inset = 6;
  const auto settings = plaxi1::ui_settings_t::get();
  const wxColour highlight = settings->get_color(plaxi1::color_highlight);
  // On a dark theme the selection colour is too deep to read on the buttons: lighten it.
  const wxColour window = settings->get_color(plaxi1::color_window);
  const wxColour ink =
      window.GetLuminance() < 0.5
          ? plaxi1::color_helpers_t::make_gradient(highlight, settings->get_color(plaxi1::color_text), 0.4)
          : highlight;
  wxImage forms[2];
  for (int scale = 1; scale <= 2; ++scale) {
    wxImage image((side + inset) * scale, side * scale);
    image.InitAlpha();
    std::fill_n(image.GetAlpha(), image.GetWidth() * image.GetHeight(), 0);
    std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(image));
    gc->Scale(scale, scale);
    gc->Translate(inset, 0);
    draw(*gc, ink);
    gc.reset();  // the drawing lands in the image when the context goes
    forms[scale - 1] = image;
  }
  return plaxi1::wxStaticPicture(forms[0], forms[1]);
}

// Four tiles of a dashboard.
void draw_overview(wxGraphicsContext& gc, const wxColour& ink) {
  gc.SetPen(*wxTRANSPARENT_PEN);
  gc.SetBrush(wxBrush(ink));
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 2; ++column) {
      gc.DrawRoundedRectangle(3 + column * 10, 3 + row * 10, 8, 8, 2);
    }
  }
}

// A rising line over a base line.
void draw_trends(wxGraphicsContext& gc, const wxColour& ink) {
  gc.SetPen(wxPen(ink, 2));
  wxGraphicsPath path = gc.CreatePath();
  path.MoveToPoint(3, 17);
  path.AddLineToPoint(9, 11);
  path.AddLineToPoint(13, 14);
  path.AddLineToPoint(21, 5);
  gc.StrokePath(path);
  gc.StrokeLine(3, 21, 21, 21);
}

// The panel's background: the dialog face, a shade lighter towards the top.
wxImage background() {
  const auto settings = plaxi1::ui_settings_t::get();
  const wxColour face = settings->get_color(plaxi1::color_dialog);
  const wxColour top =
      plaxi1::color_helpers_t::make_gradient(face, settings->get_color(plaxi1::color_window), 0.6);
  wxImage image(8, 256);
  for (int y = 0; y < image.GetHeight(); ++y) {
    const wxColour c = plaxi1::color_helpers_t::make_gradient(top, face, y / 255.0);
    image.SetRGB(wxRect(0, y, 8, 1), c.Red(), c.Green(), c.Blue());
  }
  return image;
}

class side_panel_window_t : public wxFrame, public korvat2::subscriber_base_t {
 public:
  explicit side_panel_window_t(wxWindow* parent)
      : wxFrame(parent, wxID_ANY, "Memory Analyzer: r004mi", wxDefaultPosition, wxDefaultSize) {
    m_panel = new side_panel_t(this, wxID_ANY);
    m_panel->SetBgImage(background());
    fill_panel();

    auto* host = new wxPanel(this);
    m_heading = new wxStaticText(host, wxID_ANY, "");
    m_heading->SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_large));
    m_pressed = new wxStaticText(host, wxID_ANY, "No button pressed yet.");
    auto* text = new wxBoxSizer(wxVERTICAL);
    text->Add(m_heading, 0, wxBOTTOM, 8);
    text->Add(m_pressed, 0);
    host->SetSizer(text);
    auto* sizer = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(m_panel, 0, wxEXPAND);
    sizer->Add(host, 1, wxEXPAND | wxALL, 16);
    SetSizer(sizer);
    SetClientSize(wxSize(620, 440));
    select(0);
  }

 private:
  void fill_panel() {
    const auto settings = plaxi1::ui_settings_t::get();
    const korvat2::intrusive_pointer_t<TextElement> product(
        new TextElement(nullptr, plaxi1::elements::pos_top, "Memory Analyzer"));
    product->SetFont(settings->get_font(plaxi1::font_bold));
    m_panel->add_element(product, side_panel_t::area_top);

    const plaxi1::image_loader_t loader(
        tamsel3::create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
    add_tab(m_panel->add_button("Overview", icon(draw_overview), side_panel_t::button_style_large));
    add_tab(m_panel->add_button("Findings", loader.load_animated_picture("progress"),
                                side_panel_t::button_style_large));
    add_tab(m_panel->add_button("Trends", icon(draw_trends), side_panel_t::button_style_large));
    for (const char* text : {"Settings", "Help"}) {
      const side_panel_t::button_ptr_t button(
          new RoundBgButton(nullptr, plaxi1::elements::pos_left | plaxi1::elements::pos_top, 0, false));
      button->GetText()->SetText(text);
      m_panel->add_button(button, side_panel_t::area_bottom, side_panel_t::button_style_normal);
      add_tab(button);
    }

    const korvat2::intrusive_pointer_t<TextElement> version(
        new TextElement(nullptr, plaxi1::elements::pos_top, "Version 3.2.1 (build 4471)"));
    version->SetFont(settings->get_font(plaxi1::font_small));
    version->SetColor(settings->get_color(plaxi1::color_grey_text));
    m_panel->add_element(version, side_panel_t::area_bottom);
    // An empty element below: its holder's gap keeps the version line off the window's edge.
    m_panel->add_element(new plaxi1::elements::SpacerElement(nullptr, plaxi1::elements::pos_top),
                         side_panel_t::area_bottom);
  }

  void add_tab(const side_panel_t::button_ptr_t& button) {
    button->SetId(static_cast<int>(m_tabs.size()));
    button->pressed.connect(this, &side_panel_window_t::on_pressed);
    m_tabs.push_back(button);
  }

  void on_pressed(int id) {
    select(id);
    m_pressed->SetLabel(wxString::Format("Pressed: \u201c%s\u201d (button %d)",
                                         m_tabs[static_cast<std::size_t>(id)]->GetText()->GetText(), id));
  }

  void select(int id) {
    for (const side_panel_t::button_ptr_t& tab : m_tabs) {
      tab->SetSelected(tab->GetId() == id);
    }
    m_heading->SetLabel(m_tabs[static_cast<std::size_t>(id)]->GetText()->GetText());
    Layout();
  }

  side_panel_t* m_panel;
  wxStaticText* m_heading;
  wxStaticText* m_pressed;
  std::vector<side_panel_t::button_ptr_t> m_tabs;
};

}  // namespace

std::vector<entry_t> side_panel_entries() {
  return {{"side_panel", "Side panel",
           "A host window with a side panel: large tabs with pictures, one busy with the progress "
           "animation, small tabs and a version line at the bottom, over a gradient. A click selects "
           "the tab and the host area says which button was pressed.",
           [](wxWindow* parent) { (new side_panel_window_t(parent))->Show(); },
           [](wxWindow* parent) -> wxTopLevelWindow* {
             auto* window = new side_panel_window_t(parent);
             window->Show();
             plaxi1::wait_until_painted(window, 5000);
             return window;
           }}};
}

}  // namespace gallery
