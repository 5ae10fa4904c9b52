#include "element_fixture.h"

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
