#include "fixtures.h"
#include "gui_test.h"
#include "input.h"

#include <plaxi1/elements.h>
#include <plaxi1/screenshot.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/advanced_panel.h>

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

using namespace plaxi1::elements;
using element_ptr = korvat2::intrusive_pointer_t<UIElement>;

plaxi1::ui_settings_t& settings() { return *plaxi1::ui_settings_t::get(); }

// The panel with its insides in reach.
class panel_t : public tamsel3::advanced_panel_t {
 public:
  using advanced_panel_t::advanced_panel_t;
  using advanced_panel_t::m_adapter;
  using advanced_panel_t::m_border;
  using advanced_panel_t::m_button;
  using advanced_panel_t::m_caption;
  using advanced_panel_t::m_content_sizer;
  using advanced_panel_t::m_frame;
  using advanced_panel_t::m_root;
  using advanced_panel_t::m_title_bg;
  using advanced_panel_t::reset_border;

  /// The border of the content sizer in the outer one.
  int content_border() const { return GetSizer()->GetItem(m_content_sizer)->GetBorder(); }
};

class state_recorder_t : public korvat2::subscriber_base_t {
 public:
  void on_open(bool opened) { m_states.push_back(opened); }
  std::vector<bool> m_states;
};

// A host's page: a line of text, the panel with two controls, and a button below it, in one
// vertical sizer, as a preference page lays them out.
class advanced_panel_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_window = new wxFrame(nullptr, wxID_ANY, "advanced", wxPoint(40, 40));
    m_page = new wxPanel(m_window);
    m_above = new wxStaticText(m_page, wxID_ANY, "Analysis engine");
    m_panel = new panel_t(m_page, "Advanced options");
    m_box = new wxCheckBox(m_page, wxID_ANY, "Keep intermediate files");
    m_panel->add(m_box, 0, wxALL, 4);
    m_field = new wxTextCtrl(m_panel, wxID_ANY, "-O2");
    m_panel->add(m_field, 0, wxEXPAND | wxALL, 4);
    m_below = new wxButton(m_page, wxID_ANY, "Restore defaults");
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_above, 0, wxALL, 8);
    sizer->Add(m_panel, 0, wxEXPAND | wxLEFT | wxRIGHT, 8);
    sizer->Add(m_below, 0, wxALL, 8);
    m_page->SetSizer(sizer);
    m_window->SetClientSize(wxSize(420, 320));
    m_window->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_panel));
    m_panel->m_open_signal.connect(&m_recorder, &state_recorder_t::on_open);
    m_mouse.move(m_window, wxPoint(410, 310));
  }
  void TearDown() override {
    m_mouse.up();
    m_window->Destroy();
    gui_test::pump();
  }

  ElementAdapter& adapter() { return *m_panel->m_adapter; }

  /// A real click in the middle of the button, as the display delivers it.
  void click_button() {
    const wxRect r = m_panel->m_button->GetRect();
    m_mouse.move(m_panel, wxPoint(r.x + r.width / 2, r.y + r.height / 2));
    ASSERT_TRUE(gui_test::wait_until([&] { return adapter().GetHoverElement() == m_panel->m_button.get(); }));
    m_mouse.down();
    ASSERT_TRUE(gui_test::wait_until([&] { return adapter().GetPressedElement() != nullptr; }));
    m_mouse.up();
    ASSERT_TRUE(gui_test::wait_until([&] { return adapter().GetPressedElement() == nullptr; }));
    gui_test::pump();
  }

  /// What the panel shows now.
  wxImage picture() {
    test_support::temp_dir_t dir;
    const std::string path = dir.file("panel.png");
    wxImage image;
    if (plaxi1::save_screenshot(m_panel, path)) {
      image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG);
    }
    return image;
  }

  /// Makes the caption and the button want `height`, and measures the border again.
  void title_height(int height) {
    m_panel->m_caption->SetFixedSize(wxSize(-1, height));
    m_panel->m_button->SetFixedSize(wxSize(-1, height));
    m_panel->reset_border();
  }

  wxFrame* m_window = nullptr;
  wxPanel* m_page = nullptr;
  wxStaticText* m_above = nullptr;
  panel_t* m_panel = nullptr;
  wxCheckBox* m_box = nullptr;
  wxTextCtrl* m_field = nullptr;
  wxButton* m_below = nullptr;
  state_recorder_t m_recorder;
  gui_test::input_t m_mouse;
};

