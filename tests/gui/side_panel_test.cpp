#include "assert_recorder.h"
#include "fixtures.h"
#include "gui_test.h"
#include "input.h"
#include "plaxi1/test_animation.h"
#include "side_panel_test_access_p.h"

#include <plaxi1/elements.h>
#include <plaxi1/screenshot.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/side_panel.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <gtk/gtk.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace plaxi1::elements;
using tamsel3::side_panel_t;
using access = tamsel3::side_panel_test_access_t;
using element_ptr = side_panel_t::element_ptr_t;
using button_ptr = side_panel_t::button_ptr_t;

constexpr auto normal = side_panel_t::button_style_normal;
constexpr auto large = side_panel_t::button_style_large;
constexpr auto own = side_panel_t::button_style_own;

const wxSize button_border(2, 2);

// A tab button that counts the fixed sizes it is given and the colours set on it.
class counting_button_t : public RoundBgButton {
 public:
  counting_button_t() : RoundBgButton(nullptr, pos_left | pos_top, 0, false) {}
  void SetFixedSize(const wxSize& size) override {
    ++m_fixed_calls;
    RoundBgButton::SetFixedSize(size);
  }
  void SetColor(int state, const wxColour& color) override {
    m_colors_set.emplace_back(state, color);
    RoundBgButton::SetColor(state, color);
  }
  int m_fixed_calls = 0;
  std::vector<std::pair<int, wxColour>> m_colors_set;
};
using counting_ptr = korvat2::intrusive_pointer_t<counting_button_t>;

// A button that asks for `wanted` once the panel gave it its border: its label is fixed at
// the size inside the border.
counting_ptr button_wanting(const wxSize& wanted, const wxString& text = wxString()) {
  const counting_ptr button(new counting_button_t);
  button->GetText()->SetText(text);
  button->GetText()->SetFixedSize(wanted - 2 * button_border);
  return button;
}

// An element of a fixed size.
element_ptr box(int flags, const wxSize& size) {
  const element_ptr element(new UIElement(nullptr, flags));
  element->SetFixedSize(size);
  return element;
}

class press_counter_t : public korvat2::subscriber_base_t {
 public:
  void on(int) { ++m_count; }
  int m_count = 0;
};

// Changes a string setting of GTK's for the life of the object, as a desktop's theme
// change does, and reads the UI settings again at either end.
class gtk_setting_t {
 public:
  gtk_setting_t(const char* name, const char* value) : m_name(name) {
    gchar* old = nullptr;
    g_object_get(gtk_settings_get_default(), m_name, &old, nullptr);
    m_old = old ? old : "";
    g_free(old);
    set(value);
  }
  ~gtk_setting_t() { set(m_old.c_str()); }
  gtk_setting_t(const gtk_setting_t&) = delete;
  gtk_setting_t& operator=(const gtk_setting_t&) = delete;

 private:
  void set(const char* value) {
    g_object_set(gtk_settings_get_default(), m_name, value, nullptr);
    gui_test::pump();
    plaxi1::ui_settings_t::get()->refresh();
  }
  const char* m_name;
  std::string m_old;
};

// A host frame: the side panel at the left of a sizer, a host area filling the rest.
class side_panel_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "side panel", wxPoint(40, 40));
    m_panel = new side_panel_t(m_frame, wxID_ANY);
    m_host_area = new wxWindow(m_frame, wxID_ANY);
    auto* sizer = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(m_panel, 0, wxEXPAND);
    sizer->Add(m_host_area, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->SetClientSize(wxSize(600, 500));
  }
  void TearDown() override { m_frame->Destroy(); }

  void show() {
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_panel));
    relayout();
  }
  void relayout() {
    m_frame->Layout();
    access::adapter(*m_panel).Relayout();
  }
  element_ptr holder_of(const element_ptr& element) { return element_ptr(element->m_parent); }

  wxFrame* m_frame = nullptr;
  side_panel_t* m_panel = nullptr;
  wxWindow* m_host_area = nullptr;
};

