#include "ombrelc_fixture.h"

#include <plaxi1/ui_settings.h>

#include <wx/dcclient.h>

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;
using ombrelc7::point;

using ombrelc_layout_test = control_fixture_t;

TEST_F(ombrelc_layout_test, the_root_covers_the_client_area) {
  const wxSize client = m_panel->GetClientSize();
  EXPECT_EQ(root()->GetRect(), rect<int>(0, 0, client.x, client.y));
  EXPECT_EQ(root()->GetControl(), m_control);
  EXPECT_EQ(root()->GetWindow(), m_wrapper);
  EXPECT_EQ(ombrelc7::CreateWrapperForWx(m_panel), m_wrapper);
  EXPECT_EQ(m_wrapper->GetWxWindow(), m_panel);
  EXPECT_EQ(m_wrapper->GetControl(), m_control);
}

TEST_F(ombrelc_layout_test, a_vertical_box_places_children_by_alignment) {
  auto* box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* none = new CVisualElement(box, size<int>(50, 10), ombrelc7::alNone);
  auto* start = new CVisualElement(box, size<int>(60, 11), ombrelc7::alStart);
  auto* end = new CVisualElement(box, size<int>(70, 12), ombrelc7::alEnd);
  auto* fill = new CVisualElement(box, size<int>(80, 13), ombrelc7::alFill);
  auto* stretch = new CVisualElement(box, size<int>(90, 14), ombrelc7::alStretch);
  auto* hidden = new CVisualElement(box, size<int>(90, 100), ombrelc7::alFill);
  hidden->SetVisible(false);
  auto* last = new CVisualElement(box, size<int>(30, 15), ombrelc7::alNone);
  box->SetPadding(5);
  box->SetSpacing(2);
  layout();
  const int w = root()->GetRect().width();
  const int h = root()->GetRect().height();
  EXPECT_EQ(box->GetRect(), rect<int>(0, 0, w, h));
  EXPECT_EQ(none->GetRect(), rect<int>(5, 5, 55, 15));
  EXPECT_EQ(start->GetRect(), rect<int>(5, 17, 65, 28));
  EXPECT_EQ(end->GetRect(), rect<int>(w - 5 - 70, 30, w - 5, 42));
  EXPECT_EQ(fill->GetRect(), rect<int>(5, 44, w - 5, 57));
  // The stretched child takes what the others leave; the hidden one takes nothing.
  const int fixed = 10 + 11 + 12 + 13 + 15 + 5 * 2;
  EXPECT_EQ(stretch->GetRect(), rect<int>(5, 59, w - 5, 59 + (h - 10 - fixed)));
  EXPECT_EQ(hidden->GetRect().height(), 0);
  EXPECT_EQ(last->GetRect(), rect<int>(5, h - 5 - 15, 35, h - 5));
}

TEST_F(ombrelc_layout_test, a_horizontal_box_places_children_by_alignment) {
  auto* box = new CHorzBox(root(), size<int>(0, 40), ombrelc7::alFill);
  auto* start = new CVisualElement(box, size<int>(20, 10), ombrelc7::alStart);
  auto* end = new CVisualElement(box, size<int>(30, 10), ombrelc7::alEnd);
  auto* fill = new CVisualElement(box, size<int>(40, 10), ombrelc7::alFill);
  auto* stretch = new CVisualElement(box, size<int>(10, 10), ombrelc7::alStretch);
  layout();
  const int w = root()->GetRect().width();
  EXPECT_EQ(box->GetRect(), rect<int>(0, 0, w, 40));
  EXPECT_EQ(start->GetRect(), rect<int>(0, 0, 20, 10));
  EXPECT_EQ(end->GetRect(), rect<int>(20, 30, 50, 40));
  EXPECT_EQ(fill->GetRect(), rect<int>(50, 0, 90, 40));
  EXPECT_EQ(stretch->GetRect(), rect<int>(90, 0, w, 40));
}

TEST_F(ombrelc_layout_test, a_client_child_covers_its_parent) {
  auto* box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* client = new CVisualElement(box, size<int>(1, 1), ombrelc7::alClient);
  layout();
  EXPECT_EQ(client->GetRect(), root()->GetRect());
}

TEST_F(ombrelc_layout_test, a_caption_grows_to_its_wrapped_text_with_adjust_height) {
  auto* box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* caption = new CCaption(box, size<int>(0, 0), ombrelc7::alFill);
  std::string text;
  for (int i = 0; i < 40; ++i) {
    text += "word" + std::to_string(i) + " ";
  }
  caption->SetCaption(text);
  layout();
  const int one_line = caption->GetRect().height();
  EXPECT_GT(one_line, 8);
  caption->AdjustHeight(true);
  layout();
  const int wrapped = caption->GetRect().height();
  EXPECT_GE(wrapped, 3 * one_line);
  // Narrower, it wraps into more lines.
  m_frame->SetClientSize(200, 300);
  ASSERT_TRUE(gui_test::wait_until([&] { return root()->GetRect().width() == 200; }));
  layout();
  EXPECT_GT(caption->GetRect().height(), wrapped);
  EXPECT_EQ(caption->GetRect().width(), 200);
}