// ---------------------------------------------------------------------------------------
// The element tree.

void expect_spacer(const element_ptr& element, int flags, const wxSize& size) {
  auto* spacer = dynamic_cast<SpacerElement*>(element.get());
  ASSERT_NE(spacer, nullptr);
  EXPECT_EQ(spacer->GetPositionFlags(), flags);
  EXPECT_EQ(spacer->GetSize(), size);
}

TEST_F(advanced_panel_test, the_window_is_named_and_styled) {
  EXPECT_EQ(m_panel->GetName(), "advanced_panel_t");
  EXPECT_EQ(m_panel->GetLabel(), "advanced_panel_t");
  EXPECT_TRUE(m_panel->HasFlag(wxTAB_TRAVERSAL));
  EXPECT_TRUE(m_panel->HasFlag(wxNO_BORDER));
  EXPECT_EQ(m_panel->get_caption(), "Advanced options");
  EXPECT_TRUE(m_panel->is_opened());
}

TEST_F(advanced_panel_test, the_frame_holds_the_title_in_order) {
  EXPECT_EQ(adapter().GetRootElement(), element_ptr(m_panel->m_root));
  ASSERT_EQ(m_panel->m_root->GetChildren().size(), 1u);
  EXPECT_EQ(m_panel->m_root->GetChildren()[0], element_ptr(m_panel->m_frame));
  EXPECT_EQ(m_panel->m_frame->GetPositionFlags(), pos_fill_v | pos_expand_h);
  EXPECT_EQ(m_panel->m_frame->GetBorderStyle(), border_solid);
  EXPECT_TRUE(m_panel->m_frame->IsBorderShown());

  const auto& frame = m_panel->m_frame->GetChildren();
  ASSERT_EQ(frame.size(), 3u);
  expect_spacer(frame[0], pos_left | pos_top, wxSize(19, 0));
  EXPECT_EQ(frame[1], element_ptr(m_panel->m_title_bg));
  EXPECT_EQ(m_panel->m_title_bg->GetPositionFlags(), pos_left | pos_top);
  expect_spacer(frame[2], pos_expand_h | pos_center_v, wxSize(0, 0));
}

TEST_F(advanced_panel_test, the_title_holds_the_button_and_the_caption_in_order) {
  const int m = settings().get_metric(plaxi1::metric_spacing);
  const auto& title = m_panel->m_title_bg->GetChildren();
  ASSERT_EQ(title.size(), 5u);
  expect_spacer(title[0], pos_left | pos_fill_v, wxSize(0, 0));
  EXPECT_EQ(title[1]->GetPositionFlags(), pos_left | pos_center_v);
  const auto& holder = title[1]->GetChildren();
  ASSERT_EQ(holder.size(), 2u);
  expect_spacer(holder[0], pos_left | pos_top, wxSize(0, 2 * m));
  EXPECT_EQ(holder[1], element_ptr(m_panel->m_button));
  EXPECT_EQ(m_panel->m_button->GetPositionFlags(), pos_left | pos_top);
  EXPECT_EQ(m_panel->m_button->GetBorderSize(), wxSize(0, 0));
  expect_spacer(title[2], pos_left | pos_center_v, wxSize(2 * m, 0));
  EXPECT_EQ(title[3], element_ptr(m_panel->m_caption));
  EXPECT_EQ(m_panel->m_caption->GetPositionFlags(), pos_left | pos_center_v);
  expect_spacer(title[4], pos_left | pos_center_v, wxSize(4 * m, 0));
}

TEST_F(advanced_panel_test, the_elements_are_found_by_their_test_ids) {
  EXPECT_EQ(adapter().FindByTestID("advanced_panel_bg_rect"), element_ptr(m_panel->m_title_bg));
  EXPECT_EQ(adapter().FindByTestID("advanced_panel_button"), element_ptr(m_panel->m_button));
  EXPECT_EQ(adapter().FindByTestID("advanced_panel_text"), element_ptr(m_panel->m_caption));
  EXPECT_EQ(m_panel->m_caption->GetText(), "Advanced options");
}