TEST_F(side_panel_test, the_panel_is_named_and_starts_with_the_floors) {
  EXPECT_EQ(m_panel->GetName(), "side_panel_t");
  EXPECT_EQ(m_panel->GetLabel(), "side_panel_t");
  EXPECT_TRUE(m_panel->HasFlag(wxTAB_TRAVERSAL));
  EXPECT_TRUE(m_panel->HasFlag(wxNO_BORDER));
  EXPECT_EQ(access::size(*m_panel, normal), wxSize(100, 23));
  EXPECT_EQ(access::size(*m_panel, large), wxSize(160, 46));
  EXPECT_EQ(access::size(*m_panel, own), wxSize(-1, -1));
  // The root: a margin, the three areas, a margin.
  const auto& children = access::root(*m_panel)->GetChildren();
  ASSERT_EQ(children.size(), 5u);
  EXPECT_EQ(children[0]->GetPositionFlags(), pos_left | pos_top);
  EXPECT_EQ(children[0]->GetWantedSize(), wxSize(5, 0));
  EXPECT_EQ(children[1], m_panel->get_area(side_panel_t::area_top));
  EXPECT_EQ(children[1]->GetPositionFlags(), 0x84);
  EXPECT_EQ(children[2], m_panel->get_area(side_panel_t::area_middle));
  EXPECT_EQ(children[2]->GetPositionFlags(), 0xa0);
  EXPECT_EQ(children[3], m_panel->get_area(side_panel_t::area_bottom));
  EXPECT_EQ(children[3]->GetPositionFlags(), 0x88);
  EXPECT_EQ(children[4]->GetPositionFlags(), pos_right | pos_top);
  EXPECT_EQ(children[4]->GetWantedSize(), wxSize(5, 0));
  EXPECT_EQ(access::adapter(*m_panel).GetRootElement(), element_ptr(access::root(*m_panel)));
}

TEST_F(side_panel_test, two_buttons_of_a_style_share_the_largest_width_and_height) {
  const counting_ptr wide = button_wanting(wxSize(120, 20), "wide");
  const counting_ptr high = button_wanting(wxSize(90, 30), "high");
  m_panel->add_button(wide, side_panel_t::area_middle, normal);
  m_panel->add_button(high, side_panel_t::area_middle, normal);
  EXPECT_EQ(access::size(*m_panel, normal), wxSize(120, 30));
  EXPECT_EQ(wide->GetWantedSize(), wxSize(120, 30));
  EXPECT_EQ(high->GetWantedSize(), wxSize(120, 30));
  EXPECT_EQ(access::size(*m_panel, large), wxSize(160, 46));  // the other style keeps its floor
  show();
  EXPECT_EQ(wide->GetRect().GetSize(), wxSize(120, 30));
  EXPECT_EQ(high->GetRect().GetSize(), wxSize(120, 30));
}

TEST_F(side_panel_test, a_button_that_fits_is_sized_alone_and_one_that_grows_the_size_sizes_all) {
  const counting_ptr first = button_wanting(wxSize(120, 20));
  const counting_ptr second = button_wanting(wxSize(90, 30));
  m_panel->add_button(first, side_panel_t::area_middle, normal);
  m_panel->add_button(second, side_panel_t::area_middle, normal);
  const int first_calls = first->m_fixed_calls;
  const int second_calls = second->m_fixed_calls;

  const counting_ptr third = button_wanting(wxSize(110, 25));
  m_panel->add_button(third, side_panel_t::area_middle, normal);
  EXPECT_EQ(third->m_fixed_calls, 1);
  EXPECT_EQ(third->GetFixedSize(), wxSize(120, 30));
  EXPECT_EQ(first->m_fixed_calls, first_calls);
  EXPECT_EQ(second->m_fixed_calls, second_calls);

  const counting_ptr fourth = button_wanting(wxSize(130, 24));
  m_panel->add_button(fourth, side_panel_t::area_middle, normal);
  EXPECT_EQ(access::size(*m_panel, normal), wxSize(130, 30));
  for (const counting_ptr& button : {first, second, third, fourth}) {
    EXPECT_EQ(button->GetFixedSize(), wxSize(130, 30));
  }
  EXPECT_EQ(first->m_fixed_calls, first_calls + 1);
  EXPECT_EQ(third->m_fixed_calls, 2);
}

