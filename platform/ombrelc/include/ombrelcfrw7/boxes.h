#pragma once
// Boxes that stack their children along one axis.
#include <ombrelcfrw7/visual_element.h>

namespace ombrelcfrw7 {

/// Stacks its visible children along one axis, honouring each child's alignment and minimum
/// size; invisible children take no space. alStretch children share the space left along
/// the axis. Optional padding around and spacing between children.
class CBoxBase : public CVisualElement {
 public:
  CBoxBase(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment,
           bool horizontal);
  void SetPadding(int padding);
  void SetSpacing(int spacing);
  int GetPadding() const { return m_padding; }
  int GetSpacing() const { return m_spacing; }
  bool IsHorizontal() const { return m_horizontal; }

  /// The children stacked by one box: measures and places `children` in `area`.
  static int MeasureStackWidth(const std::vector<CVisualElement*>& children, std::size_t first,
                               bool horizontal, int spacing);
  static int MeasureStackHeight(const std::vector<CVisualElement*>& children, std::size_t first,
                                bool horizontal, int spacing, int width);
  static void ArrangeStack(const std::vector<CVisualElement*>& children, std::size_t first, bool horizontal,
                           int spacing, const ombrelc7::rect<int>& area);

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void ArrangeChildren() override;
  bool ChildrenInOrder() const override;
  void OnChildrenChanged() override;
  void OnChildInvalidated(CVisualElement* child) override;
  void OnThemeChanged() override { m_valid_count = 0; }

 private:
  ombrelc7::rect<int> InnerRect() const;
  // Where the children after the valid ones start: the bottom of the last one shown.
  int ValidPrefixEnd(bool& any) const;
  bool CanReusePrefix() const;

  int m_padding = 0;
  int m_spacing = 0;
  bool m_horizontal;
  bool m_has_client_child = false;   // alClient children break the order of positions
  bool m_has_stretch_child = false;  // they depend on all others: no reuse then
  // A long column (a log) lays out only what changed: the first m_valid_count children
  // keep the places they got in the last layout of the same frame.
  std::size_t m_valid_count = 0;
  std::size_t m_child_count = 0;
  ombrelc7::rect<int> m_last_inner;
};

/// Stacks its children top to bottom. Painting and hit testing find the visible children
/// by binary search over their arranged positions.
class CVertBox : public CBoxBase {
 public:
  static constexpr bool horizontal = false;
  CVertBox(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
      : CBoxBase(parent, size, alignment, false) {}
};

/// Stacks its children left to right.
class CHorzBox : public CBoxBase {
 public:
  static constexpr bool horizontal = true;
  CHorzBox(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
      : CBoxBase(parent, size, alignment, true) {}
};

}  // namespace ombrelcfrw7
