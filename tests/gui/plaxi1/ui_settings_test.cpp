#include "gui_test.h"

#include <plaxi1/ui_settings.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/settings.h>

namespace {

using plaxi1::ui_settings_t;

/// Counts the emissions of the settings' change signal while it lives.
class change_counter_t : public korvat2::subscriber_base_t {
 public:
  change_counter_t() { ui_settings_t::get()->m_changed_signal.connect(this, &change_counter_t::on_changed); }
  int count() const { return m_count; }

 private:
  void on_changed() { ++m_count; }
  int m_count = 0;
};

wxColour system_colour(wxSystemColour index) { return wxSystemSettings::GetColour(index); }

TEST(ui_settings_test, get_gives_one_object_for_the_process) {
  const auto first = ui_settings_t::get();
  const auto second = ui_settings_t::get();
  ASSERT_TRUE(first);
  EXPECT_EQ(first, second);
}

TEST(ui_settings_test, normal_font_is_the_system_gui_font) {
  const wxFont normal = ui_settings_t::get()->get_font(plaxi1::font_normal);
  ASSERT_TRUE(normal.IsOk());
  EXPECT_EQ(normal, wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT));
}

TEST(ui_settings_test, bold_font_is_the_normal_one_in_bold) {
  const auto settings = ui_settings_t::get();
  const wxFont normal = settings->get_font(plaxi1::font_normal);
  const wxFont bold = settings->get_font(plaxi1::font_bold);
  ASSERT_TRUE(bold.IsOk());
  EXPECT_GE(bold.GetNumericWeight(), wxFONTWEIGHT_BOLD);
  EXPECT_GT(bold.GetNumericWeight(), normal.GetNumericWeight());
  EXPECT_EQ(bold.GetFaceName(), normal.GetFaceName());
  EXPECT_DOUBLE_EQ(bold.GetFractionalPointSize(), normal.GetFractionalPointSize());
}

TEST(ui_settings_test, large_font_is_larger_and_small_font_smaller) {
  const auto settings = ui_settings_t::get();
  const double normal = settings->get_font(plaxi1::font_normal).GetFractionalPointSize();
  const wxFont large = settings->get_font(plaxi1::font_large);
  const wxFont small = settings->get_font(plaxi1::font_small);
  EXPECT_GT(large.GetFractionalPointSize(), normal * 1.2);
  EXPECT_LT(large.GetFractionalPointSize(), normal * 1.5);
  EXPECT_LT(small.GetFractionalPointSize(), normal);
  EXPECT_GT(small.GetFractionalPointSize(), normal * 0.8);
  EXPECT_EQ(small.GetFaceName(), settings->get_font(plaxi1::font_normal).GetFaceName());
}

TEST(ui_settings_test, monospace_font_is_fixed_width_in_the_normal_size) {
  const auto settings = ui_settings_t::get();
  const wxFont mono = settings->get_font(plaxi1::font_monospace);
  ASSERT_TRUE(mono.IsOk());
  EXPECT_TRUE(mono.IsFixedWidth());
  EXPECT_DOUBLE_EQ(mono.GetFractionalPointSize(),
                   settings->get_font(plaxi1::font_normal).GetFractionalPointSize());
}

