#include "gui_test.h"

#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/display.h>
#include <wx/frame.h>
#include <wx/stattext.h>

namespace {

class text_helpers_gui_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "helpers", wxPoint(100, 100), wxSize(400, 300));
    m_label = new wxStaticText(m_frame, wxID_ANY, "label");
    m_frame->Show();
    gui_test::wait_until_shown(m_frame);
  }
  void TearDown() override {
    m_frame->Destroy();
    gui_test::pump();
  }
  wxFrame* m_frame = nullptr;
  wxStaticText* m_label = nullptr;
};

TEST_F(text_helpers_gui_test, color_and_tooltip_go_to_the_text) {
  tamsel3::set_color_and_tooltip(m_label, "Field is empty", *wxRED);
  EXPECT_EQ(m_label->GetForegroundColour(), *wxRED);
  plaxi1::wxCustomTooltip* tooltip = plaxi1::GetTooltip(m_label);
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(tooltip->GetText(), "Field is empty");
}

TEST_F(text_helpers_gui_test, bold_font_and_null_control) {
  tamsel3::set_bold_font(nullptr);  // ignored
  tamsel3::set_bold_font(m_label);
  EXPECT_EQ(m_label->GetFont().GetWeight(),
            plaxi1::ui_settings_t::get()->get_font(plaxi1::font_bold).GetWeight());
  EXPECT_GE(m_label->GetFont().GetWeight(), wxFONTWEIGHT_BOLD);
}

TEST_F(text_helpers_gui_test, wrap_by_parent_wraps_at_the_parent_width_less_margin) {
  const std::string message(60, 'w');
  std::string words;
  for (int i = 0; i < 40; ++i) {
    words += "word ";
  }
  tamsel3::wrap_by_parent(m_frame, m_label, words, 100);
  EXPECT_GT(m_label->GetLabel().Freq('\n'), 0);
  EXPECT_LE(m_label->GetBestSize().GetWidth(), m_frame->GetSize().GetWidth() - 100);
  tamsel3::wrap_by_parent(nullptr, m_label, message, 0);  // ignored
  tamsel3::wrap_by_parent(m_frame, nullptr, message, 0);  // ignored
  EXPECT_NE(m_label->GetLabel(), wxString(message));
}

TEST_F(text_helpers_gui_test, window_beyond_the_right_edge_moves_left_only) {
  const wxSize display = wxGetDisplaySize();
  m_frame->SetSize(display.GetWidth() - 400 + 50, 100, 400, 300);
  ASSERT_TRUE(
      gui_test::wait_until([&] { return m_frame->GetScreenPosition().x == display.GetWidth() - 350; }));
  const wxPoint before = m_frame->GetScreenPosition();
  tamsel3::move_to_visible_area(m_frame);
  gui_test::wait_until([&] { return m_frame->GetScreenPosition() != before; });
  EXPECT_EQ(m_frame->GetScreenPosition(), wxPoint(before.x - 50, before.y));
  EXPECT_EQ(m_frame->GetSize(), wxSize(400, 300));
}

TEST_F(text_helpers_gui_test, window_beyond_the_bottom_goes_higher_than_needed) {
  const wxSize display = wxGetDisplaySize();
  m_frame->SetSize(100, display.GetHeight() - 300 + 40, 400, 300);
  ASSERT_TRUE(
      gui_test::wait_until([&] { return m_frame->GetScreenPosition().y == display.GetHeight() - 260; }));
  const wxPoint before = m_frame->GetScreenPosition();
  tamsel3::move_to_visible_area(m_frame);
  const int clearance = plaxi1::ui_settings_t::get()->get_metric(plaxi1::metric_edge_clearance);
  gui_test::wait_until([&] { return m_frame->GetScreenPosition() != before; });
  EXPECT_EQ(m_frame->GetScreenPosition(), wxPoint(before.x, before.y - 40 - 2 * clearance));
}

TEST_F(text_helpers_gui_test, window_inside_the_display_stays) {
  const wxPoint before = m_frame->GetScreenPosition();
  tamsel3::move_to_visible_area(m_frame);
  tamsel3::move_to_visible_area(nullptr);
  gui_test::pump();
  EXPECT_EQ(m_frame->GetScreenPosition(), before);
}

TEST_F(text_helpers_gui_test, tooltip_wraps_at_600_and_stays_two_minutes) {
  std::string text;
  for (int i = 0; i < 60; ++i) {
    text += "explanation ";
  }
  tamsel3::set_tooltip(text, m_label);
  plaxi1::wxCustomTooltip* tooltip = plaxi1::GetTooltip(m_label);
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(tooltip->GetHideDelay(), 120000);
  EXPECT_NE(tooltip->GetText().find('\n'), std::string::npos);
}

TEST_F(text_helpers_gui_test, text_extent_and_running_maximum) {
  const wxSize short_extent = tamsel3::get_text_extent(m_label, "ab");
  const wxSize long_extent = tamsel3::get_text_extent(m_label, "abcdefghij");
  EXPECT_GT(short_extent.GetHeight(), 0);
  EXPECT_GT(long_extent.GetWidth(), short_extent.GetWidth());
  int width = 0;
  tamsel3::process_max_width(m_label, "abcdefghij", width);
  EXPECT_EQ(width, long_extent.GetWidth());
  tamsel3::process_max_width(m_label, "ab", width);
  EXPECT_EQ(width, long_extent.GetWidth());
}

}  // namespace