TEST_F(advanced_panel_test, the_button_has_no_ground_of_its_own_and_shows_the_pictures) {
  for (int state = 0; state < 16; ++state) {
    EXPECT_FALSE(m_panel->m_button->GetColor(state).IsOk()) << state;
  }
  // The pictures are 13 pixels square.
  EXPECT_EQ(m_panel->m_button->GetWantedSize(), wxSize(13, 13));
}

TEST_F(advanced_panel_test, the_colours_and_font_come_from_the_ui_settings) {
  // The panel paints no ground of its own: the window's shows through the page.
  const wxColour background = m_window->GetBackgroundColour();
  EXPECT_EQ(m_panel->m_root->GetBkColor(), background);
  EXPECT_EQ(m_panel->m_root->GetBorderColor(), background);
  EXPECT_EQ(m_panel->m_frame->GetBkColor(), background);
  EXPECT_EQ(m_panel->m_frame->GetBorderColor(), settings().get_color(plaxi1::color_border));
  EXPECT_EQ(m_panel->m_title_bg->GetBkColor(), background);
  EXPECT_EQ(m_panel->m_title_bg->GetBorderColor(), background);
  EXPECT_EQ(m_panel->m_caption->GetFont(), settings().get_font(plaxi1::font_normal));
  EXPECT_EQ(m_panel->m_caption->GetColor(), settings().get_color(plaxi1::color_heading));
}

TEST_F(advanced_panel_test, the_frame_lies_on_the_pages_ground) {
  const wxImage shown = picture();
  ASSERT_TRUE(shown.IsOk());
  // Between the panel's edge and the frame's line, and inside the line below the title.
  const wxSize size = m_panel->GetSize();
  for (const wxPoint& p :
       {wxPoint(2, size.y / 2), wxPoint(m_panel->m_border / 2 + 3, size.y - m_panel->m_border / 2 - 3)}) {
    EXPECT_EQ(wxColour(shown.GetRed(p.x, p.y), shown.GetGreen(p.x, p.y), shown.GetBlue(p.x, p.y)),
              m_window->GetBackgroundColour())
        << p.x << "," << p.y;
  }
}

TEST_F(advanced_panel_test, a_colour_that_the_host_gives_is_the_ground) {
  const wxColour host_colour(250, 240, 200);
  m_panel->SetBackgroundColour(host_colour);
  settings().refresh();
  EXPECT_EQ(m_panel->m_root->GetBkColor(), host_colour);
  EXPECT_EQ(m_panel->m_frame->GetBkColor(), host_colour);
  EXPECT_EQ(m_panel->m_title_bg->GetBkColor(), host_colour);
}

// ---------------------------------------------------------------------------------------
// The border.

TEST_F(advanced_panel_test, the_border_clears_the_caption_and_the_button) {
  const int title = std::max(m_panel->m_caption->GetWantedHeight(), m_panel->m_button->GetWantedHeight());
  ASSERT_GT(title, 0);
  EXPECT_EQ(m_panel->m_border, title + 1);
  EXPECT_EQ(m_panel->content_border(), title + 1);
  EXPECT_EQ(m_panel->m_frame->GetMargin(), plaxi1::elements::margin_t((title + 1) / 2));
}

TEST_F(advanced_panel_test, a_caption_30_high_gives_a_border_of_31_and_a_margin_of_15) {
  m_panel->m_caption->SetFixedSize(wxSize(-1, 30));
  ASSERT_LT(m_panel->m_button->GetWantedHeight(), 30);
  m_panel->set_caption("Compiler");
  EXPECT_EQ(m_panel->m_border, 31);
  EXPECT_EQ(m_panel->m_frame->GetMargin(), plaxi1::elements::margin_t(15));
  EXPECT_EQ(m_panel->content_border(), 31) << "the content sizer went back with the new border";
  EXPECT_EQ(m_panel->GetSizer()->GetItemCount(), 1u);
  EXPECT_EQ(m_panel->get_caption(), "Compiler");
}

