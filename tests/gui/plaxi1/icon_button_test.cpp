#include "gui_test.h"
#include "input.h"

#include <plaxi1/element_flags.h>
#include <plaxi1/icon_button.h>
#include <plaxi1/screenshot.h>

#include "fixtures.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/panel.h>
#include <wx/sizer.h>

namespace {

using plaxi1::wxIconButton;

constexpr int normal = plaxi1::elements::image_normal;
constexpr int hover = plaxi1::elements::image_hover;
constexpr int pressed = plaxi1::elements::image_pressed;
constexpr int disabled = plaxi1::elements::image_disabled;

wxImage solid(const wxSize& size, unsigned char red) {
  wxImage image(size);
  image.SetRGB(wxRect(size), red, 0, 0);
  return image;
}

class counter_t : public korvat2::subscriber_base_t {
 public:
  void on() { ++m_count; }
  int m_count = 0;
};

// A shown frame with a 15x15 icon button at (40, 40) of its panel, and the real pointer
// parked away from it.
class icon_button_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "icon button", wxPoint(100, 100), wxSize(300, 200));
    m_panel = new wxPanel(m_frame);
    m_button = new wxIconButton(m_panel, wxID_ANY, wxPoint(40, 40), wxDefaultSize, 0, wxSize(15, 15));
    for (int state : {normal, hover, pressed, disabled}) {
      m_button->SetImage(state, solid(wxSize(15, 15), static_cast<unsigned char>(state * 20)));
    }
    m_button->clicked.connect(&m_clicks, &counter_t::on);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_frame));
    move_to(outside());
  }
  void TearDown() override {
    m_input.up();
    m_frame->Destroy();
    gui_test::pump();
  }

  // Points in the panel.
  wxPoint centre() const { return m_button->GetPosition() + wxPoint(7, 7); }
  static wxPoint outside() { return {200, 150}; }
  bool shows(int state) {
    return gui_test::wait_until([&] { return m_button->GetShownState() == state; }, 3000);
  }
  void move_to(const wxPoint& point) { m_input.move(m_panel, point); }
  void down() { m_input.down(); }
  void up() { m_input.up(); }

  gui_test::input_t m_input;
  wxFrame* m_frame = nullptr;
  wxPanel* m_panel = nullptr;
  wxIconButton* m_button = nullptr;
  counter_t m_clicks;
};

TEST_F(icon_button_test, its_best_size_is_the_image_size) {
  EXPECT_EQ(m_button->GetBestSize(), wxSize(15, 15));
  EXPECT_EQ(m_button->GetSize(), wxSize(15, 15));
  auto* other = new wxIconButton(m_panel, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, wxSize(24, 12));
  EXPECT_EQ(other->GetBestSize(), wxSize(24, 12));
}

TEST_F(icon_button_test, the_image_follows_the_pointer) {
  EXPECT_EQ(m_button->GetShownState(), normal);
  move_to(centre());
  EXPECT_TRUE(shows(hover));
  down();
  EXPECT_TRUE(shows(pressed));
  // Dragged out while held, it shows released; back over it, pressed again.
  move_to(outside());
  EXPECT_TRUE(shows(normal));
  move_to(centre());
  EXPECT_TRUE(shows(pressed));
  up();
  EXPECT_TRUE(shows(hover));
  move_to(outside());
  EXPECT_TRUE(shows(normal));
}

TEST_F(icon_button_test, the_window_paints_the_picture_of_the_shown_look) {
  const test_support::temp_dir_t dir;
  const std::string path = dir.file("icon.png");
  auto red_at_centre = [&] {
    m_button->Update();
    EXPECT_TRUE(plaxi1::save_screenshot(m_button, path));
    wxImage image;
    EXPECT_TRUE(image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG));
    return image.IsOk() ? image.GetRed(7, 7) : -1;
  };
  EXPECT_EQ(red_at_centre(), normal * 20);
  move_to(centre());
  ASSERT_TRUE(shows(hover));
  EXPECT_EQ(red_at_centre(), hover * 20);
  down();
  ASSERT_TRUE(shows(pressed));
  EXPECT_EQ(red_at_centre(), pressed * 20);
  up();
  m_button->Enable(false);
  EXPECT_EQ(red_at_centre(), disabled * 20);
}

TEST_F(icon_button_test, a_look_without_a_picture_shows_the_normal_one) {
  const test_support::temp_dir_t dir;
  const std::string path = dir.file("icon.png");
  m_button->SetImage(hover | pressed, wxImage());
  move_to(centre());
  ASSERT_TRUE(shows(hover));
  m_button->Update();
  ASSERT_TRUE(plaxi1::save_screenshot(m_button, path));
  wxImage image;
  ASSERT_TRUE(image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG));
  EXPECT_EQ(image.GetRed(7, 7), normal * 20);
}

TEST_F(icon_button_test, a_click_fires_once) {
  move_to(centre());
  down();
  EXPECT_EQ(m_clicks.m_count, 0);
  up();
  EXPECT_TRUE(gui_test::wait_until([&] { return m_clicks.m_count > 0; }, 3000));
  gui_test::pump();
  EXPECT_EQ(m_clicks.m_count, 1);
  m_input.click();
  EXPECT_TRUE(gui_test::wait_until([&] { return m_clicks.m_count > 1; }, 3000));
  gui_test::pump();
  EXPECT_EQ(m_clicks.m_count, 2);
}

TEST_F(icon_button_test, a_press_released_outside_does_not_click) {
  move_to(centre());
  down();
  ASSERT_TRUE(shows(pressed));
  move_to(outside());
  up();
  EXPECT_TRUE(shows(normal));
  EXPECT_FALSE(m_button->HasCapture());
  // A press that started elsewhere and ends over the button is no click either.
  down();
  move_to(centre());
  up();
  gui_test::pump();
  EXPECT_EQ(m_clicks.m_count, 0);
}

TEST_F(icon_button_test, a_disabled_button_shows_its_disabled_image_and_does_not_click) {
  m_button->Enable(false);
  EXPECT_EQ(m_button->GetShownState(), disabled);
  move_to(centre());
  down();
  up();
  gui_test::pump();
  EXPECT_EQ(m_button->GetShownState(), disabled);
  EXPECT_EQ(m_clicks.m_count, 0);
  // Enabled under the pointer, it is hot again and clicks.
  m_button->Enable(true);
  move_to(centre() + wxPoint(1, 1));
  EXPECT_TRUE(shows(hover));
  m_input.click();
  EXPECT_TRUE(gui_test::wait_until([&] { return m_clicks.m_count == 1; }, 3000));
}

TEST_F(icon_button_test, disabling_during_a_press_drops_it) {
  move_to(centre());
  down();
  ASSERT_TRUE(shows(pressed));
  m_button->Enable(false);
  EXPECT_FALSE(m_button->HasCapture());
  m_button->Enable(true);
  up();
  gui_test::pump();
  EXPECT_EQ(m_clicks.m_count, 0);
}

}  // namespace