TEST_F(side_panel_test, buttons_below_the_floor_get_the_floor) {
  const counting_ptr small = button_wanting(wxSize(40, 10));
  const counting_ptr big = button_wanting(wxSize(60, 12));
  m_panel->add_button(small, side_panel_t::area_top, normal);
  m_panel->add_button(big, side_panel_t::area_top, large);
  EXPECT_EQ(small->GetFixedSize(), wxSize(100, 23));
  EXPECT_EQ(big->GetFixedSize(), wxSize(160, 46));
}

TEST_F(side_panel_test, a_style_2_button_keeps_its_own_size_font_and_colours) {
  const counting_ptr free_button = button_wanting(wxSize(50, 15), "free");
  m_panel->add_button(free_button, side_panel_t::area_middle, own);
  const counting_ptr normal_button = button_wanting(wxSize(50, 15), "normal");
  m_panel->add_button(normal_button, side_panel_t::area_middle, normal);
  EXPECT_EQ(free_button->m_fixed_calls, 0);
  EXPECT_EQ(free_button->GetFixedSize(), wxDefaultSize);
  EXPECT_EQ(free_button->GetWantedSize(), wxSize(50, 15));
  EXPECT_EQ(access::size(*m_panel, own), wxSize(-1, -1));
  ASSERT_EQ(access::buttons(*m_panel, own).size(), 1u);
  // Colours are set once when the button comes, never again.
  EXPECT_EQ(free_button->m_colors_set.size(), 9u);
  free_button->SetColor(state_normal, *wxRED);
  normal_button->SetColor(state_normal, *wxRED);
  const std::size_t free_colours = free_button->m_colors_set.size();
  plaxi1::ui_settings_t::get()->refresh();
  EXPECT_EQ(free_button->m_colors_set.size(), free_colours);
  EXPECT_EQ(free_button->GetColor(state_normal), *wxRED);
  EXPECT_NE(normal_button->GetColor(state_normal), *wxRED);
  EXPECT_EQ(free_button->m_fixed_calls, 0);
  EXPECT_EQ(free_button->GetWantedSize(), wxSize(50, 15));
}

TEST_F(side_panel_test, a_style_2_label_keeps_the_font_that_it_has) {
  const wxFont own_font = plaxi1::ui_settings_t::get()->get_font(plaxi1::font_monospace);
  const counting_ptr free_button = button_wanting(wxSize(50, 15));
  free_button->GetText()->SetFont(own_font);
  m_panel->add_button(free_button, side_panel_t::area_middle, own);
  EXPECT_EQ(free_button->GetText()->GetFont(), own_font);
  plaxi1::ui_settings_t::get()->refresh();
  EXPECT_EQ(free_button->GetText()->GetFont(), own_font);
  // Buttons of the sizing styles get the theme's fonts instead.
  const counting_ptr normal_button = button_wanting(wxSize(50, 15));
  normal_button->GetText()->SetFont(own_font);
  m_panel->add_button(normal_button, side_panel_t::area_middle, normal);
  EXPECT_EQ(normal_button->GetText()->GetFont(), plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal));
}

TEST_F(side_panel_test, buttons_are_set_up_for_the_panel) {
  const counting_ptr button = button_wanting(wxSize(50, 15), "Trends");
  button->SetPressingMode(press_toggle);
  m_panel->add_button(button, side_panel_t::area_bottom, large);
  EXPECT_EQ(button->GetPressingMode(), press_on_release);
  EXPECT_FALSE(button->GetText()->GetTextTruncation());
  EXPECT_EQ(button->GetBorderSize(), button_border);
  EXPECT_EQ(button->GetTestID(), "Trends");
  EXPECT_EQ(button->GetText()->GetFont(), plaxi1::ui_settings_t::get()->get_font(plaxi1::font_large));
  const element_ptr holder = holder_of(element_ptr(button));
  ASSERT_TRUE(holder);
  EXPECT_EQ(holder->m_parent, m_panel->get_area(side_panel_t::area_bottom).get());
  EXPECT_EQ(holder->GetPositionFlags(), 0x84);
  ASSERT_EQ(holder->GetChildren().size(), 2u);
  EXPECT_EQ(holder->GetChildren()[0]->GetWantedSize(), wxSize(5, 10));
  EXPECT_EQ(holder->GetChildren()[0]->GetPositionFlags(), 0x84);
  EXPECT_EQ(holder->GetChildren()[1], element_ptr(button));
  ASSERT_EQ(access::buttons(*m_panel, large).size(), 1u);
}