TEST_F(advanced_panel_test, a_title_without_height_gives_a_border_of_20_and_a_margin_of_10) {
  title_height(0);
  EXPECT_EQ(m_panel->m_border, 20);
  EXPECT_EQ(m_panel->m_frame->GetMargin(), plaxi1::elements::margin_t(10));
}

TEST_F(advanced_panel_test, a_closed_panel_with_a_border_of_20_is_40_square_at_least) {
  title_height(0);
  ASSERT_EQ(m_panel->m_border, 20);
  m_panel->open(false);
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(40, 40));
  EXPECT_EQ(m_panel->GetSize().GetHeight(), 40) << "the host's sizer gave it its minimum height";
}

// ---------------------------------------------------------------------------------------
// Opening and closing.

TEST_F(advanced_panel_test, open_in_the_state_it_is_in_does_nothing) {
  const wxSize min_size = m_panel->GetMinSize();
  m_panel->open(true);
  EXPECT_TRUE(m_panel->is_opened());
  EXPECT_TRUE(m_recorder.m_states.empty());
  EXPECT_EQ(m_panel->GetMinSize(), min_size);
  m_panel->open(false);
  m_panel->open(false);
  EXPECT_EQ(m_recorder.m_states, std::vector<bool>{false});
}

TEST_F(advanced_panel_test, open_and_close_fire_the_new_state_and_show_or_hide_the_controls) {
  const wxSize open_min = m_panel->GetMinSize();
  m_panel->open(false);
  EXPECT_FALSE(m_panel->is_opened());
  EXPECT_FALSE(m_box->IsShown());
  EXPECT_FALSE(m_field->IsShown());
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(2 * m_panel->m_border, 2 * m_panel->m_border));
  m_panel->open(true);
  EXPECT_TRUE(m_box->IsShown());
  EXPECT_TRUE(m_field->IsShown());
  EXPECT_EQ(m_panel->GetMinSize(), open_min);
  EXPECT_EQ(m_panel->GetMinSize(), m_panel->GetSizer()->GetMinSize());
  EXPECT_EQ(m_recorder.m_states, (std::vector<bool>{false, true}));
}

TEST_F(advanced_panel_test, screen_readers_hear_the_button_open_and_close) {
  EXPECT_EQ(m_panel->m_button->GetAccessibleExpanded(), 1);
  m_panel->open(false);
  EXPECT_EQ(m_panel->m_button->GetAccessibleExpanded(), 0);
  click_button();
  EXPECT_EQ(m_panel->m_button->GetAccessibleExpanded(), 1);
}

TEST_F(advanced_panel_test, clicks_on_the_button_close_and_open_the_panel) {
  click_button();
  EXPECT_FALSE(m_panel->is_opened());
  EXPECT_FALSE(m_box->IsShown());
  EXPECT_EQ(m_recorder.m_states, std::vector<bool>{false});
  click_button();
  EXPECT_TRUE(m_panel->is_opened());
  EXPECT_TRUE(m_field->IsShown());
  EXPECT_EQ(m_recorder.m_states, (std::vector<bool>{false, true}));
}

TEST_F(advanced_panel_test, the_hosts_controls_below_move_up_on_close_and_down_on_open) {
  const int below_open = m_below->GetPosition().y;
  const int panel_open = m_panel->GetSize().GetHeight();
  click_button();
  ASSERT_TRUE(gui_test::wait_until([&] { return m_below->GetPosition().y < below_open; }));
  EXPECT_EQ(m_panel->GetSize().GetHeight(), 2 * m_panel->m_border);
  EXPECT_EQ(m_below->GetPosition().y, below_open - (panel_open - 2 * m_panel->m_border));
  click_button();
  ASSERT_TRUE(gui_test::wait_until([&] { return m_below->GetPosition().y == below_open; }));
  EXPECT_EQ(m_panel->GetSize().GetHeight(), panel_open);
}

