#include "gui_test.h"
#include "text_metrics_test_access.h"

#include <plaxi1/picture.h>
#include <plaxi1/text_metrics.h>
#include <plaxi1/ui_settings.h>

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>

namespace {

using namespace plaxi1;

// Width of `text` measured directly, at the display's scale.
int measured_width(const wxFont& font, const wxString& text) {
  wxBitmap bitmap;
  bitmap.CreateWithDIPSize(wxSize(1, 1), display_scale());
  wxMemoryDC dc(bitmap);
  dc.SetFont(font);
  return dc.GetTextExtent(text).x;
}

TEST(text_metrics_test, theme_fonts_are_the_settings_fonts_in_each_style) {
  const wxFont normal = ui_settings_t::get()->get_font(font_normal);
  EXPECT_EQ(theme_font(font_normal), normal);
  EXPECT_EQ(theme_font(font_normal, text_bold), normal.Bold());
  EXPECT_EQ(theme_font(font_normal, text_italic), normal.Italic());
  EXPECT_EQ(theme_font(font_normal, text_bold | text_italic), normal.Bold().Italic());
  EXPECT_EQ(theme_font(font_large), ui_settings_t::get()->get_font(font_large));
  // An unknown kind is the normal font.
  EXPECT_EQ(theme_font(99), normal);
  EXPECT_EQ(theme_font(-1), normal);
}

TEST(text_metrics_test, extents_add_up_to_the_width_of_the_text) {
  const wxString text = "Measure me";
  const std::vector<int>& extents = text_extents(font_normal, text_plain, text);
  ASSERT_EQ(extents.size(), text.length());
  for (std::size_t i = 1; i < extents.size(); ++i) {
    EXPECT_GE(extents[i], extents[i - 1]);
  }
  EXPECT_EQ(text_width(font_normal, text_plain, text), extents.back());
  EXPECT_EQ(text_width(font_normal, text_plain, text), measured_width(theme_font(font_normal), text));
  EXPECT_GT(text_width(font_normal, text_bold, "WWWWWWWW"), text_width(font_normal, text_plain, "WWWWWWWW"));
  EXPECT_EQ(text_width(font_normal, text_plain, ""), 0);
  EXPECT_GT(line_height(font_normal), 0);
  EXPECT_GT(line_height(font_large), line_height(font_small));
}

TEST(text_metrics_test, a_text_is_measured_once) {
  const wxString text = "cached once";
  const std::vector<int>* first = &text_extents(font_normal, text_plain, text);
  const std::size_t count = test_access::cached_text_count();
  EXPECT_EQ(&text_extents(font_normal, text_plain, text), first);
  EXPECT_EQ(test_access::cached_text_count(), count);
  // Another style is another measure.
  text_extents(font_normal, text_italic, text);
  EXPECT_EQ(test_access::cached_text_count(), count + 1);
}

TEST(text_metrics_test, the_quick_bound_is_never_below_the_width) {
  for (const char* text : {"", "i", "Wide WWW text", "Mixed text, with 123 digits!"}) {
    const int bound = quick_width_bound(font_normal, text_plain, text);
    EXPECT_GE(bound, text_width(font_normal, text_plain, wxString::FromUTF8(text))) << text;
  }
  EXPECT_EQ(quick_width_bound(font_normal, text_plain, "caf\xc3\xa9"), -1);
}

TEST(text_metrics_test, any_font_measures_by_lines) {
  const wxFont font = ui_settings_t::get()->get_font(font_monospace);
  const wxString first = "first line";
  const wxString second = "the second and longer line";
  EXPECT_EQ(text_width(font, first), measured_width(font, first));
  EXPECT_EQ(text_width(font, second), text_extents(font, second).back());
  const wxSize extent = text_extent(font, first + "\n" + second);
  EXPECT_EQ(extent.x, text_width(font, second));
  EXPECT_EQ(extent.y, 2 * line_height(font));
  EXPECT_EQ(text_extent(font, ""), wxSize(0, 0));
  // The same text in a theme font is a measure of its own.
  EXPECT_NE(text_width(font, second), text_width(font_normal, text_plain, second));
}

TEST(text_metrics_test, a_settings_change_drops_the_measures_before_it_is_announced) {
  text_extents(font_normal, text_plain, "to be dropped");
  ASSERT_GT(test_access::cached_text_count(), 0u);
  struct listener_t : korvat2::subscriber_base_t {
    void on() { m_count_seen = test_access::cached_text_count(); }
    std::size_t m_count_seen = 99;
  } listener;
  ui_settings_t::get()->m_changed_signal.connect(&listener, &listener_t::on);
  ui_settings_t::get()->refresh();
  EXPECT_EQ(listener.m_count_seen, 0u);
}

}  // namespace