TEST_F(side_panel_test, the_colours_of_each_state_come_from_the_settings_in_order) {
  const counting_ptr button = button_wanting(wxSize(50, 15));
  m_panel->add_button(button, side_panel_t::area_middle, normal);
  const auto settings = plaxi1::ui_settings_t::get();
  const std::vector<std::pair<int, plaxi1::default_colors_t>> expected = {
      {0, plaxi1::color_button_normal},   {4, plaxi1::color_button_pressed},
      {2, plaxi1::color_button_hover},    {5, plaxi1::color_button_hover},
      {1, plaxi1::color_button_selected}, {5, plaxi1::color_button_hover},
      {8, plaxi1::color_button_disabled}, {9, plaxi1::color_button_disabled},
      {10, plaxi1::color_button_disabled}};
  ASSERT_EQ(button->m_colors_set.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(button->m_colors_set[i].first, expected[i].first) << i;
    EXPECT_EQ(button->m_colors_set[i].second, settings->get_color(expected[i].second)) << i;
    // Read back per state index.
    EXPECT_EQ(button->GetColor(expected[i].first), settings->get_color(expected[i].second)) << i;
  }
  EXPECT_EQ(button->GetText()->GetFont(), settings->get_font(plaxi1::font_normal));
}

TEST_F(side_panel_test, holders_take_the_vertical_place_of_their_element) {
  const std::vector<std::pair<int, int>> cases = {{pos_bottom, 0x88},
                                                  {pos_none, 0x80},
                                                  {pos_top, 0x84},
                                                  {pos_top | pos_bottom, 0x84},
                                                  {pos_center_v, 0x90},
                                                  {pos_fill_v, 0xa0},
                                                  {pos_left, 0x80},
                                                  {pos_center_v | pos_fill_v, 0x90},
                                                  {pos_fill_v | pos_bottom, 0xa0}};
  for (const auto& [flags, holder_flags] : cases) {
    const element_ptr element = box(flags, wxSize(10, 10));
    m_panel->add_element(element, side_panel_t::area_top);
    ASSERT_NE(element->m_parent, nullptr);
    EXPECT_EQ(element->m_parent->GetPositionFlags(), holder_flags) << flags;
    EXPECT_EQ(element->m_parent->m_parent, m_panel->get_area(side_panel_t::area_top).get());
  }
}

TEST_F(side_panel_test, the_areas_stack_between_the_margins) {
  const element_ptr top = box(pos_left | pos_top, wxSize(120, 30));
  const element_ptr middle = box(pos_left | pos_top, wxSize(100, 40));
  const element_ptr bottom = box(pos_left | pos_bottom, wxSize(90, 25));
  m_panel->add_element(top, side_panel_t::area_top);
  m_panel->add_element(middle, side_panel_t::area_middle);
  m_panel->add_element(bottom, side_panel_t::area_bottom);
  show();
  // The widest holder (120 + its 5-pixel spacer) between two margins of 5.
  ASSERT_EQ(m_panel->GetSize(), wxSize(135, 500));
  EXPECT_EQ(m_panel->get_area(side_panel_t::area_top)->GetRect(), wxRect(5, 0, 125, 40));
  EXPECT_EQ(m_panel->get_area(side_panel_t::area_middle)->GetRect(), wxRect(5, 40, 125, 425));
  EXPECT_EQ(m_panel->get_area(side_panel_t::area_bottom)->GetRect(), wxRect(5, 465, 125, 35));
  // Each element below the 10-pixel gap of its holder.
  EXPECT_EQ(top->GetRect(), wxRect(5, 10, 120, 30));
  EXPECT_EQ(middle->GetRect(), wxRect(5, 50, 100, 40));
  EXPECT_EQ(bottom->GetRect(), wxRect(5, 475, 90, 25));
}

