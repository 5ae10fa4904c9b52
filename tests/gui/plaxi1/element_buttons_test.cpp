#include "element_fixture.h"
#include "input.h"
#include "test_animation.h"

#include <plaxi1/text_metrics.h>

#include <gtest/gtest.h>

namespace {

using namespace element_test;

const wxColour red(200, 0, 0);
const wxColour green(0, 200, 0);
const wxColour blue(0, 0, 200);
const wxColour yellow(200, 200, 0);
const wxColour grey(120, 120, 120);

wxImage solid(const wxSize& size, const wxColour& colour) {
  wxImage image(size);
  image.SetRGB(wxRect(size), colour.Red(), colour.Green(), colour.Blue());
  return image;
}

class press_counter_t : public korvat2::subscriber_base_t {
 public:
  void on(int id) {
    ++m_count;
    m_last = id;
  }
  int m_count = 0;
  int m_last = -1;
};

template <class T>
using ptr = korvat2::intrusive_pointer_t<T>;

// A white root on a 400x300 panel, and the real pointer through the X server.
class element_buttons_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_root->SetBkColor(*wxWHITE);
    m_window.show(m_root);
    move_to(wxPoint(390, 290));
  }
  void TearDown() override { m_mouse.up(); }

  /// A flat button of 100x40 at the top left, red when normal.
  ptr<FlatButton> flat_button() {
    ptr<FlatButton> button(new FlatButton(m_root, pos_left | pos_top));
    button->SetFixedSize(wxSize(100, 40));
    button->SetColor(state_normal, red);
    button->pressed.connect(&m_presses, &press_counter_t::on);
    m_window.adapter->Relayout();
    return button;
  }
  void move_to(const wxPoint& client) { m_mouse.move(m_window.panel, client); }
  /// Over the middle of `element`, once the adapter saw the pointer come.
  void move_to(const UIElement& element) {
    const wxRect r = element.GetRect();
    move_to(r.GetPosition() + wxPoint(r.width / 2, r.height / 2));
    EXPECT_TRUE(gui_test::wait_until([&] { return m_window.adapter->GetHoverElement() == &element; }, 2000));
  }
  /// Away from every button, once the adapter saw the pointer go.
  void move_away() {
    move_to(wxPoint(300, 200));
    EXPECT_TRUE(gui_test::wait_until([&] { return m_window.adapter->GetHoverElement() == nullptr; }, 2000));
  }
  void press() {
    m_mouse.down();
    gui_test::wait_until([&] { return m_window.adapter->GetPressedElement() != nullptr; }, 2000);
    gui_test::pump();
  }
  void release() {
    m_mouse.up();
    gui_test::wait_until([&] { return m_window.adapter->GetPressedElement() == nullptr; }, 2000);
    gui_test::pump();
  }
  void click(const UIElement& element) {
    move_to(element);
    press();
    release();
  }
  wxColour shown_at(const wxPoint& point) { return colour_at(m_window.picture(), point.x, point.y); }
  wxColour shown_at(const UIElement& element) {
    const wxRect r = element.GetRect();
    return shown_at(r.GetPosition() + wxPoint(r.width / 2, r.height / 2));
  }

  element_window_t m_window;
  rectangle_ptr m_root{new RectangleElement()};
  press_counter_t m_presses;
  gui_test::input_t m_mouse;
};

