// Runs with GDK_SCALE=2: windows draw at twice the pixels of their logical size.
#include "../ombrelc/ombrelc_fixture.h"
#include "text_metrics_p.h"

#include <plaxi1/ui_settings.h>

#include <wx/dcmemory.h>

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7::_internal;

// The logical x just past the last inked pixel of `text` as drawn at `scale`: what a
// window at that scale shows, which its DC's own measures don't tell.
double ink_end(const wxFont& font, const wxString& text, double scale) {
  wxBitmap bitmap;
  bitmap.CreateWithDIPSize(wxSize(400, 40), scale, 24);
  {
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    dc.SetFont(font);
    dc.SetTextForeground(*wxBLACK);
    dc.DrawText(text, 0, 0);
  }
  const wxImage image = bitmap.ConvertToImage();
  int last = -1;
  for (int x = 0; x < image.GetWidth(); ++x) {
    for (int y = 0; y < image.GetHeight(); ++y) {
      if (image.GetRed(x, y) < 160) {
        last = x;
      }
    }
  }
  return (last + 1) / scale;
}

class caption_scale_test : public control_fixture_t {};

TEST_F(caption_scale_test, runs_side_by_side_keep_the_blank_between_them) {
  const double scale = m_panel->GetContentScaleFactor();
  ASSERT_EQ(scale, 2.0);
  // An in-place log line: the date in italics with a trailing blank, then the message.
  const std::string date = "Wed Nov 25 12:08:52 2026 ";
  const auto runs = to_wx_runs(parse_rich_text("<i>" + date + "</i>Found 14 hotspots", true));
  const auto lines = layout_runs(runs, plaxi1::font_normal, 0, false);
  ASSERT_EQ(lines.size(), 1u);
  ASSERT_EQ(lines[0].pieces.size(), 2u);

  const wxFont& italic = theme_font(plaxi1::font_normal, style_italic);
  const double date_end = ink_end(italic, wxString::FromUTF8(date), scale);
  const double blank = ink_end(italic, "x x", scale) - ink_end(italic, "xx", scale);
  ASSERT_GT(blank, 2.0);
  // Half a blank at least: italic glyphs lean into the space after them.
  EXPECT_GE(lines[0].pieces[1].x - date_end, blank / 2);
}

}  // namespace