// The chevron points down while open and right while closed: pixel (2, 4) of the 13-pixel
// picture lies on the downward one only, pixel (4, 2) on the rightward one only.
TEST_F(advanced_panel_test, the_button_shows_the_picture_of_the_state) {
  const wxColour background = m_window->GetBackgroundColour();
  auto drawn = [&](const wxImage& image, int x, int y) {
    const wxPoint p = m_panel->m_button->GetRect().GetPosition() + wxPoint(x, y);
    const wxColour shown(image.GetRed(p.x, p.y), image.GetGreen(p.x, p.y), image.GetBlue(p.x, p.y));
    return std::abs(shown.GetLuminance() - background.GetLuminance()) > 0.15;
  };
  wxImage shown = picture();
  ASSERT_TRUE(shown.IsOk());
  EXPECT_TRUE(drawn(shown, 2, 4));
  EXPECT_FALSE(drawn(shown, 4, 2));
  m_panel->open(false);
  gui_test::pump();
  shown = picture();
  EXPECT_FALSE(drawn(shown, 2, 4));
  EXPECT_TRUE(drawn(shown, 4, 2));
}

// ---------------------------------------------------------------------------------------
// Controls added, caption changed, content cleared.

TEST_F(advanced_panel_test, a_control_added_while_closed_is_hidden_until_the_next_open) {
  m_panel->open(false);
  auto* threads = new wxTextCtrl(m_page, wxID_ANY, "4");
  m_panel->add(threads, 0, wxALL, 4);
  EXPECT_EQ(threads->GetParent(), m_panel) << "reparented to the panel";
  EXPECT_FALSE(threads->IsShown());
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  auto* label = new wxStaticText(m_panel, wxID_ANY, "Extra options");
  row->Add(label);
  m_panel->add(row, 0, wxEXPAND);
  EXPECT_FALSE(label->IsShown());
  // Still the closed square, so that the host's layout keeps the title in sight.
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(2 * m_panel->m_border, 2 * m_panel->m_border));
  m_page->Layout();
  EXPECT_EQ(m_panel->GetSize().GetHeight(), 2 * m_panel->m_border);
  m_panel->open(true);
  EXPECT_TRUE(threads->IsShown());
  EXPECT_TRUE(label->IsShown());
  EXPECT_EQ(m_panel->m_content_sizer->GetItemCount(), 4u);
}

TEST_F(advanced_panel_test, a_null_control_adds_nothing) {
  m_panel->add(static_cast<wxWindow*>(nullptr), 0, wxALL, 4);
  m_panel->add(static_cast<wxSizer*>(nullptr), 0, wxALL, 4);
  EXPECT_EQ(m_panel->m_content_sizer->GetItemCount(), 2u);
}

TEST_F(advanced_panel_test, set_caption_while_closed_keeps_the_panel_closed_at_its_minimum) {
  m_panel->open(false);
  const wxSize min_size = m_panel->GetMinSize();
  m_panel->m_caption->SetFixedSize(wxSize(-1, 30));
  m_panel->set_caption("Linker");
  EXPECT_FALSE(m_panel->is_opened());
  EXPECT_FALSE(m_box->IsShown());
  EXPECT_EQ(m_panel->m_border, 31);
  EXPECT_EQ(m_panel->GetMinSize(), min_size) << "the minimum follows at the next open or close";
  EXPECT_EQ(m_recorder.m_states, std::vector<bool>{false});
}

TEST_F(advanced_panel_test, after_clear_the_controls_stay_children_outside_the_sizer) {
  m_panel->clear();
  EXPECT_EQ(m_panel->m_content_sizer->GetItemCount(), 0u);
  EXPECT_EQ(m_box->GetParent(), m_panel);
  EXPECT_EQ(m_field->GetParent(), m_panel);
  EXPECT_EQ(m_box->GetContainingSizer(), nullptr);
  EXPECT_EQ(m_field->GetContainingSizer(), nullptr);
  // Closing and opening no longer touches them.
  m_panel->open(false);
  EXPECT_TRUE(m_box->IsShown());
}

// ---------------------------------------------------------------------------------------
// Enabling and the theme.