TEST(element_buttons_colours, a_missing_state_colour_falls_back_in_order) {
  ptr<FlatButton> button(new FlatButton(nullptr, pos_none));
  EXPECT_FALSE(button->GetColor(state_normal).IsOk());  // no colours: no background
  button->SetColor(state_normal, red);
  button->SetColor(state_pressed, blue);
  button->SetColor(state_pressed | state_selected, green);
  button->SetColor(state_disabled | state_selected, grey);
  EXPECT_EQ(button->GetColor(state_hover), red);                                     // 2 -> 0
  EXPECT_EQ(button->GetColor(state_hover | state_pressed), blue);                    // 6 -> 4
  EXPECT_EQ(button->GetColor(state_hover | state_pressed | state_selected), green);  // 7 -> 5
  EXPECT_EQ(button->GetColor(state_selected | state_hover), red);                    // 3 -> 1 -> 0
  EXPECT_EQ(button->GetColor(state_disabled | state_selected | state_hover), grey);  // 11 -> 9
  EXPECT_EQ(button->GetColor(state_disabled | state_hover), red);                    // 10 -> 8 -> 0
  button->SetColor(state_disabled | state_hover, yellow);
  EXPECT_EQ(button->GetColor(state_disabled | state_hover), yellow);
  // An invalid colour is a colour too: the one of "no background".
  button->SetColor(state_selected, wxColour());
  EXPECT_FALSE(button->GetColor(state_selected | state_hover).IsOk());
  button->SetColor(16, yellow);  // no such state: ignored
  EXPECT_EQ(button->GetColor(state_normal), red);
}

TEST_F(element_buttons_test, the_colour_follows_hover_press_selection_and_enabling) {
  ptr<FlatButton> button = flat_button();
  button->SetColor(state_hover, green);
  button->SetColor(state_pressed, blue);
  EXPECT_EQ(shown_at(*button), red);
  move_to(*button);
  EXPECT_EQ(button->GetStateIndex(), state_hover);
  EXPECT_EQ(shown_at(*button), green);
  press();
  EXPECT_EQ(button->GetStateIndex(), state_hover | state_pressed);
  EXPECT_EQ(shown_at(*button), blue);
  // Dragged off, the press shows no more; back over the button, it does again.
  move_away();
  EXPECT_EQ(button->GetStateIndex(), state_normal);
  EXPECT_EQ(shown_at(*button), red);
  move_to(*button);
  EXPECT_EQ(shown_at(*button), blue);
  release();
  EXPECT_EQ(shown_at(*button), green);

  button->SetSelected(true);
  button->SetColor(state_selected, yellow);
  EXPECT_EQ(button->GetStateIndex(), state_selected | state_hover);
  EXPECT_EQ(shown_at(*button), yellow);  // 3 -> 1
  button->Enable(false);
  EXPECT_EQ(button->GetStateIndex(), state_disabled | state_selected | state_hover);
  EXPECT_EQ(shown_at(*button), red);  // 11 -> 9 -> 8 -> normal
  button->SetColor(state_disabled, grey);
  EXPECT_EQ(shown_at(*button), grey);
  button->SetColor(state_disabled, wxColour());
  EXPECT_EQ(shown_at(*button), *wxWHITE);  // no background: the root shows through
}

TEST_F(element_buttons_test, a_click_fires_once_with_the_id_and_not_when_released_outside) {
  ptr<FlatButton> button = flat_button();
  button->SetId(42);
  move_to(*button);
  press();
  EXPECT_EQ(m_presses.m_count, 0);
  release();
  EXPECT_EQ(m_presses.m_count, 1);
  EXPECT_EQ(m_presses.m_last, 42);
  move_to(*button);
  press();
  move_away();
  release();
  EXPECT_EQ(m_presses.m_count, 1);
  click(*button);
  EXPECT_EQ(m_presses.m_count, 2);
}

TEST_F(element_buttons_test, a_disabled_button_does_not_fire) {
  ptr<FlatButton> button = flat_button();
  button->Enable(false);
  EXPECT_FALSE(button->IsEnabled());
  click(*button);
  EXPECT_EQ(m_presses.m_count, 0);
  button->SetPressingMode(press_on_down);
  click(*button);
  EXPECT_EQ(m_presses.m_count, 0);
  button->Enable(true);
  click(*button);
  EXPECT_EQ(m_presses.m_count, 1);
}

TEST_F(element_buttons_test, pressing_on_down_fires_at_the_press_only) {
  ptr<FlatButton> button = flat_button();
  button->SetPressingMode(press_on_down);
  EXPECT_EQ(button->GetPressingMode(), press_on_down);
  move_to(*button);
  press();
  EXPECT_EQ(m_presses.m_count, 1);
  release();
  EXPECT_EQ(m_presses.m_count, 1);
}

