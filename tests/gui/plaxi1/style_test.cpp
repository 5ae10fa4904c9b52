#include "gui_test.h"

#include <plaxi1/style.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include <memory>

namespace {

using plaxi1::color_helpers_t;
using plaxi1::style_t;
using plaxi1::style_updater_t;
using plaxi1::ui_settings_t;

wxColour settings_colour(plaxi1::default_colors_t color) { return ui_settings_t::get()->get_color(color); }

// A frame with a panel and a label on it, shown.
struct styled_frame_t {
  styled_frame_t() {
    frame = new wxFrame(nullptr, wxID_ANY, "style");
    panel = new wxPanel(frame);
    label = new wxStaticText(panel, wxID_ANY, "label");
    frame->Show();
    gui_test::pump();
  }
  wxFrame* frame;
  wxPanel* panel;
  wxStaticText* label;
};

TEST(style_test, dialog_style_is_dialog_background_and_text) {
  const style_t style = style_t::create_dialog_style();
  EXPECT_EQ(style.m_color, plaxi1::color_dialog);
  EXPECT_EQ(style.m_text_color, plaxi1::color_dialog_text);
}

TEST(style_test, inplace_style_is_window_background_and_text) {
  const style_t style = style_t::create_inplace_style();
  EXPECT_EQ(style.m_color, plaxi1::color_window);
  EXPECT_EQ(style.m_text_color, plaxi1::color_text);
}

// Half way in light: sRGB 188 carries half the light of 255, where 128 carries a fifth.
TEST(style_test, gradient_mixes_the_light_of_each_channel) {
  EXPECT_EQ(color_helpers_t::make_gradient(wxColour(255, 255, 255), wxColour(0, 0, 0), 0.5),
            wxColour(188, 188, 188));
  EXPECT_EQ(color_helpers_t::make_gradient(wxColour(0, 0, 0), wxColour(200, 100, 50), 0.5),
            wxColour(146, 71, 34));
  EXPECT_EQ(color_helpers_t::make_gradient(wxColour(200, 100, 50), wxColour(0, 0, 0), 0.5),
            wxColour(146, 71, 34));
  EXPECT_EQ(color_helpers_t::make_gradient(wxColour(0, 0, 0), wxColour(1, 3, 255), 0.5), wxColour(1, 2, 188));
  EXPECT_EQ(color_helpers_t::make_gradient(wxColour(10, 20, 30), wxColour(110, 220, 130), 0.25),
            wxColour(57, 119, 72));
  EXPECT_EQ(color_helpers_t::make_gradient(wxColour(7, 7, 7), wxColour(7, 9, 7), 0.5).Red(), 7);
}

TEST(style_test, gradient_ends_and_clamping) {
  const wxColour from(12, 34, 56, 78);
  const wxColour to(210, 190, 170, 150);
  EXPECT_EQ(color_helpers_t::make_gradient(from, to, 0.0), from);
  EXPECT_EQ(color_helpers_t::make_gradient(from, to, 1.0), to);
  EXPECT_EQ(color_helpers_t::make_gradient(from, to, -3.0), from);
  EXPECT_EQ(color_helpers_t::make_gradient(from, to, 7.5), to);
}

TEST(style_test, gradient_blends_alpha_too) {
  const wxColour result = color_helpers_t::make_gradient(wxColour(0, 0, 0, 0), wxColour(0, 0, 0, 200), 0.5);
  EXPECT_EQ(result.Alpha(), 100);
  EXPECT_EQ(color_helpers_t::make_gradient(wxColour(9, 9, 9, 255), wxColour(9, 9, 9, 55), 0.75).Alpha(), 105);
}

TEST(style_test, add_applies_background_and_text_by_default) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.panel, style_t::create_dialog_style());
  EXPECT_EQ(windows.panel->GetBackgroundColour(), settings_colour(plaxi1::color_dialog));
  EXPECT_EQ(windows.panel->GetForegroundColour(), settings_colour(plaxi1::color_dialog_text));
}

TEST(style_test, add_applies_only_what_the_mask_asks) {
  styled_frame_t windows;
  windows.label->SetBackgroundColour(wxColour(1, 2, 3));
  windows.panel->SetForegroundColour(wxColour(4, 5, 6));
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.label, style_t::create_inplace_style(), style_updater_t::apply_text);
  updater.add(windows.panel, style_t::create_inplace_style(), style_updater_t::apply_background);
  EXPECT_EQ(windows.label->GetForegroundColour(), settings_colour(plaxi1::color_text));
  EXPECT_EQ(windows.label->GetBackgroundColour(), wxColour(1, 2, 3));
  EXPECT_EQ(windows.panel->GetBackgroundColour(), settings_colour(plaxi1::color_window));
  EXPECT_EQ(windows.panel->GetForegroundColour(), wxColour(4, 5, 6));
}

