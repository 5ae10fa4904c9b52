#include "element_fixture.h"

#include <plaxi1/ui_settings.h>

#include <vector>

namespace {

using namespace element_test;

// A plain element of a fixed wanted size.
element_ptr box(const element_ptr& parent, int flags, const wxSize& size) {
  element_ptr element(new UIElement(parent, flags));
  element->SetFixedSize(size);
  return element;
}

class element_layout_test : public ::testing::Test {
 protected:
  element_window_t m_window;  // 400 x 300
  element_ptr m_root{new UIElement(nullptr, pos_none)};
  void layout() { m_window.show(m_root); }
};

TEST_F(element_layout_test, left_packed_children_follow_each_other_from_the_left_edge) {
  const element_ptr a = box(m_root, pos_left, wxSize(30, 20));
  const element_ptr b = box(m_root, pos_left, wxSize(50, 10));
  layout();
  EXPECT_EQ(m_root->GetRect(), wxRect(0, 0, 400, 300));
  EXPECT_EQ(a->GetRect(), wxRect(0, 0, 30, 20));
  EXPECT_EQ(b->GetRect(), wxRect(30, 0, 50, 10));
}

TEST_F(element_layout_test, right_packed_children_follow_each_other_from_the_right_edge) {
  const element_ptr a = box(m_root, pos_right, wxSize(40, 10));
  const element_ptr b = box(m_root, pos_right, wxSize(20, 15));
  layout();
  EXPECT_EQ(a->GetRect(), wxRect(360, 0, 40, 10));
  EXPECT_EQ(b->GetRect(), wxRect(340, 0, 20, 15));
}

TEST_F(element_layout_test, top_and_bottom_packed_children_stack_from_their_edges) {
  const element_ptr top1 = box(m_root, pos_top, wxSize(30, 20));
  const element_ptr bottom1 = box(m_root, pos_bottom, wxSize(30, 20));
  const element_ptr top2 = box(m_root, pos_top, wxSize(10, 15));
  const element_ptr bottom2 = box(m_root, pos_bottom, wxSize(10, 5));
  layout();
  EXPECT_EQ(top1->GetRect(), wxRect(0, 0, 30, 20));
  EXPECT_EQ(top2->GetRect(), wxRect(0, 20, 10, 15));
  EXPECT_EQ(bottom1->GetRect(), wxRect(0, 280, 30, 20));
  EXPECT_EQ(bottom2->GetRect(), wxRect(0, 275, 10, 5));
}

TEST_F(element_layout_test, centred_expanded_and_plain_children_share_the_free_band) {
  box(m_root, pos_left | pos_top, wxSize(30, 20));
  box(m_root, pos_right | pos_bottom, wxSize(40, 30));
  const element_ptr centred = box(m_root, pos_center_h | pos_center_v, wxSize(50, 50));
  const element_ptr stretched = box(m_root, pos_expand_h | pos_fill_v, wxSize(10, 10));
  const element_ptr plain = box(m_root, pos_none, wxSize(25, 35));
  layout();
  // The band runs from x 30 to 360 and from y 20 to 270.
  EXPECT_EQ(centred->GetRect(), wxRect(30 + (330 - 50) / 2, 20 + (250 - 50) / 2, 50, 50));
  EXPECT_EQ(stretched->GetRect(), wxRect(30, 20, 330, 250));
  EXPECT_EQ(plain->GetRect(), wxRect(30, 20, 25, 35));
}

TEST_F(element_layout_test, a_packed_child_follows_its_flags_on_the_other_axis) {
  box(m_root, pos_top, wxSize(10, 40));
  const element_ptr centred = box(m_root, pos_left | pos_center_v, wxSize(20, 60));
  const element_ptr filled = box(m_root, pos_left | pos_fill_v, wxSize(30, 60));
  const element_ptr expanded = box(m_root, pos_bottom | pos_expand_h, wxSize(30, 50));
  const element_ptr centred_h = box(m_root, pos_bottom | pos_center_h, wxSize(100, 10));
  layout();
  // Vertical band: 40 to 240; horizontal band: 50 to 400.
  EXPECT_EQ(centred->GetRect(), wxRect(0, 40 + (200 - 60) / 2, 20, 60));
  EXPECT_EQ(filled->GetRect(), wxRect(20, 40, 30, 200));
  EXPECT_EQ(expanded->GetRect(), wxRect(50, 250, 350, 50));
  EXPECT_EQ(centred_h->GetRect(), wxRect(50 + (350 - 100) / 2, 240, 100, 10));
}

TEST_F(element_layout_test, children_of_a_child_are_laid_out_in_its_rectangle) {
  box(m_root, pos_left, wxSize(100, 10));
  const element_ptr holder = box(m_root, pos_expand_h | pos_fill_v, wxSize(-1, -1));
  const element_ptr inner = box(holder, pos_right | pos_bottom, wxSize(20, 10));
  layout();
  EXPECT_EQ(holder->GetRect(), wxRect(100, 0, 300, 300));
  EXPECT_EQ(inner->GetRect(), wxRect(380, 290, 20, 10));
}

TEST_F(element_layout_test, the_minimum_size_sums_the_packs_and_takes_the_largest_other) {
  box(m_root, pos_left | pos_top, wxSize(30, 20));
  box(m_root, pos_right, wxSize(40, 5));
  box(m_root, pos_bottom, wxSize(15, 25));
  box(m_root, pos_expand_h, wxSize(70, 60));
  box(m_root, pos_center_v, wxSize(90, 10));
  const element_ptr hidden = box(m_root, pos_left | pos_top, wxSize(500, 500));
  hidden->SetVisible(false);
  EXPECT_EQ(m_root->GetLayout()->GetMinSize(), wxSize(30 + 40 + 90, 20 + 25 + 60));
  // The wanted size of an element without a fixed size is its layout's minimum.
  const element_ptr outer(new UIElement(nullptr, pos_none));
  m_root->ChangeParent(outer);
  EXPECT_EQ(outer->GetLayout()->GetMinSize(), wxSize(160, 105));
  // A fixed component wins over the minimum; -1 leaves the other free.
  m_root->SetFixedSize(wxSize(-1, 50));
  EXPECT_EQ(m_root->GetWantedSize(), wxSize(160, 50));
  m_root->ChangeParent(nullptr);
}

TEST_F(element_layout_test, the_natural_size_leaves_the_fixed_size_out) {
  const korvat2::intrusive_pointer_t<SpacerElement> spacer(new SpacerElement(m_root, pos_left, wxSize(7, 9)));
  box(spacer, pos_left | pos_top, wxSize(12, 4));
  spacer->SetFixedSize(wxSize(30, -1));
  EXPECT_EQ(spacer->GetWantedSize(), wxSize(30, 9));
  // Content and children still count, so that a host can size a group to its widest.
  EXPECT_EQ(spacer->GetNaturalSize(), wxSize(12, 9));
  spacer->SetFixedSize(wxSize(1, 1));
  EXPECT_EQ(spacer->GetNaturalSize(), wxSize(12, 9));
}

TEST_F(element_layout_test, a_spacer_wants_its_size) {
  const korvat2::intrusive_pointer_t<SpacerElement> spacer(new SpacerElement(m_root, pos_left, wxSize(7, 9)));
  EXPECT_EQ(spacer->GetWantedSize(), wxSize(7, 9));
  EXPECT_EQ(SpacerElement(nullptr, pos_left).GetWantedSize(), wxSize(0, 0));
  layout();
  EXPECT_EQ(spacer->GetRect(), wxRect(0, 0, 7, 9));
}

// A side panel: three areas between two 5-pixel spacers, one holder per element, each
// holder with a gap of (5, 10) above its element.
class side_panel_tree_t {
 public:
  side_panel_tree_t() {
    new SpacerElement(m_root, pos_left | pos_top, wxSize(5, 0));
    m_areas.push_back(new UIElement(m_root, pos_top | pos_expand_h));
    m_areas.push_back(new UIElement(m_root, pos_fill_v | pos_expand_h));
    m_areas.push_back(new UIElement(m_root, pos_bottom | pos_expand_h));
    new SpacerElement(m_root, pos_right | pos_top, wxSize(5, 0));
  }
  // A holder of flags `holder_flags` in `area`, with its gap and an element.
  element_ptr add(int area, int holder_flags, int flags, const wxSize& size) {
    const element_ptr holder(new UIElement(m_areas[area], holder_flags));
    new SpacerElement(holder, pos_top | pos_expand_h, wxSize(5, 10));
    return box(holder, flags, size);
  }
  korvat2::intrusive_pointer_t<BgImageElement> m_root{new BgImageElement()};
  std::vector<element_ptr> m_areas;
};

TEST(element_tree_test, the_side_panel_stacks_its_areas_between_two_spacers) {
  element_window_t window;
  side_panel_tree_t tree;
  const element_ptr top = tree.add(0, 0x84, pos_left | pos_top, wxSize(120, 30));
  const element_ptr middle = tree.add(1, 0xa0, pos_fill_v, wxSize(100, 40));
  const element_ptr bottom = tree.add(2, 0x88, pos_bottom, wxSize(90, 25));
  window.show(tree.m_root);

  EXPECT_EQ(tree.m_areas[0]->GetRect(), wxRect(5, 0, 390, 40));
  EXPECT_EQ(tree.m_areas[1]->GetRect(), wxRect(5, 40, 390, 225));
  EXPECT_EQ(tree.m_areas[2]->GetRect(), wxRect(5, 265, 390, 35));
  // The gap lies over each element.
  EXPECT_EQ(top->GetRect(), wxRect(5, 10, 120, 30));
  EXPECT_EQ(middle->GetRect(), wxRect(5, 50, 100, 215));
  EXPECT_EQ(bottom->GetRect(), wxRect(5, 275, 90, 25));
  EXPECT_EQ(top->m_parent->GetChildren().front()->GetRect(), wxRect(125, 0, 270, 10));
  // Widest area (120 + 5) between the spacers; heights of the packed areas plus the middle.
  EXPECT_EQ(tree.m_root->GetLayout()->GetMinSize(), wxSize(135, 40 + 35 + 50));
}

// Hides an element's holder with it, as a host of holders does.
class holder_hider_t : public korvat2::subscriber_base_t {
 public:
  void on_visibility(element_ptr element) {
    ++m_calls;
    m_last = element;
    element->m_parent->SetVisible(element->IsVisible());
  }
  int m_calls = 0;
  element_ptr m_last;
};

TEST(element_tree_test, hiding_an_element_takes_its_holders_room_away) {
  element_window_t window;
  side_panel_tree_t tree;
  const element_ptr first = tree.add(0, 0x84, pos_left | pos_top, wxSize(120, 30));
  const element_ptr second = tree.add(0, 0x84, pos_left | pos_top, wxSize(110, 20));
  holder_hider_t hider;
  first->visibility_changed.connect(&hider, &holder_hider_t::on_visibility);
  window.show(tree.m_root);
  EXPECT_EQ(second->GetRect(), wxRect(5, 50, 110, 20));
  EXPECT_EQ(tree.m_areas[0]->GetRect().height, 70);

  first->SetVisible(false);
  EXPECT_EQ(hider.m_calls, 1);
  EXPECT_EQ(hider.m_last, first);
  EXPECT_FALSE(first->m_parent->IsVisible());
  window.adapter->Relayout();
  EXPECT_EQ(second->GetRect(), wxRect(5, 10, 110, 20));
  EXPECT_EQ(tree.m_areas[0]->GetRect().height, 30);
  EXPECT_EQ(tree.m_areas[1]->GetRect().y, 30);

  first->SetVisible(true);
  window.adapter->Relayout();
  EXPECT_EQ(second->GetRect(), wxRect(5, 50, 110, 20));
}

// An advanced panel: a frame, and at its top left a strip of a button, a gap and a caption.
TEST(element_tree_test, the_advanced_panel_puts_its_title_strip_at_the_frames_top_left) {
  element_window_t window;
  const int m = plaxi1::ui_settings_t::get()->get_metric(plaxi1::metric_spacing);
  const rectangle_ptr root(new RectangleElement());
  const rectangle_ptr frame(new RectangleElement(root, 0xa0));
  frame->SetBorderStyle(border_solid);
  new SpacerElement(frame, 5, wxSize(19, 0));
  const rectangle_ptr title_bg(new RectangleElement(frame, 5));
  new SpacerElement(frame, 0x90);
  new SpacerElement(title_bg, 0x21, wxSize(0, 0));
  const element_ptr holder(new UIElement(title_bg, 0x11));
  new SpacerElement(holder, 5, wxSize(0, 2 * m));
  const element_ptr button = box(holder, 5, wxSize(16, 16));
  new SpacerElement(title_bg, 0x11, wxSize(2 * m, 0));
  const korvat2::intrusive_pointer_t<TextElement> caption(new TextElement(title_bg, 0x11, "Advanced"));
  new SpacerElement(title_bg, 0x11, wxSize(4 * m, 0));
  window.show(root);

  const wxSize text = caption->GetWantedSize();
  ASSERT_GT(text.x, 0);
  ASSERT_GT(text.y, 0);
  const int strip_width = 16 + 2 * m + text.x + 4 * m;
  const int strip_height = std::max(2 * m + 16, text.y);
  EXPECT_EQ(frame->GetRect(), wxRect(0, 0, 400, 300));
  EXPECT_EQ(title_bg->GetRect(), wxRect(19, 0, strip_width, strip_height));
  EXPECT_EQ(holder->GetRect(), wxRect(19, (strip_height - 2 * m - 16) / 2, 16, 2 * m + 16));
  EXPECT_EQ(button->GetRect(), wxRect(19, holder->GetRect().y + 2 * m, 16, 16));
  EXPECT_EQ(caption->GetRect(), wxRect(19 + 16 + 2 * m, (strip_height - text.y) / 2, text.x, text.y));

  // The frame's margin moves its painted box, not its children.
  frame->SetMargin(margin_t(strip_height / 2));
  window.adapter->Relayout();
  EXPECT_EQ(frame->GetPaintRect(), wxRect(strip_height / 2, strip_height / 2, 400 - strip_height / 2 * 2,
                                          300 - strip_height / 2 * 2));
  EXPECT_EQ(title_bg->GetRect(), wxRect(19, 0, strip_width, strip_height));
}

TEST(element_test, visibility_changed_fires_once_per_change_with_the_element) {
  const element_ptr root(new UIElement(nullptr, pos_none));
  const element_ptr child(new UIElement(root, pos_left));
  holder_hider_t counter;
  child->visibility_changed.connect(&counter, &holder_hider_t::on_visibility);
  child->SetVisible(true);
  EXPECT_EQ(counter.m_calls, 0);
  child->SetVisible(false);
  child->SetVisible(false);
  EXPECT_EQ(counter.m_calls, 1);
  EXPECT_EQ(counter.m_last, child);
  child->SetVisible(true);
  EXPECT_EQ(counter.m_calls, 2);
  EXPECT_TRUE(root->IsVisible());
}

TEST(element_test, an_unowned_element_survives_its_own_visibility_change) {
  UIElement element(nullptr, pos_none);
  element.SetVisible(false);
  EXPECT_FALSE(element.IsVisible());
  EXPECT_EQ(element.ref_count(), 0u);
  element.SetVisible(true);
  EXPECT_TRUE(element.IsVisible());
}

TEST(element_test, change_parent_moves_an_element_and_null_takes_it_out) {
  const element_ptr first(new UIElement(nullptr, pos_none));
  const element_ptr second(new UIElement(nullptr, pos_none));
  const element_ptr child(new UIElement(first, pos_left));
  child->ChangeParent(second);
  EXPECT_TRUE(first->GetChildren().empty());
  ASSERT_EQ(second->GetChildren().size(), 1u);
  EXPECT_EQ(second->GetChildren().front(), child);
  EXPECT_EQ(child->m_parent, second.get());
  // Into its own subtree: refused.
  second->ChangeParent(child);
  EXPECT_EQ(second->m_parent, nullptr);
  child->ChangeParent(nullptr);
  EXPECT_TRUE(second->GetChildren().empty());
  EXPECT_EQ(child->m_parent, nullptr);
  EXPECT_EQ(child->ref_count(), 1u);
}

TEST(element_test, change_parent_to_a_sibling_named_by_the_parents_list) {
  const element_ptr root(new UIElement(nullptr, pos_none));
  const element_ptr first(new UIElement(root, pos_left));
  const element_ptr second(new UIElement(root, pos_left));
  first->ChangeParent(root->GetChildren()[1]);
  ASSERT_EQ(root->GetChildren().size(), 1u);
  EXPECT_EQ(root->GetChildren().front(), second);
  ASSERT_EQ(second->GetChildren().size(), 1u);
  EXPECT_EQ(second->GetChildren().front(), first);
  EXPECT_EQ(first->m_parent, second.get());
}

TEST(element_test, a_parent_that_dies_leaves_its_held_children_as_roots) {
  element_ptr parent(new UIElement(nullptr, pos_none));
  const element_ptr child(new UIElement(parent, pos_left));
  parent.reset();
  EXPECT_EQ(child->m_parent, nullptr);
  EXPECT_EQ(child->ref_count(), 1u);
}

TEST(element_test, find_by_test_id_searches_the_subtree) {
  const element_ptr root(new UIElement(nullptr, pos_none));
  const element_ptr holder(new UIElement(root, pos_left));
  const element_ptr deep(new UIElement(holder, pos_left));
  deep->SetTestID("deep");
  root->SetTestID("root");
  EXPECT_EQ(root->FindByTestID("deep"), deep);
  EXPECT_EQ(root->FindByTestID("root"), root);
  EXPECT_EQ(holder->FindByTestID("root"), element_ptr());
  EXPECT_EQ(root->FindByTestID("none"), element_ptr());
  EXPECT_EQ(deep->GetTestID(), "deep");
}

}  // namespace