TEST_F(advanced_panel_test, disabling_greys_the_caption_and_disables_the_button) {
  EXPECT_TRUE(m_panel->Enable(false));
  EXPECT_FALSE(m_panel->IsEnabled());
  EXPECT_FALSE(m_panel->m_button->IsEnabled());
  EXPECT_EQ(m_panel->m_button->GetShownState(), image_disabled);
  EXPECT_EQ(m_panel->m_caption->GetColor(), settings().get_color(plaxi1::color_border));
  EXPECT_FALSE(m_field->IsEnabled());

  m_panel->Enable(true);
  EXPECT_TRUE(m_panel->m_button->IsEnabled());
  EXPECT_EQ(m_panel->m_caption->GetColor(), settings().get_color(plaxi1::color_heading));
  EXPECT_TRUE(m_field->IsEnabled());
}

// A dark theme and a larger font, made through GTK's own settings as a desktop makes them;
// the old look comes back when the object goes.
class dark_theme_t {
 public:
  explicit dark_theme_t(int font_points) {
    GtkSettings* gtk = gtk_settings_get_default();
    gchar* font = nullptr;
    g_object_get(gtk, "gtk-font-name", &font, "gtk-application-prefer-dark-theme", &m_old_dark, nullptr);
    m_old_font = font ? font : "";
    g_free(font);
    const std::string larger = "Sans " + std::to_string(font_points);
    g_object_set(gtk, "gtk-font-name", larger.c_str(), "gtk-application-prefer-dark-theme", TRUE, nullptr);
    announce();
  }
  ~dark_theme_t() {
    g_object_set(gtk_settings_get_default(), "gtk-font-name", m_old_font.c_str(),
                 "gtk-application-prefer-dark-theme", m_old_dark, nullptr);
    announce();
  }
  dark_theme_t(const dark_theme_t&) = delete;
  dark_theme_t& operator=(const dark_theme_t&) = delete;

 private:
  // The toolkit forgets the colours and fonts it read when the theme's name is announced;
  // the library's settings are then read again, as after a real change.
  static void announce() {
    g_object_notify(G_OBJECT(gtk_settings_get_default()), "gtk-theme-name");
    plaxi1::ui_settings_t::get()->refresh();
  }

  std::string m_old_font;
  gboolean m_old_dark = FALSE;
};

TEST_F(advanced_panel_test, a_theme_change_while_shown_gives_the_new_colours_and_font) {
  const wxColour light = m_window->GetBackgroundColour();
  const wxFont font_before = m_panel->m_caption->GetFont();
  {
    const dark_theme_t theme(14);
    const wxColour dark = m_window->GetBackgroundColour();
    ASSERT_LT(dark.GetLuminance(), light.GetLuminance()) << "the theme got dark";
    EXPECT_EQ(m_panel->m_root->GetBkColor(), dark);
    EXPECT_EQ(m_panel->m_frame->GetBkColor(), dark);
    EXPECT_EQ(m_panel->m_title_bg->GetBkColor(), dark);
    EXPECT_EQ(m_panel->m_frame->GetBorderColor(), settings().get_color(plaxi1::color_border));
    EXPECT_EQ(m_panel->m_caption->GetColor(), settings().get_color(plaxi1::color_heading));
    EXPECT_EQ(m_panel->m_caption->GetFont(), settings().get_font(plaxi1::font_normal));
    EXPECT_GT(m_panel->m_caption->GetFont().GetFractionalPointSize(), font_before.GetFractionalPointSize());
    EXPECT_TRUE(m_box->IsShown());

    // On screen: the panel's ground is the dark one.
    gui_test::pump();
    const wxImage shown = picture();
    ASSERT_TRUE(shown.IsOk());
    const wxPoint inside(m_panel->m_border / 2 + 3,
                         m_panel->GetSize().GetHeight() - m_panel->m_border / 2 - 3);
    EXPECT_EQ(wxColour(shown.GetRed(inside.x, inside.y), shown.GetGreen(inside.x, inside.y),
                       shown.GetBlue(inside.x, inside.y)),
              dark);
  }
  EXPECT_EQ(m_panel->m_root->GetBkColor(), light) << "the old theme came back";
  EXPECT_EQ(m_panel->m_caption->GetFont(), font_before);
}

TEST_F(advanced_panel_test, a_theme_change_while_closed_keeps_the_controls_hidden) {
  m_panel->open(false);
  const dark_theme_t theme(14);
  EXPECT_FALSE(m_box->IsShown());
  EXPECT_FALSE(m_field->IsShown());
}

}  // namespace