TEST_F(element_buttons_test, a_toggle_flips_the_selection_then_fires) {
  ptr<FlatButton> button = flat_button();
  button->SetPressingMode(2);
  EXPECT_EQ(button->GetPressingMode(), press_toggle);
  struct selection_t : korvat2::subscriber_base_t {
    void on(int) { m_seen.push_back(m_button->IsSelected()); }
    FlatButton* m_button = nullptr;
    std::vector<bool> m_seen;
  } selection;
  selection.m_button = button.get();
  button->pressed.connect(&selection, &selection_t::on);
  click(*button);
  EXPECT_TRUE(button->IsSelected());
  click(*button);
  EXPECT_FALSE(button->IsSelected());
  EXPECT_EQ(selection.m_seen, (std::vector<bool>{true, false}));
  button->SetPressingMode(7);  // unknown: on release
  EXPECT_EQ(button->GetPressingMode(), press_on_release);
}

TEST_F(element_buttons_test, the_wanted_size_includes_the_border_size) {
  ptr<FlatButton> button(new FlatButton(m_root, pos_left | pos_top));
  ptr<SpacerElement> content(new SpacerElement(button, pos_left | pos_top, wxSize(20, 10)));
  EXPECT_EQ(button->GetWantedSize(), wxSize(20, 10));
  button->SetBorderSize(wxSize(5, 4));
  EXPECT_EQ(button->GetBorderSize(), wxSize(5, 4));
  EXPECT_EQ(button->GetWantedSize(), wxSize(30, 18));
  m_window.adapter->Relayout();
  EXPECT_EQ(button->GetRect(), wxRect(0, 0, 30, 18));
  EXPECT_EQ(content->GetRect(), wxRect(5, 4, 20, 10));
  // Without children, the border alone.
  ptr<FlatButton> empty(new FlatButton(m_root, pos_left));
  empty->SetBorderSize(wxSize(2, 3));
  EXPECT_EQ(empty->GetWantedSize(), wxSize(4, 6));
}

TEST_F(element_buttons_test, a_tab_button_shows_its_label_and_picture_inside_the_border) {
  ptr<TabButton> button(new TabButton(m_root, pos_left | pos_top));
  button->SetBorderSize(wxSize(2, 2));
  ptr<TextElement> label = button->GetText();
  ASSERT_TRUE(label);
  EXPECT_EQ(button->GetText(), label);
  label->SetText("Results");
  label->SetTextTruncation(false);
  EXPECT_FALSE(label->GetTextTruncation());
  const wxSize text = label->GetWantedSize();
  EXPECT_EQ(text.x, plaxi1::text_width(label->GetFont(), "Results"));
  EXPECT_EQ(button->GetWantedSize(), text + wxSize(4, 4));

  button->SetImage(solid(wxSize(16, 16), blue));
  const wxSize wanted = button->GetWantedSize();
  EXPECT_EQ(wanted.x, 2 + 16 + 4 + text.x + 2);
  EXPECT_EQ(wanted.y, std::max(16, text.y) + 4);
  m_window.adapter->Relayout();
  EXPECT_EQ(label->GetRect().GetRight(), button->GetRect().GetRight() - 2);
  EXPECT_EQ(shown_at(wxPoint(2 + 8, wanted.y / 2)), blue);

  button->SetImage(wxImage());
  EXPECT_EQ(button->GetWantedSize(), text + wxSize(4, 4));
}

TEST_F(element_buttons_test, a_round_button_puts_its_picture_above_the_label) {
  ptr<RoundBgButton> button(new RoundBgButton(m_root, pos_left | pos_top, 0, true));
  button->GetText()->SetText("Run");
  const wxSize text = button->GetText()->GetWantedSize();
  button->SetImage(solid(wxSize(8, 8), blue));
  EXPECT_EQ(button->GetWantedSize(), wxSize(std::max(8, text.x), 8 + 4 + text.y));
}