TEST_F(ombrelc_layout_test, an_autosized_caption_follows_its_text) {
  auto* box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* caption = new CCaption(box, size<int>(10, 0), ombrelc7::alNone);
  caption->SetAutoSize(true);
  caption->SetCaption("short");
  layout();
  const int short_width = caption->GetRect().width();
  caption->SetCaption("a considerably longer caption");
  layout();
  EXPECT_GT(caption->GetRect().width(), short_width + 40);
}

TEST_F(ombrelc_layout_test, painting_touches_only_the_visible_children_of_a_long_box) {
  auto* scroller = new CScrollContainer(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* box = new CVertBox(nullptr, size<int>(0, 0), ombrelc7::alFill);
  std::vector<counting_element_t*> lines;
  for (int i = 0; i < 10000; ++i) {
    lines.push_back(new counting_element_t(box, size<int>(10, 20), ombrelc7::alFill));
  }
  scroller->SetScrolled(box);
  scroller->SetScrollPos(0);
  layout();
  for (auto* line : lines) {
    line->m_paints = 0;
  }
  m_panel->Refresh();
  m_panel->Update();
  ASSERT_TRUE(gui_test::wait_until([&] { return lines[0]->m_paints > 0; }));
  const int view = scroller->GetViewRect().height();
  int painted = 0;
  for (auto* line : lines) {
    painted += line->m_paints > 0 ? 1 : 0;
  }
  EXPECT_LE(painted, view / 20 + 2);
  EXPECT_GE(painted, view / 20);
  EXPECT_EQ(lines[5000]->m_paints, 0);

  // Scrolled to the middle, the middle is painted and the start no more.
  for (auto* line : lines) {
    line->m_paints = 0;
  }
  scroller->SetScrollPos(5000 * 20);
  m_panel->Update();
  ASSERT_TRUE(gui_test::wait_until([&] { return lines[5000]->m_paints > 0; }));
  EXPECT_EQ(lines[0]->m_paints, 0);
  EXPECT_EQ(lines[9999]->m_paints, 0);
}

TEST_F(ombrelc_layout_test, suspended_layout_runs_once_for_a_batch) {
  auto* box = new counting_box_t(root(), size<int>(0, 0), ombrelc7::alClient);
  layout();
  box->m_arranges = 0;
  m_wrapper->SuspendLayout(true);
  m_wrapper->SuspendLayout(true);  // nested
  for (int i = 0; i < 1000; ++i) {
    new CVisualElement(box, size<int>(10, 5), ombrelc7::alFill);
    if (i % 100 == 0) {
      gui_test::pump();  // idle time passes, the layout still waits
    }
  }
  EXPECT_EQ(box->m_arranges, 0);
  m_wrapper->SuspendLayout(false);
  EXPECT_EQ(box->m_arranges, 0);
  EXPECT_TRUE(m_wrapper->IsLayoutSuspended());
  m_wrapper->SuspendLayout(false);
  EXPECT_EQ(box->m_arranges, 1);
  EXPECT_EQ(box->GetChildren().back()->GetRect().top, 999 * 5);
  gui_test::pump();
  EXPECT_EQ(box->m_arranges, 1);
}

TEST_F(ombrelc_layout_test, layout_is_deferred_to_one_run_for_many_appends) {
  auto* box = new counting_box_t(root(), size<int>(0, 0), ombrelc7::alClient);
  layout();
  box->m_arranges = 0;
  for (int i = 0; i < 100; ++i) {
    new CVisualElement(box, size<int>(10, 5), ombrelc7::alFill);
  }
  EXPECT_EQ(box->m_arranges, 0);
  EXPECT_TRUE(m_wrapper->IsLayoutPending());
  ASSERT_TRUE(gui_test::wait_until([&] { return !m_wrapper->IsLayoutPending(); }));
  EXPECT_EQ(box->m_arranges, 1);
}

// A caption that counts how often it measures its height.
class measuring_caption_t : public CCaption {
 public:
  using CCaption::CCaption;
  mutable int m_measures = 0;

 protected:
  int MeasureHeight(int width) const override {
    ++m_measures;
    return CCaption::MeasureHeight(width);
  }
};

TEST_F(ombrelc_layout_test, appending_a_line_does_not_measure_its_siblings_again) {
  auto* box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
  std::vector<measuring_caption_t*> lines;
  for (int i = 0; i < 50; ++i) {
    lines.push_back(new measuring_caption_t(box, size<int>(0, 0), ombrelc7::alFill));
    lines.back()->SetCaption("line " + std::to_string(i));
  }
  layout();
  for (auto* line : lines) {
    EXPECT_EQ(line->m_measures, 1);
  }
  new measuring_caption_t(box, size<int>(0, 0), ombrelc7::alFill);
  layout();
  for (auto* line : lines) {
    EXPECT_EQ(line->m_measures, 1);
  }
  // A new width measures all again.
  m_frame->SetClientSize(250, 300);
  ASSERT_TRUE(gui_test::wait_until([&] { return root()->GetRect().width() == 250; }));
  EXPECT_EQ(lines[0]->m_measures, 2);
}

TEST_F(ombrelc_layout_test, lock_update_collects_invalidations_until_the_last_unlock) {
  auto* element = new counting_element_t(root(), size<int>(0, 0), ombrelc7::alClient);
  layout();
  ASSERT_TRUE(gui_test::wait_until([&] { return element->m_paints > 0; }));
  gui_test::pump();
  m_wrapper->LockUpdate(true);
  m_wrapper->LockUpdate(true);
  element->m_paints = 0;
  m_wrapper->Invalidate(rect<int>(0, 0, 10, 10));
  m_wrapper->Invalidate(rect<int>(50, 50, 60, 60));
  element->Invalidate();
  gui_test::pump();
  gui_test::pump();
  EXPECT_EQ(element->m_paints, 0);
  m_wrapper->LockUpdate(false);
  gui_test::pump();
  EXPECT_EQ(element->m_paints, 0);
  EXPECT_TRUE(m_wrapper->IsUpdateLocked());
  m_wrapper->LockUpdate(false);
  ASSERT_TRUE(gui_test::wait_until([&] { return element->m_paints > 0; }));
  gui_test::pump();
  EXPECT_EQ(element->m_paints, 1);
}

TEST_F(ombrelc_layout_test, hidden_elements_take_no_space_and_reparenting_moves_them) {
  auto* a = new CVertBox(root(), size<int>(0, 0), ombrelc7::alFill);
  auto* b = new CVertBox(root(), size<int>(0, 0), ombrelc7::alFill);
  auto* child = new CVisualElement(a, size<int>(10, 30), ombrelc7::alFill);
  layout();
  EXPECT_EQ(a->GetRect().height(), 30);
  child->ReParent(b);
  layout();
  EXPECT_EQ(a->GetRect().height(), 0);
  EXPECT_EQ(b->GetRect().height(), 30);
  EXPECT_EQ(child->GetParent(), b);
  child->SetVisible(false);
  layout();
  EXPECT_EQ(b->GetRect().height(), 0);
  child->ReParent(nullptr);
  EXPECT_EQ(child->GetWindow(), nullptr);
  EXPECT_TRUE(b->GetChildren().empty());
  delete child;
}

TEST_F(ombrelc_layout_test, as_string_joins_visible_children_and_skips_empty_ones) {
  auto* box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* one = new CCaption(box, size<int>(0, 0), ombrelc7::alFill);
  one->SetCaption("one");
  new CCaption(box, size<int>(0, 0), ombrelc7::alFill);
  auto* html = new CCaption(box, size<int>(0, 0), ombrelc7::alFill);
  html->UseHTML(true);
  html->SetCaption("<b>two</b> &amp; <i>three</i>");
  auto* hidden = new CCaption(box, size<int>(0, 0), ombrelc7::alFill);
  hidden->SetCaption("hidden");
  hidden->SetVisible(false);
  EXPECT_EQ(box->AsString(), "one\ntwo & three");
}

TEST_F(ombrelc_layout_test, a_change_in_the_middle_of_a_column_moves_only_what_follows) {
  auto* box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alFill);
  box->SetSpacing(3);
  std::vector<CVisualElement*> rows;
  for (int i = 0; i < 10; ++i) {
    rows.push_back(new CVisualElement(box, size<int>(10, 10), ombrelc7::alFill));
  }
  layout();
  EXPECT_EQ(rows[9]->GetRect().top, 9 * 13);
  EXPECT_EQ(box->GetRect().height(), 10 * 13 - 3);
  rows[4]->SetMinSize(size<int>(10, 30));
  layout();
  EXPECT_EQ(rows[3]->GetRect().top, 3 * 13);
  EXPECT_EQ(rows[5]->GetRect().top, 4 * 13 + 33);
  EXPECT_EQ(box->GetRect().height(), 10 * 13 - 3 + 20);
  rows[5]->SetVisible(false);
  layout();
  EXPECT_EQ(rows[6]->GetRect().top, 4 * 13 + 33);
  delete rows[6];
  layout();
  EXPECT_EQ(rows[7]->GetRect().top, 4 * 13 + 33);
  auto* appended = new CVisualElement(box, size<int>(10, 7), ombrelc7::alFill);
  layout();
  EXPECT_EQ(appended->GetRect().top, rows[9]->GetRect().bottom + 3);
  EXPECT_EQ(box->GetRect().bottom, appended->GetRect().bottom);
  // An element hidden at the end takes no spacing either.
  appended->SetVisible(false);
  layout();
  EXPECT_EQ(box->GetRect().bottom, rows[9]->GetRect().bottom);
}

TEST_F(ombrelc_layout_test, a_theme_change_measures_and_lays_out_again) {
  auto* caption = new CCaption(root(), size<int>(0, 0), ombrelc7::alFill);
  caption->SetCaption("themed");
  layout();
  const int layouts = m_control->GetLayoutCount();
  plaxi1::ui_settings_t::get()->refresh();
  ASSERT_TRUE(gui_test::wait_until([&] { return m_control->GetLayoutCount() > layouts; }));
  EXPECT_GT(caption->GetRect().height(), 0);
}

}  // namespace