TEST(ui_settings_test, colours_are_the_system_colours_they_stand_for) {
  const auto settings = ui_settings_t::get();
  EXPECT_EQ(settings->get_color(plaxi1::color_window), system_colour(wxSYS_COLOUR_WINDOW));
  EXPECT_EQ(settings->get_color(plaxi1::color_list), system_colour(wxSYS_COLOUR_LISTBOX));
  EXPECT_EQ(settings->get_color(plaxi1::color_dialog), system_colour(wxSYS_COLOUR_BTNFACE));
  EXPECT_EQ(settings->get_color(plaxi1::color_dialog_text), system_colour(wxSYS_COLOUR_BTNTEXT));
  EXPECT_EQ(settings->get_color(plaxi1::color_border), system_colour(wxSYS_COLOUR_3DSHADOW));
  EXPECT_EQ(settings->get_color(plaxi1::color_highlight), system_colour(wxSYS_COLOUR_HIGHLIGHT));
  EXPECT_EQ(settings->get_color(plaxi1::color_heading), system_colour(wxSYS_COLOUR_HOTLIGHT));
  EXPECT_EQ(settings->get_color(plaxi1::color_text), system_colour(wxSYS_COLOUR_WINDOWTEXT));
  EXPECT_EQ(settings->get_color(plaxi1::color_highlight_text), system_colour(wxSYS_COLOUR_HIGHLIGHTTEXT));
  EXPECT_EQ(settings->get_color(plaxi1::color_grey_text), system_colour(wxSYS_COLOUR_GRAYTEXT));
  EXPECT_EQ(settings->get_color(plaxi1::color_info), system_colour(wxSYS_COLOUR_INFOBK));
  EXPECT_EQ(settings->get_color(plaxi1::color_info_text), system_colour(wxSYS_COLOUR_INFOTEXT));
  EXPECT_EQ(settings->get_color(plaxi1::color_button_normal), system_colour(wxSYS_COLOUR_BTNFACE));
  EXPECT_EQ(settings->get_color(plaxi1::color_button_border), system_colour(wxSYS_COLOUR_3DSHADOW));
}

TEST(ui_settings_test, every_colour_is_valid) {
  const auto settings = ui_settings_t::get();
  for (int color = 0; color < plaxi1::color_count; ++color) {
    EXPECT_TRUE(settings->get_color(color).IsOk()) << "colour " << color;
  }
}

TEST(ui_settings_test, error_and_warning_stand_out_from_the_window_background) {
  const auto settings = ui_settings_t::get();
  const double background = settings->get_color(plaxi1::color_window).GetLuminance();
  const wxColour error = settings->get_color(plaxi1::color_error);
  const wxColour warning = settings->get_color(plaxi1::color_warning);
  EXPECT_GT(std::abs(error.GetLuminance() - background), 0.3);
  EXPECT_GT(std::abs(warning.GetLuminance() - background), 0.3);
  // Red, and amber: more red than green, much more green than blue.
  EXPECT_GT(error.Red(), error.Green() + 60);
  EXPECT_GT(error.Red(), error.Blue() + 30);
  EXPECT_GE(warning.Red(), warning.Green());
  EXPECT_GT(warning.Green(), warning.Blue() + 60);
}

TEST(ui_settings_test, side_panel_button_shades_lie_between_face_and_highlight) {
  const auto settings = ui_settings_t::get();
  const wxColour face = system_colour(wxSYS_COLOUR_BTNFACE);
  const wxColour highlight = system_colour(wxSYS_COLOUR_HIGHLIGHT);
  for (const int shade : {plaxi1::color_button_hover, plaxi1::color_button_selected}) {
    const wxColour colour = settings->get_color(shade);
    EXPECT_GE(colour.Red(), std::min(face.Red(), highlight.Red())) << shade;
    EXPECT_LE(colour.Red(), std::max(face.Red(), highlight.Red())) << shade;
    EXPECT_GE(colour.Blue(), std::min(face.Blue(), highlight.Blue())) << shade;
    EXPECT_LE(colour.Blue(), std::max(face.Blue(), highlight.Blue())) << shade;
  }
  if (face != highlight) {
    EXPECT_NE(settings->get_color(plaxi1::color_button_hover), face);
    EXPECT_NE(settings->get_color(plaxi1::color_button_selected),
              settings->get_color(plaxi1::color_button_hover));
  }
}

