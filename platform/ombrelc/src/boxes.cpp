#include <ombrelcfrw7/boxes.h>

#include <algorithm>

namespace ombrelcfrw7 {

using ombrelc7::rect;

namespace {

bool stacked(const CVisualElement* child) {
  return child->IsVisible() && child->GetAlignment() != ombrelc7::alClient;
}

// The widths of the children of a horizontal stack in `width`: their own, and for alStretch
// children a share of what is left (at least their own).
std::vector<int> row_widths(const std::vector<CVisualElement*>& children, std::size_t first, int spacing,
                            int width) {
  std::vector<int> widths(children.size(), 0);
  int used = 0;
  int count = 0;
  int stretch = 0;
  for (std::size_t i = first; i < children.size(); ++i) {
    if (!stacked(children[i])) {
      continue;
    }
    ++count;
    widths[i] = children[i]->GetPreferredWidth();
    if (children[i]->GetAlignment() == ombrelc7::alStretch) {
      ++stretch;
    } else {
      used += widths[i];
    }
  }
  int left = width - used - spacing * std::max(0, count - 1);
  for (std::size_t i = first; i < children.size() && stretch > 0; ++i) {
    if (stacked(children[i]) && children[i]->GetAlignment() == ombrelc7::alStretch) {
      const int share = std::max(0, left / stretch);
      widths[i] = std::max(widths[i], share);
      left -= share;
      --stretch;
    }
  }
  return widths;
}

int cross_width(const CVisualElement* child, int width) {
  const auto a = child->GetAlignment();
  return (a == ombrelc7::alFill || a == ombrelc7::alStretch) ? width
                                                             : std::min(child->GetPreferredWidth(), width);
}

// Places children [from, end) of a column from `y` on; `any`: a shown child is above, so
// spacing comes first. alStretch children share `left` among `stretch` of them.
void place_column(const std::vector<CVisualElement*>& children, std::size_t from, int y, bool any,
                  int spacing, const rect<int>& area, int left, int stretch) {
  const int width = area.width();
  for (std::size_t i = from; i < children.size(); ++i) {
    CVisualElement* child = children[i];
    if (!child->IsVisible()) {
      child->Arrange(rect<int>(area.left, y, area.left, y));
      continue;
    }
    const auto a = child->GetAlignment();
    if (a == ombrelc7::alClient) {
      child->Arrange(area);
      continue;
    }
    y += any ? spacing : 0;
    any = true;
    const int w = cross_width(child, width);
    int h = child->GetHeightFor(w);
    if (a == ombrelc7::alStretch && stretch > 0) {
      const int share = std::max(0, left / stretch);
      left -= share;
      --stretch;
      h = std::max(h, share);
    }
    const int x = a == ombrelc7::alEnd ? area.right - w : area.left;
    child->Arrange(rect<int>::from_size(x, y, w, h));
    y += h;
  }
}

}  // namespace

CBoxBase::CBoxBase(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment,
                   bool horizontal)
    : CVisualElement(parent, size, alignment), m_horizontal(horizontal) {}

void CBoxBase::SetPadding(int padding) {
  if (padding != m_padding) {
    m_padding = std::max(0, padding);
    m_valid_count = 0;
    OnChange();
  }
}

void CBoxBase::SetSpacing(int spacing) {
  if (spacing != m_spacing) {
    m_spacing = std::max(0, spacing);
    m_valid_count = 0;
    OnChange();
  }
}

int CBoxBase::MeasureStackWidth(const std::vector<CVisualElement*>& children, std::size_t first,
                                bool horizontal, int spacing) {
  int width = 0;
  int count = 0;
  for (std::size_t i = first; i < children.size(); ++i) {
    const CVisualElement* child = children[i];
    if (!child->IsVisible()) {
      continue;
    }
    const int w = std::max(child->GetPreferredWidth(), child->GetMinSize().cx);
    if (horizontal && stacked(child)) {
      width += w + (count++ > 0 ? spacing : 0);
    } else {
      width = std::max(width, w);
    }
  }
  return width;
}

int CBoxBase::MeasureStackHeight(const std::vector<CVisualElement*>& children, std::size_t first,
                                 bool horizontal, int spacing, int width) {
  int height = 0;
  int client = 0;
  if (horizontal) {
    const std::vector<int> widths = row_widths(children, first, spacing, width);
    for (std::size_t i = first; i < children.size(); ++i) {
      if (stacked(children[i])) {
        height = std::max(height, children[i]->GetHeightFor(widths[i]));
      }
    }
  } else {
    int count = 0;
    for (std::size_t i = first; i < children.size(); ++i) {
      const CVisualElement* child = children[i];
      if (!child->IsVisible()) {
        continue;
      }
      if (child->GetAlignment() == ombrelc7::alClient) {
        client = std::max(client, child->GetMinSize().cy);
        continue;
      }
      height += child->GetHeightFor(cross_width(child, width)) + (count++ > 0 ? spacing : 0);
    }
  }
  return std::max(height, client);
}

void CBoxBase::ArrangeStack(const std::vector<CVisualElement*>& children, std::size_t first, bool horizontal,
                            int spacing, const rect<int>& area) {
  const int width = area.width();
  if (horizontal) {
    const std::vector<int> widths = row_widths(children, first, spacing, width);
    int x = area.left;
    bool any = false;
    for (std::size_t i = first; i < children.size(); ++i) {
      CVisualElement* child = children[i];
      if (!child->IsVisible()) {
        child->Arrange(rect<int>(x, area.top, x, area.top));
        continue;
      }
      const auto a = child->GetAlignment();
      if (a == ombrelc7::alClient) {
        child->Arrange(area);
        continue;
      }
      x += any ? spacing : 0;
      any = true;
      const int w = widths[i];
      int h = area.height();
      int top = area.top;
      if (a != ombrelc7::alFill && a != ombrelc7::alStretch) {
        h = std::min(child->GetHeightFor(w), area.height());
        top = a == ombrelc7::alEnd ? area.bottom - h : area.top;
      }
      child->Arrange(rect<int>::from_size(x, top, w, h));
      x += w;
    }
    return;
  }

  // Vertically: own heights first, then alStretch children share what is left.
  int fixed = 0;
  int count = 0;
  int stretch = 0;
  for (std::size_t i = first; i < children.size(); ++i) {
    const CVisualElement* child = children[i];
    if (!stacked(child)) {
      continue;
    }
    ++count;
    if (child->GetAlignment() == ombrelc7::alStretch) {
      ++stretch;
    } else {
      fixed += child->GetHeightFor(cross_width(child, width));
    }
  }
  int left = area.height() - fixed - spacing * std::max(0, count - 1);
  place_column(children, first, area.top, false, spacing, area, left, stretch);
}

int CBoxBase::MeasureWidth() const {
  return std::max(GetMinSize().cx,
                  MeasureStackWidth(GetChildren(), 0, m_horizontal, m_spacing) + 2 * m_padding);
}

rect<int> CBoxBase::InnerRect() const {
  const rect<int>& r = GetRect();
  rect<int> inner(r.left + m_padding, r.top + m_padding, r.right - m_padding, r.bottom - m_padding);
  inner.right = std::max(inner.right, inner.left);
  inner.bottom = std::max(inner.bottom, inner.top);
  return inner;
}

bool CBoxBase::CanReusePrefix() const {
  return !m_horizontal && !m_has_client_child && !m_has_stretch_child && m_valid_count > 0 &&
         m_valid_count <= GetChildren().size();
}

int CBoxBase::ValidPrefixEnd(bool& any) const {
  const auto& children = GetChildren();
  for (std::size_t j = m_valid_count; j-- > 0;) {
    if (stacked(children[j])) {
      any = true;
      return children[j]->GetRect().bottom;
    }
  }
  any = false;
  return m_last_inner.top;
}

int CBoxBase::MeasureHeight(int width) const {
  const int inner = std::max(0, width - 2 * m_padding);
  const auto& children = GetChildren();
  if (CanReusePrefix() && inner == m_last_inner.width()) {
    // The valid children's heights are in their places: only the rest is summed.
    bool any = false;
    int height = ValidPrefixEnd(any) - m_last_inner.top;
    for (std::size_t i = m_valid_count; i < children.size(); ++i) {
      const CVisualElement* child = children[i];
      if (!stacked(child)) {
        if (child->IsVisible()) {
          return std::max(GetMinSize().cy,
                          MeasureStackHeight(children, 0, m_horizontal, m_spacing, inner) + 2 * m_padding);
        }
        continue;
      }
      height += child->GetHeightFor(cross_width(child, inner)) + (any ? m_spacing : 0);
      any = true;
    }
    return std::max(GetMinSize().cy, height + 2 * m_padding);
  }
  return std::max(GetMinSize().cy,
                  MeasureStackHeight(children, 0, m_horizontal, m_spacing, inner) + 2 * m_padding);
}

void CBoxBase::ArrangeChildren() {
  const rect<int> inner = InnerRect();
  const auto& children = GetChildren();
  const bool same_frame =
      inner.left == m_last_inner.left && inner.right == m_last_inner.right && inner.top == m_last_inner.top;
  bool reuse = same_frame && CanReusePrefix();
  for (std::size_t i = m_valid_count; reuse && i < children.size(); ++i) {
    const auto a = children[i]->GetAlignment();
    reuse = a != ombrelc7::alClient && a != ombrelc7::alStretch;
  }
  if (reuse) {
    bool any = false;
    const int y = ValidPrefixEnd(any);
    place_column(children, m_valid_count, y, any, m_spacing, inner, 0, 0);
  } else {
    m_has_client_child = std::any_of(children.begin(), children.end(), [](const CVisualElement* child) {
      return child->GetAlignment() == ombrelc7::alClient;
    });
    m_has_stretch_child = std::any_of(children.begin(), children.end(), [](const CVisualElement* child) {
      return child->GetAlignment() == ombrelc7::alStretch;
    });
    ArrangeStack(children, 0, m_horizontal, m_spacing, inner);
  }
  m_last_inner = inner;
  m_valid_count = children.size();
  m_child_count = children.size();
}

bool CBoxBase::ChildrenInOrder() const { return !m_horizontal && !m_has_client_child; }

void CBoxBase::OnChildrenChanged() {
  const auto& children = GetChildren();
  if (children.size() < m_child_count) {
    m_valid_count = 0;  // one left from the middle: those after it move up
  } else if (!children.empty() && children.back()->GetAlignment() == ombrelc7::alClient) {
    m_has_client_child = true;
  }
  m_child_count = children.size();
}

void CBoxBase::OnChildInvalidated(CVisualElement* child) {
  const auto& children = GetChildren();
  if (m_valid_count == 0) {
    return;
  }
  std::size_t index = children.size();
  if (!children.empty() && children.back() == child) {
    index = children.size() - 1;  // the usual case: the newest line of a log
  } else if (ChildrenInOrder()) {
    // Arranged children follow each other: search by position, then among equal tops.
    const int top = child->GetRect().top;
    auto it = std::partition_point(children.begin(), children.end(),
                                   [top](const CVisualElement* c) { return c->GetRect().top < top; });
    for (; it != children.end() && (*it)->GetRect().top == top; ++it) {
      if (*it == child) {
        index = static_cast<std::size_t>(it - children.begin());
        break;
      }
    }
  }
  if (index == children.size()) {
    auto it = std::find(children.begin(), children.end(), child);
    index = static_cast<std::size_t>(it - children.begin());
  }
  m_valid_count = std::min(m_valid_count, index);
}

}  // namespace ombrelcfrw7
