#include "element_fixture.h"
#include "element_shapes_p.h"

#include <plaxi1/ui_settings.h>

#include <wx/dcmemory.h>

namespace {

using namespace element_test;

class element_shapes_test : public ::testing::Test {
 protected:
  // The colour the panel shows at (x, y) of its client area.
  wxColour shown_at(const wxImage& image, int x, int y) {
    const double scale = m_window.panel->GetContentScaleFactor();
    return colour_at(image, static_cast<int>(x * scale), static_cast<int>(y * scale));
  }
  wxImage painted() {
    EXPECT_TRUE(gui_test::wait_until([&] { return m_root->GetPaintCount() > 0; }));
    gui_test::pump();
    return m_window.picture();
  }

  element_window_t m_window{wxSize(200, 100)};
  rectangle_ptr m_root{new RectangleElement()};
};

TEST_F(element_shapes_test, a_rectangle_paints_its_background_and_its_border_once_shown) {
  EXPECT_FALSE(m_root->IsBorderShown());
  EXPECT_EQ(m_root->GetBorderStyle(), border_solid);
  m_root->SetBkColor(*wxWHITE);
  m_root->SetBorderColor(*wxBLUE);
  EXPECT_EQ(m_root->GetBkColor(), *wxWHITE);
  EXPECT_EQ(m_root->GetBorderColor(), *wxBLUE);
  m_window.show(m_root);
  wxImage image = painted();
  EXPECT_EQ(shown_at(image, 0, 50), *wxWHITE);

  m_root->ShowBorder(true);
  const int painted_before = m_root->GetPaintCount();
  ASSERT_TRUE(gui_test::wait_until([&] { return m_root->GetPaintCount() > painted_before; }));
  image = m_window.picture();
  EXPECT_EQ(shown_at(image, 0, 50), *wxBLUE);
  EXPECT_EQ(shown_at(image, 199, 50), *wxBLUE);
  EXPECT_EQ(shown_at(image, 100, 0), *wxBLUE);
  EXPECT_EQ(shown_at(image, 100, 99), *wxBLUE);
  EXPECT_EQ(shown_at(image, 2, 50), *wxWHITE);
}

TEST_F(element_shapes_test, the_margin_insets_the_painted_box_but_not_the_children) {
  m_root->SetBkColor(*wxWHITE);
  const rectangle_ptr frame(new RectangleElement(m_root, pos_expand_h | pos_fill_v));
  frame->SetBkColor(*wxRED);
  frame->SetBorderColor(*wxBLUE);
  frame->SetBorderStyle(border_solid);
  EXPECT_TRUE(frame->IsBorderShown());
  frame->SetMargin(margin_t(10, 20, 30, 40));
  EXPECT_EQ(frame->GetMargin(), margin_t(10, 20, 30, 40));
  const rectangle_ptr title(new RectangleElement(frame, pos_left | pos_top));
  title->SetFixedSize(wxSize(30, 8));
  title->SetBkColor(*wxGREEN);
  m_window.show(m_root);

  EXPECT_EQ(frame->GetRect(), wxRect(0, 0, 200, 100));
  EXPECT_EQ(frame->GetPaintRect(), wxRect(10, 20, 160, 40));
  EXPECT_EQ(title->GetRect(), wxRect(0, 0, 30, 8));
  const wxImage image = painted();
  EXPECT_EQ(shown_at(image, 5, 50), *wxWHITE);
  EXPECT_EQ(shown_at(image, 10, 40), *wxBLUE);
  EXPECT_EQ(shown_at(image, 12, 40), *wxRED);
  EXPECT_EQ(shown_at(image, 100, 59), *wxBLUE);
  EXPECT_EQ(shown_at(image, 100, 70), *wxWHITE);
  EXPECT_EQ(shown_at(image, 2, 2), *wxGREEN);
}

TEST_F(element_shapes_test, border_style_none_hides_the_border) {
  m_root->SetBkColor(*wxWHITE);
  m_root->SetBorderColor(*wxBLUE);
  m_root->SetBorderStyle(border_rounded);
  EXPECT_TRUE(m_root->IsBorderShown());
  m_root->SetBorderStyle(border_none);
  EXPECT_FALSE(m_root->IsBorderShown());
  m_window.show(m_root);
  EXPECT_EQ(shown_at(painted(), 0, 50), *wxWHITE);
}

}  // namespace

namespace {

using namespace element_test;
using text_ptr = korvat2::intrusive_pointer_t<TextElement>;

wxSize extent_in(const wxFont& font, const wxString& text) {
  wxBitmap bitmap(1, 1);
  wxMemoryDC dc(bitmap);
  dc.SetFont(font);
  return dc.GetTextExtent(text);
}

TEST(text_element_test, a_text_wants_its_extent_in_its_font) {
  const element_ptr root(new UIElement(nullptr, pos_none));
  const text_ptr text(new TextElement(root, pos_left, "Some text"));
  const wxFont normal = plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal);
  EXPECT_EQ(text->GetText(), "Some text");
  EXPECT_EQ(text->GetFont(), normal);
  EXPECT_EQ(text->GetWantedSize(), extent_in(normal, "Some text"));

  const wxFont large = plaxi1::ui_settings_t::get()->get_font(plaxi1::font_large);
  text->SetFont(large);
  EXPECT_EQ(text->GetWantedSize(), extent_in(large, "Some text"));
  text->SetText("Other, longer text");
  EXPECT_EQ(text->GetWantedSize(), extent_in(large, "Other, longer text"));
  text->SetText("");
  EXPECT_EQ(text->GetWantedSize(), wxSize(0, 0));
  text->SetFont(wxNullFont);
  EXPECT_EQ(text->GetFont(), normal);
}