TEST_F(side_panel_test, hiding_an_element_hides_its_holder_and_gap_and_the_others_move_up) {
  const counting_ptr first = button_wanting(wxSize(120, 30), "first");
  const counting_ptr second = button_wanting(wxSize(120, 30), "second");
  const element_ptr note = box(pos_top, wxSize(80, 16));
  m_panel->add_button(first, side_panel_t::area_middle, normal);
  m_panel->add_button(second, side_panel_t::area_middle, normal);
  m_panel->add_element(note, side_panel_t::area_middle);
  show();
  EXPECT_EQ(first->GetRect(), wxRect(5, 10, 120, 30));
  EXPECT_EQ(second->GetRect(), wxRect(5, 50, 120, 30));
  EXPECT_EQ(note->GetRect().y, 90);
  const wxSize min_size = m_panel->GetMinSize();

  first->SetVisible(false);
  const element_ptr holder = holder_of(element_ptr(first));
  EXPECT_FALSE(holder->IsVisible());
  const element_ptr gap = holder->GetChildren().front();
  EXPECT_EQ(gap->GetWantedSize(), wxSize(5, 10));
  EXPECT_FALSE(gap->IsShownInTree());
  ASSERT_TRUE(gui_test::wait_until([&] { return second->GetRect().y == 10; }));
  EXPECT_EQ(note->GetRect().y, 50);
  EXPECT_EQ(m_panel->GetMinSize(), min_size);  // the room stays for when it comes back

  note->SetVisible(false);
  EXPECT_FALSE(holder_of(note)->IsVisible());
  first->SetVisible(true);
  EXPECT_TRUE(holder->IsVisible());
  ASSERT_TRUE(gui_test::wait_until([&] { return second->GetRect().y == 50; }));
  EXPECT_EQ(first->GetRect(), wxRect(5, 10, 120, 30));
}

TEST_F(side_panel_test, a_real_click_on_a_button_fires_its_pressed_signal_once) {
  const button_ptr button = m_panel->add_button("Findings", plaxi1::picture_t(), normal);
  press_counter_t presses;
  button->pressed.connect(&presses, &press_counter_t::on);
  show();
  gui_test::input_t mouse;
  const wxRect r = button->GetRect();
  mouse.move(m_panel, r.GetPosition() + wxPoint(r.width / 2, r.height / 2));
  ASSERT_TRUE(
      gui_test::wait_until([&] { return access::adapter(*m_panel).GetHoverElement() == button.get(); }));
  mouse.down();
  ASSERT_TRUE(
      gui_test::wait_until([&] { return access::adapter(*m_panel).GetPressedElement() == button.get(); }));
  EXPECT_EQ(presses.m_count, 0);
  mouse.up();
  ASSERT_TRUE(gui_test::wait_until([&] { return presses.m_count > 0; }));
  gui_test::pump();
  EXPECT_EQ(presses.m_count, 1);
  // The hovered button shows the hover colour of the settings.
  const wxImage shown = [&] {
    test_support::temp_dir_t dir;
    wxImage image;
    if (plaxi1::save_screenshot(m_panel, dir.file("panel.png"))) {
      image.LoadFile(wxString::FromUTF8(dir.file("panel.png")), wxBITMAP_TYPE_PNG);
    }
    return image;
  }();
  ASSERT_TRUE(shown.IsOk());
  const wxPoint inside = r.GetPosition() + wxPoint(4, r.height / 2);  // beside the label
  EXPECT_EQ(wxColour(shown.GetRed(inside.x, inside.y), shown.GetGreen(inside.x, inside.y),
                     shown.GetBlue(inside.x, inside.y)),
            plaxi1::ui_settings_t::get()->get_color(plaxi1::color_button_hover));
  mouse.move(m_host_area, wxPoint(100, 100));
}

