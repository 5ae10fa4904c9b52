// Runs with GDK_SCALE=2: windows draw at twice the pixels of their logical size.
#include <plaxi1/element_shapes.h>
#include <plaxi1/picture.h>
#include <plaxi1/ui_settings.h>

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>

namespace {

using namespace plaxi1::elements;

// The width of `text` measured by a DC that draws at `scale`.
int width_at(const wxFont& font, const wxString& text, double scale) {
  wxBitmap bitmap;
  bitmap.CreateWithDIPSize(wxSize(1, 1), scale);
  wxMemoryDC dc(bitmap);
  dc.SetFont(font);
  return dc.GetTextExtent(text).x;
}

TEST(element_text_scale_test, a_text_element_wants_the_width_its_text_takes_on_a_scaled_display) {
  ASSERT_EQ(plaxi1::display_scale(), 2.0);
  const wxFont font = plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal);
  // Hinting at twice the pixels gives texts another width than at one.
  wxString text;
  for (const char* candidate : {"Open the results of the last analysis", "iiiiiiiiiiiiiiiiiiiiiiiii",
                                "Welcome, this is a longer line of some text: 0123456789"}) {
    if (width_at(font, candidate, 2.0) != width_at(font, candidate, 1.0)) {
      text = candidate;
      break;
    }
  }
  ASSERT_FALSE(text.empty()) << "no text measures differently at the two scales";
  korvat2::intrusive_pointer_t<TextElement> element(new TextElement(nullptr, pos_none, text));
  element->SetFont(font);
  EXPECT_EQ(element->GetWantedSize().x, width_at(font, text, 2.0));
}

}  // namespace