TEST(style_test, dimmed_text_is_the_grey_text_colour) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.label, style_t::create_dialog_style(),
              style_updater_t::apply_background | style_updater_t::apply_dimmed_text);
  EXPECT_EQ(windows.label->GetForegroundColour(), settings_colour(plaxi1::color_grey_text));
  EXPECT_EQ(windows.label->GetBackgroundColour(), settings_colour(plaxi1::color_dialog));
}

TEST(style_test, settings_refresh_applies_the_styles_again) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.panel, style_t::create_dialog_style());
  updater.add(windows.label, style_t::create_inplace_style(), style_updater_t::apply_text);

  windows.panel->SetBackgroundColour(*wxRED);
  windows.panel->SetForegroundColour(*wxGREEN);
  windows.label->SetForegroundColour(*wxBLUE);
  ui_settings_t::get()->refresh();
  EXPECT_EQ(windows.panel->GetBackgroundColour(), settings_colour(plaxi1::color_dialog));
  EXPECT_EQ(windows.panel->GetForegroundColour(), settings_colour(plaxi1::color_dialog_text));
  EXPECT_EQ(windows.label->GetForegroundColour(), settings_colour(plaxi1::color_text));
}

TEST(style_test, propagate_style_applies_every_style_now) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.panel, style_t::create_inplace_style());
  windows.panel->SetBackgroundColour(*wxRED);
  updater.propagate_style();
  EXPECT_EQ(windows.panel->GetBackgroundColour(), settings_colour(plaxi1::color_window));
}

TEST(style_test, adding_a_window_again_replaces_its_style) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.panel, style_t::create_inplace_style());
  updater.add(windows.panel, style_t::create_dialog_style(), style_updater_t::apply_background);
  windows.panel->SetBackgroundColour(*wxRED);
  updater.propagate_style();
  EXPECT_EQ(windows.panel->GetBackgroundColour(), settings_colour(plaxi1::color_dialog));
}

TEST(style_test, removed_windows_keep_their_colours) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.panel, style_t::create_dialog_style());
  updater.remove(windows.panel);
  windows.panel->SetBackgroundColour(*wxRED);
  ui_settings_t::get()->refresh();
  EXPECT_EQ(windows.panel->GetBackgroundColour(), *wxRED);
}

TEST(style_test, create_starts_over) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.panel, style_t::create_dialog_style());
  updater.create(windows.frame);
  windows.panel->SetBackgroundColour(*wxRED);
  ui_settings_t::get()->refresh();
  EXPECT_EQ(windows.panel->GetBackgroundColour(), *wxRED);
}

TEST(style_test, destroyed_windows_are_forgotten) {
  styled_frame_t windows;
  style_updater_t updater;
  updater.create(windows.frame);
  updater.add(windows.panel, style_t::create_dialog_style());
  updater.add(windows.label, style_t::create_dialog_style());
  auto* short_lived = new wxPanel(windows.frame);
  updater.add(short_lived, style_t::create_inplace_style());
  short_lived->Destroy();  // a child goes at once
  gui_test::pump();

  windows.panel->SetBackgroundColour(*wxRED);
  ui_settings_t::get()->refresh();
  EXPECT_EQ(windows.panel->GetBackgroundColour(), settings_colour(plaxi1::color_dialog));

  // The whole frame goes while the updater lives on and is told about changes.
  windows.frame->Destroy();
  ASSERT_TRUE(gui_test::wait_until([] { return wxTopLevelWindows.empty(); }));
  ui_settings_t::get()->refresh();
  updater.propagate_style();
}

TEST(style_test, an_updater_that_dies_first_leaves_its_windows_alone) {
  styled_frame_t windows;
  {
    style_updater_t updater;
    updater.create(windows.frame);
    updater.add(windows.panel, style_t::create_dialog_style());
  }
  windows.panel->SetBackgroundColour(*wxRED);
  ui_settings_t::get()->refresh();
  EXPECT_EQ(windows.panel->GetBackgroundColour(), *wxRED);
  windows.frame->Destroy();
  EXPECT_TRUE(gui_test::wait_until([] { return wxTopLevelWindows.empty(); }));
}

TEST(style_test, two_updaters_share_a_window) {
  styled_frame_t windows;
  auto first = std::make_unique<style_updater_t>();
  style_updater_t second;
  first->create(windows.frame);
  second.create(windows.frame);
  first->add(windows.panel, style_t::create_dialog_style());
  second.add(windows.panel, style_t::create_dialog_style());
  first.reset();

  // The second one still hears of the window's end.
  windows.panel->Destroy();
  gui_test::pump();
  ui_settings_t::get()->refresh();
  auto* other = new wxPanel(windows.frame);
  second.add(other, style_t::create_inplace_style());
  other->SetBackgroundColour(*wxRED);
  ui_settings_t::get()->refresh();
  EXPECT_EQ(other->GetBackgroundColour(), settings_colour(plaxi1::color_window));
}

}  // namespace