TEST_F(side_panel_test, a_theme_change_while_shown_gives_new_fonts_colours_and_common_sizes) {
  const button_ptr overview = m_panel->add_button("Overview", plaxi1::picture_t(), large);
  const button_ptr help = m_panel->add_button("Help", plaxi1::picture_t(), normal);
  const button_ptr rules = m_panel->add_button("Rules and suppressions", plaxi1::picture_t(), normal);
  show();
  const auto settings = plaxi1::ui_settings_t::get();
  const wxSize normal_before = access::size(*m_panel, normal);
  const wxSize large_before = access::size(*m_panel, large);
  const wxSize min_before = m_panel->GetMinSize();
  const wxColour hover_before = settings->get_color(plaxi1::color_button_hover);
  const double points_before = settings->get_font(plaxi1::font_normal).GetFractionalPointSize();
  {
    const gtk_setting_t font("gtk-font-name", "Sans 22");
    const gtk_setting_t theme("gtk-theme-name", "HighContrastInverse");
    ASSERT_GT(settings->get_font(plaxi1::font_normal).GetFractionalPointSize(), points_before);
    ASSERT_NE(settings->get_color(plaxi1::color_button_hover), hover_before);
    EXPECT_EQ(help->GetText()->GetFont(), settings->get_font(plaxi1::font_normal));
    EXPECT_EQ(overview->GetText()->GetFont(), settings->get_font(plaxi1::font_large));
    EXPECT_EQ(rules->GetColor(state_hover), settings->get_color(plaxi1::color_button_hover));
    EXPECT_EQ(overview->GetColor(state_selected), settings->get_color(plaxi1::color_button_selected));
    // The longest label grew past what the style had: both buttons of it follow.
    const wxSize normal_after = access::size(*m_panel, normal);
    EXPECT_GT(normal_after.x, normal_before.x);
    EXPECT_GT(normal_after.y, normal_before.y);
    EXPECT_EQ(help->GetFixedSize(), normal_after);
    EXPECT_EQ(rules->GetFixedSize(), normal_after);
    EXPECT_EQ(rules->GetNaturalSize(), normal_after);
    EXPECT_GE(access::size(*m_panel, large).y, large_before.y);
    EXPECT_GT(m_panel->GetMinSize().x, min_before.x);
    EXPECT_GT(m_panel->GetMinSize().y, min_before.y);
    relayout();
    EXPECT_EQ(help->GetRect().GetSize(), normal_after);
  }
  // Back to the old theme, the sizes shrink to what they were.
  EXPECT_EQ(access::size(*m_panel, normal), normal_before);
  EXPECT_EQ(access::size(*m_panel, large), large_before);
  EXPECT_EQ(help->GetFixedSize(), normal_before);
  EXPECT_EQ(m_panel->GetMinSize(), min_before);
  EXPECT_EQ(rules->GetColor(state_hover), hover_before);
}

TEST_F(side_panel_test, add_button_by_text_puts_a_round_button_in_the_middle_area) {
  const wxImage image(16, 16);
  const button_ptr still = m_panel->add_button("Overview", plaxi1::wxStaticPicture(image), large);
  const button_ptr plain = m_panel->add_button("Help", plaxi1::picture_t(), normal);
  const button_ptr animated = m_panel->add_button(
      "Trends", plaxi1_test::solid_animation({*wxRED, *wxBLUE}, wxSize(16, 16), 40), large);
  EXPECT_NE(dynamic_cast<RoundBgButton*>(still.get()), nullptr);
  EXPECT_EQ(still->GetText()->GetText(), "Overview");
  EXPECT_EQ(still->GetTestID(), "Overview");
  EXPECT_EQ(still->GetPositionFlags(), pos_left | pos_top);
  EXPECT_EQ(still->m_parent->m_parent, m_panel->get_area(side_panel_t::area_middle).get());
  // The picture stands left of the label, inside the border.
  EXPECT_GE(still->GetNaturalSize().x, still->GetText()->GetWantedSize().x + 16 + 4);
  EXPECT_EQ(plain->GetNaturalSize().x, plain->GetText()->GetWantedSize().x + 4);
  show();
  EXPECT_TRUE(gui_test::wait_until([&] { return animated->IsAnimating(); }));
  EXPECT_FALSE(still->IsAnimating());
  EXPECT_EQ(access::adapter(*m_panel).FindByTestID("Help"), element_ptr(plain));
}