TEST(text_element_test, the_colour_falls_back_to_the_dialog_text_colour) {
  const text_ptr text(new TextElement(nullptr, pos_none));
  EXPECT_EQ(text->GetColor(), plaxi1::ui_settings_t::get()->get_color(plaxi1::color_dialog_text));
  text->SetColor(*wxRED);
  EXPECT_EQ(text->GetColor(), *wxRED);
  EXPECT_TRUE(text->GetTextTruncation());
}

TEST(text_element_test, a_text_too_wide_is_cut_with_an_ellipsis) {
  using plaxi1::elements::_internal::cut_to_width;
  using plaxi1::elements::_internal::ellipsis;
  wxBitmap bitmap(1, 1);
  wxMemoryDC dc(bitmap);
  dc.SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal));
  const wxString text = "A caption that is much too long";
  const int width = dc.GetTextExtent(text).x;
  EXPECT_EQ(cut_to_width(dc, text, width), text);

  const wxString cut = cut_to_width(dc, text, width / 2);
  ASSERT_TRUE(cut.EndsWith(ellipsis()));
  const wxString start = cut.Left(cut.length() - ellipsis().length());
  EXPECT_TRUE(text.StartsWith(start));
  EXPECT_LE(dc.GetTextExtent(cut).x, width / 2);
  // One more character would not fit.
  EXPECT_GT(dc.GetTextExtent(text.Left(start.length() + 1) + ellipsis()).x, width / 2);
  EXPECT_EQ(cut_to_width(dc, text, 1), ellipsis());
}

class text_element_paint_test : public ::testing::Test {
 protected:
  // The picture of a black text on white, in a box narrower than the text.
  wxImage paint(bool truncate) {
    m_text->SetTextTruncation(truncate);
    const int before = m_text->GetPaintCount();
    m_window.adapter->RefreshRect(wxRect(0, 0, 200, 40));
    EXPECT_TRUE(gui_test::wait_until([&] { return m_text->GetPaintCount() > before; }));
    return m_window.picture();
  }
  // Whether a dark pixel lies in the columns [from, to) of the text's rows.
  bool ink_in(const wxImage& image, int from, int to) {
    const double scale = m_window.panel->GetContentScaleFactor();
    const wxRect r = m_text->GetRect();
    for (int y = static_cast<int>(r.y * scale); y < static_cast<int>(r.GetBottom() * scale); ++y) {
      for (int x = static_cast<int>(from * scale); x < static_cast<int>(to * scale); ++x) {
        if (image.GetRed(x, y) < 128) {
          return true;
        }
      }
    }
    return false;
  }

  element_window_t m_window{wxSize(200, 40)};
  rectangle_ptr m_root{new RectangleElement()};
  text_ptr m_text{
      new TextElement(m_root, pos_left | pos_center_v, "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW")};
};

TEST_F(text_element_paint_test, truncation_ends_a_cut_text_before_the_edge) {
  m_root->SetBkColor(*wxWHITE);
  m_text->SetColor(*wxBLACK);
  m_text->SetFixedSize(wxSize(120, -1));
  m_window.show(m_root);
  ASSERT_EQ(m_text->GetRect().width, 120);
  // Cut by the edge alone, the W's run into the last columns; cut with the ellipsis, the
  // text ends otherwise. Neither draws beyond the box.
  const wxImage clipped = paint(false);
  EXPECT_TRUE(ink_in(clipped, 116, 120));
  EXPECT_FALSE(ink_in(clipped, 120, 200));
  const wxImage cut = paint(true);
  EXPECT_FALSE(ink_in(cut, 120, 200));
  EXPECT_TRUE(ink_in(cut, 0, 10));
  bool same = true;
  for (int x = 0; x < clipped.GetWidth() && same; ++x) {
    for (int y = 0; y < clipped.GetHeight() && same; ++y) {
      same = colour_at(clipped, x, y) == colour_at(cut, x, y);
    }
  }
  EXPECT_FALSE(same);
}

TEST(bg_image_element_test, the_picture_is_stretched_over_the_painted_box) {
  element_window_t window(wxSize(200, 100));
  const korvat2::intrusive_pointer_t<BgImageElement> root(new BgImageElement());
  root->SetBkColor(*wxWHITE);
  root->SetMargin(margin_t(0, 0, 100, 0));
  wxImage image(2, 2);
  image.SetRGB(wxRect(0, 0, 2, 2), 200, 0, 0);
  root->SetBgStaticPicture(plaxi1::wxStaticPicture(image));
  EXPECT_FALSE(root->GetBgStaticPicture().is_empty());
  window.show(root);
  ASSERT_TRUE(gui_test::wait_until([&] { return root->GetPaintCount() > 0; }));
  gui_test::pump();
  const wxImage picture = window.picture();
  const double scale = window.panel->GetContentScaleFactor();
  auto at = [&](int x, int y) {
    return colour_at(picture, static_cast<int>(x * scale), static_cast<int>(y * scale));
  };
  EXPECT_EQ(at(1, 1), wxColour(200, 0, 0));
  EXPECT_EQ(at(98, 98), wxColour(200, 0, 0));
  // Beyond the painted box, the window's own background.
  EXPECT_EQ(at(150, 50), window.panel->GetBackgroundColour());
}

}  // namespace
