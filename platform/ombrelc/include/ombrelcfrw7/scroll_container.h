#pragma once
// A vertically scrolled view of one element.
#include <ombrelcfrw7/visual_element.h>

namespace ombrelcfrw7 {

/// Shows one scrolled element, vertically scrolled by the mouse wheel, a thin themed
/// scroll bar that it draws itself (drag the thumb, click the track to page) and the keys
/// Up, Down, Page Up, Page Down, Home and End. When the view is at the end and the content
/// grows, it stays at the end, as a log follows its new lines. The scrolled element gets
/// the view's width (less the bar's) and at least its height.
class CScrollContainer : public CVisualElement {
 public:
  CScrollContainer(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  /// Makes `scrolled` the container's child (the one scrolled); null removes it. An
  /// element scrolled before is deleted.
  void SetScrolled(CVisualElement* scrolled);
  CVisualElement* GetScrolled() const { return m_scrolled; }

  int GetScrollPos() const { return m_pos; }
  /// Scrolls to `pos`, clamped to [0, GetMaxScrollPos()].
  void SetScrollPos(int pos);
  int GetMaxScrollPos() const;
  bool IsAtEnd() const;
  void ScrollToEnd();
  /// Scrolls as little as needed to show `area` (content coordinates).
  void EnsureVisible(const ombrelc7::rect<int>& area);
  /// The height of the scrolled content as last arranged.
  int GetContentHeight() const { return m_content_height; }
  /// The part of the rectangle that shows the content (without the bar).
  ombrelc7::rect<int> GetViewRect() const;
  /// Pixels scrolled by one line (arrow key, a wheel notch scrolls three).
  int GetLineStep() const;

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void ArrangeChildren() override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;
  void PaintChildren(wxDC& dc, const ombrelc7::rect<int>& clip) override;
  CVisualElement* ChildAt(const ombrelc7::point<int>& pos) const override;
  ombrelc7::point<int> ChildOffset() const override { return {0, -m_pos}; }
  ombrelc7::rect<int> ChildClip() const override { return GetViewRect(); }
  bool OnMouse(const element_mouse_t& event) override;
  bool OnKey(const element_key_t& key) override;
  void OnChildrenChanged() override;

 private:
  ombrelc7::rect<int> TrackRect() const;
  ombrelc7::rect<int> ThumbRect() const;
  bool HasBar() const { return GetMaxScrollPos() > 0; }
  int BarWidth() const;

  CVisualElement* m_scrolled = nullptr;
  int m_pos = 0;
  int m_content_height = 0;
  bool m_follow_end = true;  // the view was at the end before the content grew
  int m_drag_offset = -1;    // where in the thumb the drag started; -1: no drag
  bool m_bar_hover = false;
};

}  // namespace ombrelcfrw7