TEST_F(side_panel_test, the_minimum_size_follows_the_content_and_the_host_sizer_sees_it) {
  show();
  EXPECT_EQ(m_panel->GetMinSize(), wxDefaultSize);  // nothing to follow yet
  m_panel->add_element(box(pos_top, wxSize(0, 0)), side_panel_t::area_top);
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(5 + 5 + 5, 10));  // the margins and one gap
  const counting_ptr button = button_wanting(wxSize(180, 50));
  m_panel->add_button(button, side_panel_t::area_top, large);
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(5 + 180 + 5 + 5, 10 + 60));
  m_frame->Layout();
  EXPECT_EQ(m_panel->GetSize().x, 195);
  EXPECT_EQ(m_host_area->GetPosition().x, 195);
  const counting_ptr wider = button_wanting(wxSize(220, 40));
  m_panel->add_button(wider, side_panel_t::area_middle, large);
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(235, 10 + 120));
  m_frame->Layout();
  EXPECT_EQ(m_host_area->GetPosition().x, 235);
  const element_ptr footer = box(pos_bottom, wxSize(60, 14));
  m_panel->add_element(footer, side_panel_t::area_bottom);
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(235, 10 + 144));
}

TEST_F(side_panel_test, null_elements_and_a_second_addition_are_reported) {
  test_support::assert_recorder_t reports;
  m_panel->add_element(element_ptr(), side_panel_t::area_top);
  m_panel->add_button(button_ptr(), side_panel_t::area_top, normal);
  EXPECT_EQ(reports.count(), 2u);
  EXPECT_TRUE(m_panel->get_area(side_panel_t::area_top)->GetChildren().empty());
  const element_ptr element = box(pos_top, wxSize(10, 10));
  m_panel->add_element(element, side_panel_t::area_top);
  EXPECT_EQ(reports.count(), 2u);
  m_panel->add_element(element, side_panel_t::area_top);
  EXPECT_EQ(reports.count(), 3u);  // the second connection to the same element
}

TEST_F(side_panel_test, the_background_is_a_picture_over_a_colour) {
  EXPECT_FALSE(m_panel->get_bg_image().IsOk());
  EXPECT_TRUE(m_panel->get_bg_static_picture().is_empty());
  m_panel->set_bg_color(wxColour(10, 20, 30));
  EXPECT_EQ(m_panel->get_bg_color(), wxColour(10, 20, 30));
  EXPECT_EQ(access::root(*m_panel)->GetBkColor(), wxColour(10, 20, 30));
  wxImage image(8, 8);
  image.SetRGB(wxRect(0, 0, 8, 8), 200, 100, 50);
  m_panel->SetBgImage(image);
  ASSERT_TRUE(m_panel->GetBgImage().IsOk());
  EXPECT_EQ(m_panel->GetBgImage().GetSize(), wxSize(8, 8));
  EXPECT_EQ(m_panel->get_bg_image().GetRed(3, 3), 200);
  EXPECT_FALSE(m_panel->get_bg_static_picture().is_empty());
  EXPECT_FALSE(access::root(*m_panel)->GetBgStaticPicture().is_empty());
  EXPECT_EQ(m_panel->get_bg_color(), wxColour(10, 20, 30));  // the colour stays under it
  const plaxi1::wxStaticPicture other(wxImage(4, 4));
  m_panel->set_bg_static_picture(other);
  EXPECT_EQ(m_panel->get_bg_image().GetSize(), wxSize(4, 4));
}

}  // namespace