TEST_F(element_buttons_test, a_round_button_leaves_its_corners_unpainted) {
  ptr<RoundBgButton> button(new RoundBgButton(m_root, pos_left | pos_top, 0, false));
  button->SetFixedSize(wxSize(100, 40));
  button->SetColor(state_normal, red);
  m_window.adapter->Relayout();
  EXPECT_EQ(shown_at(wxPoint(0, 0)), *wxWHITE);
  EXPECT_EQ(shown_at(wxPoint(99, 39)), *wxWHITE);
  EXPECT_EQ(shown_at(wxPoint(50, 20)), red);
  EXPECT_EQ(shown_at(wxPoint(50, 0)), red);
}

TEST_F(element_buttons_test, an_animation_runs_while_shown_and_stops_when_hidden) {
  ptr<TabButton> button(new TabButton(m_root, pos_left | pos_top));
  button->GetText()->SetText("Busy");
  button->SetAnimation(plaxi1_test::solid_animation({*wxRED, *wxGREEN, *wxBLUE}, wxSize(12, 12), 30));
  EXPECT_EQ(button->GetWantedSize().x, 12 + 4 + button->GetText()->GetWantedSize().x);
  m_window.adapter->Relayout();
  ASSERT_TRUE(gui_test::wait_until([&] { return button->GetAnimationFrame() == 2; }, 3000));
  EXPECT_TRUE(button->IsAnimating());

  button->SetVisible(false);
  ASSERT_TRUE(gui_test::wait_until([&] { return !button->IsAnimating(); }, 3000));
  const std::size_t frame = button->GetAnimationFrame();
  gui_test::wait_until([] { return false; }, 150);
  EXPECT_EQ(button->GetAnimationFrame(), frame);
  EXPECT_FALSE(button->IsAnimating());

  button->SetVisible(true);
  EXPECT_TRUE(gui_test::wait_until([&] { return button->GetAnimationFrame() != frame; }, 3000));
}

TEST_F(element_buttons_test, an_unowned_tab_button_gets_its_label_once_owned) {
  auto* raw = new TabButton(nullptr, pos_left);
  EXPECT_FALSE(raw->GetText());
  raw->SetImage(solid(wxSize(4, 4), blue));  // nothing to show it in yet
  ptr<TabButton> button(raw);
  ASSERT_TRUE(button->GetText());
  button->ChangeParent(m_root);
  button->GetText()->SetText("late");
  EXPECT_GT(button->GetWantedSize().x, 0);
}

TEST_F(element_buttons_test, an_icon_button_shows_the_image_of_its_look) {
  ptr<IconButton> button(new IconButton(m_root, pos_left | pos_top, 3));
  button->SetId(7);
  button->pressed.connect(&m_presses, &press_counter_t::on);
  button->SetImage(image_normal, solid(wxSize(20, 20), red));
  button->SetImage(image_hover, solid(wxSize(20, 20), green));
  button->SetImage(image_pressed, solid(wxSize(20, 20), blue));
  button->SetImage(image_disabled, solid(wxSize(20, 20), grey));
  EXPECT_EQ(button->GetWantedSize(), wxSize(26, 26));
  m_window.adapter->Relayout();
  EXPECT_EQ(button->GetShownState(), image_normal);
  EXPECT_EQ(shown_at(*button), red);
  move_to(*button);
  EXPECT_EQ(button->GetShownState(), image_hover);
  EXPECT_EQ(shown_at(*button), green);
  press();
  EXPECT_EQ(button->GetShownState(), image_pressed);
  EXPECT_EQ(shown_at(*button), blue);
  release();
  EXPECT_EQ(m_presses.m_count, 1);
  EXPECT_EQ(m_presses.m_last, 7);
  button->Enable(false);
  EXPECT_EQ(button->GetShownState(), image_disabled);
  EXPECT_EQ(shown_at(*button), grey);
  click(*button);
  EXPECT_EQ(m_presses.m_count, 1);
  // A look without an image shows the normal one; so does a button without colours.
  button->Enable(true);
  button->SetImage(image_hover, wxImage());
  move_away();
  move_to(*button);
  EXPECT_EQ(button->GetShownState(), image_hover);
  EXPECT_EQ(shown_at(*button), red);
  EXPECT_EQ(shown_at(wxPoint(1, 1)), *wxWHITE);  // the padding: no background of its own
}

}  // namespace