TEST(ui_settings_test, metrics_have_their_measures) {
  const auto settings = ui_settings_t::get();
  EXPECT_EQ(settings->get_metric(plaxi1::metric_border), 1);
  EXPECT_GE(settings->get_metric(plaxi1::metric_spacing), 3);
  EXPECT_LE(settings->get_metric(plaxi1::metric_spacing), 8);
  EXPECT_GE(settings->get_metric(plaxi1::metric_margin), 10);
  EXPECT_LE(settings->get_metric(plaxi1::metric_margin), 24);
  EXPECT_EQ(settings->get_metric(plaxi1::metric_small_icon), wxWindow::FromDIP(16, nullptr));
  EXPECT_EQ(settings->get_metric(plaxi1::metric_icon), wxWindow::FromDIP(24, nullptr));

  const int caption = wxSystemSettings::GetMetric(wxSYS_CAPTION_Y);
  EXPECT_EQ(settings->get_metric(plaxi1::metric_edge_clearance),
            caption > 0 ? caption : wxWindow::FromDIP(24, nullptr));
  const int scrollbar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X);
  EXPECT_GT(settings->get_metric(plaxi1::metric_scrollbar), 0);
  if (scrollbar > 0) {
    EXPECT_EQ(settings->get_metric(plaxi1::metric_scrollbar), scrollbar);
  }
}

TEST(ui_settings_test, refresh_fires_the_signal_once_and_keeps_the_values) {
  const auto settings = ui_settings_t::get();
  const wxColour before = settings->get_color(plaxi1::color_dialog);
  change_counter_t counter;
  settings->refresh();
  EXPECT_EQ(counter.count(), 1);
  EXPECT_EQ(settings->get_color(plaxi1::color_dialog), before);
}

TEST(ui_settings_test, a_dead_receiver_is_not_called) {
  const auto settings = ui_settings_t::get();
  { change_counter_t short_lived; }
  change_counter_t counter;
  settings->refresh();
  EXPECT_EQ(counter.count(), 1);
}

TEST(ui_settings_test, a_burst_of_colour_change_events_refreshes_once) {
  auto* first = new wxFrame(nullptr, wxID_ANY, "first");
  auto* second = new wxFrame(nullptr, wxID_ANY, "second");
  first->Show();
  second->Show();
  gui_test::pump();

  change_counter_t counter;
  // As the toolkit sends it: to each top-level window, which hands it on to its children.
  for (wxFrame* frame : {first, second}) {
    wxSysColourChangedEvent event;
    event.SetEventObject(frame);
    frame->GetEventHandler()->ProcessEvent(event);
  }
  EXPECT_EQ(counter.count(), 0) << "the settings are read once the burst was dispatched";
  EXPECT_TRUE(gui_test::wait_until([&counter] { return counter.count() > 0; }, 3000));
  gui_test::pump();
  EXPECT_EQ(counter.count(), 1);

  // A later change is seen again.
  wxSysColourChangedEvent again;
  again.SetEventObject(first);
  first->GetEventHandler()->ProcessEvent(again);
  EXPECT_TRUE(gui_test::wait_until([&counter] { return counter.count() > 1; }, 3000));
  gui_test::pump();
  EXPECT_EQ(counter.count(), 2);
}

TEST(ui_settings_test, a_resolution_change_refreshes) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "dpi");
  frame->Show();
  gui_test::pump();

  change_counter_t counter;
  wxDPIChangedEvent event(wxSize(96, 96), wxSize(192, 192));
  event.SetEventObject(frame);
  frame->GetEventHandler()->ProcessEvent(event);
  EXPECT_TRUE(gui_test::wait_until([&counter] { return counter.count() > 0; }, 3000));
  gui_test::pump();
  EXPECT_EQ(counter.count(), 1);
}

TEST(ui_settings_test, other_events_do_not_refresh) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "other");
  frame->Show();
  gui_test::pump();

  change_counter_t counter;
  frame->SetSize(wxSize(300, 200));
  frame->Refresh();
  gui_test::pump();
  EXPECT_EQ(counter.count(), 0);
}

}  // namespace
