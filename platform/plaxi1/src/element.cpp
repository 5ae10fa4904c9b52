#include <plaxi1/element.h>
#include <plaxi1/element_adapter.h>

#include "element_p.h"

#include <wx/dc.h>
#include <wx/region.h>

#include <algorithm>

namespace plaxi1::elements {

namespace {

using _internal::share;
using ptr_t = UIElement::ptr_t;

/// The flags of one axis: packed from the low or the high end, centred, stretched.
struct axis_flags_t {
  int low;
  int high;
  int center;
  int stretch;
};

constexpr axis_flags_t horizontal{pos_left, pos_right, pos_center_h, pos_expand_h};
constexpr axis_flags_t vertical{pos_top, pos_bottom, pos_center_v, pos_fill_v};

/// Where a child goes along one axis.
struct span_t {
  int flags = 0;
  int wanted = 0;
  int pos = 0;
  int size = 0;
};

// Packs first, so that the free band is known, then places the others in it.
void place_on_axis(const axis_flags_t& axis, std::vector<span_t>& spans, int start, int length) {
  int low = start;
  int high = start + length;
  for (span_t& span : spans) {
    span.size = span.wanted;
    if (span.flags & axis.low) {
      span.pos = low;
      low += span.wanted;
    } else if (span.flags & axis.high) {
      high -= span.wanted;
      span.pos = high;
    }
  }
  const int band = std::max(0, high - low);
  for (span_t& span : spans) {
    if (span.flags & (axis.low | axis.high)) {
      continue;
    }
    if (span.flags & axis.stretch) {
      span.pos = low;
      span.size = band;
    } else if (span.flags & axis.center) {
      span.pos = low + (band - span.wanted) / 2;
    } else {
      span.pos = low;
    }
  }
}

void min_on_axis(const axis_flags_t& axis, int flags, int wanted, int& packed, int& others) {
  if (flags & (axis.low | axis.high)) {
    packed += wanted;
  } else {
    others = std::max(others, wanted);
  }
}

}  // namespace

// ---- Layout ------------------------------------------------------------------------------

wxSize Layout::GetMinSize() const {
  int packed_w = 0, others_w = 0, packed_h = 0, others_h = 0;
  if (!m_owner) {
    return wxSize(0, 0);
  }
  for (const ptr_t& child : m_owner->GetChildren()) {
    if (!child->IsVisible()) {
      continue;
    }
    const wxSize wanted = child->GetWantedSize();
    const int flags = child->GetPositionFlags();
    min_on_axis(horizontal, flags, wanted.x, packed_w, others_w);
    min_on_axis(vertical, flags, wanted.y, packed_h, others_h);
  }
  return wxSize(packed_w + others_w, packed_h + others_h);
}

void Layout::Arrange(const wxRect& rect) {
  if (!m_owner) {
    return;
  }
  std::vector<UIElement*> shown;
  std::vector<span_t> across, down;
  for (const ptr_t& child : m_owner->GetChildren()) {
    if (!child->IsVisible()) {
      continue;
    }
    const wxSize wanted = child->GetWantedSize();
    shown.push_back(child.get());
    across.push_back(span_t{child->GetPositionFlags(), wanted.x});
    down.push_back(span_t{child->GetPositionFlags(), wanted.y});
  }
  place_on_axis(horizontal, across, rect.x, rect.width);
  place_on_axis(vertical, down, rect.y, rect.height);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    shown[i]->Arrange(wxRect(across[i].pos, down[i].pos, across[i].size, down[i].size));
  }
}

// ---- UIElement ---------------------------------------------------------------------------

UIElement::UIElement(const ptr_t& parent, int position_flags)
    : m_layout(new Layout(this)), m_position_flags(position_flags) {
  if (parent) {
    m_parent = parent.get();
    parent->m_children.push_back(ptr_t(this));
    parent->RequestLayout();
    if (ElementAdapter* adapter = GetAdapter()) {
      adapter->ElementAdded(this);
    }
  }
}

UIElement::~UIElement() {
  m_layout->m_owner = nullptr;
  // Children that others still hold outlive their parent as roots of their own.
  for (const ptr_t& child : m_children) {
    child->m_parent = nullptr;
  }
  m_children.clear();
}

void UIElement::Detach() {
  UIElement* parent = m_parent;
  if (!parent) {
    return;
  }
  if (ElementAdapter* adapter = GetAdapter()) {
    adapter->ElementRemoved(this);
    if (IsShownInTree()) {
      adapter->RefreshRect(m_rect);
    }
  }
  parent->RequestLayout();
  m_parent = nullptr;
  auto& siblings = parent->m_children;
  auto found = std::find_if(siblings.begin(), siblings.end(),
                            [this](const ptr_t& sibling) { return sibling.get() == this; });
  if (found != siblings.end()) {
    siblings.erase(found);  // may delete this element: nothing may follow
  }
}

void UIElement::ChangeParent(const ptr_t& parent) {
  // `parent` may lie in the vector that Detach shortens: the element itself is what counts.
  UIElement* const target = parent.get();
  if (target && target == m_parent) {
    return;
  }
  for (UIElement* p = target; p; p = p->m_parent) {
    if (p == this) {
      return;  // into its own subtree: refused
    }
  }
  const ptr_t self = share(this);  // the old parent may hold the only share
  Detach();
  m_rect = wxRect();
  if (target) {
    m_parent = target;
    target->m_children.push_back(ptr_t(this));
    target->RequestLayout();
    if (ElementAdapter* adapter = GetAdapter()) {
      adapter->ElementAdded(this);
    }
  }
}

void UIElement::SetPositionFlags(int position_flags) {
  if (position_flags != m_position_flags) {
    m_position_flags = position_flags;
    RequestLayout();
  }
}

void UIElement::SetMargin(const margin_t& margin) {
  if (margin != m_margin) {
    m_margin = margin;
    Invalidate();
  }
}

void UIElement::SetVisible(bool visible) {
  if (visible == m_visible) {
    return;
  }
  if (!visible) {
    Invalidate();
    if (ElementAdapter* adapter = GetAdapter()) {
      adapter->ElementRemoved(this);
    }
  }
  m_visible = visible;
  m_shown_since_layout = visible;
  RequestLayout();
  if (ElementAdapter* adapter = visible ? GetAdapter() : nullptr) {
    adapter->ElementAdded(this);
  }
  if (const ptr_t self = share(this)) {
    visibility_changed(self);
  }
}

bool UIElement::IsShownInTree() const {
  for (const UIElement* e = this; e; e = e->m_parent) {
    if (!e->m_visible) {
      return false;
    }
  }
  return true;
}

ptr_t UIElement::FindByTestID(const std::string& id) {
  if (m_test_id == id) {
    if (ptr_t self = share(this)) {
      return self;
    }
  }
  for (const ptr_t& child : m_children) {
    if (ptr_t found = child->FindByTestID(id)) {
      return found;
    }
  }
  return ptr_t();
}

wxSize UIElement::GetWantedSize() const {
  const wxSize natural = GetNaturalSize();
  return wxSize(m_fixed_size.x >= 0 ? m_fixed_size.x : natural.x,
                m_fixed_size.y >= 0 ? m_fixed_size.y : natural.y);
}

wxSize UIElement::GetNaturalSize() const {
  const wxSize content = GetContentSize();
  korvat2::intrusive_pointer_t<Layout> layout = const_cast<UIElement*>(this)->GetLayout();
  const wxSize min = layout ? layout->GetMinSize() : wxSize(0, 0);
  return wxSize(std::max(content.x, min.x), std::max(content.y, min.y));
}

void UIElement::SetFixedSize(const wxSize& size) {
  if (size != m_fixed_size) {
    m_fixed_size = size;
    RequestLayout();
  }
}

wxRect UIElement::GetPaintRect() const {
  return wxRect(m_rect.x + m_margin.left, m_rect.y + m_margin.top,
                std::max(0, m_rect.width - m_margin.left - m_margin.right),
                std::max(0, m_rect.height - m_margin.top - m_margin.bottom));
}

void UIElement::Invalidate() {
  ElementAdapter* adapter = GetAdapter();
  if (adapter && IsShownInTree()) {
    adapter->RefreshRect(m_rect);
  }
}

void UIElement::RequestLayout() {
  if (ElementAdapter* adapter = GetAdapter()) {
    adapter->RequestLayout();
  }
}

ElementAdapter* UIElement::GetAdapter() const {
  const UIElement* top = this;
  while (top->m_parent) {
    top = top->m_parent;
  }
  return top->m_adapter;
}

bool UIElement::IsHovered() const {
  const ElementAdapter* adapter = GetAdapter();
  return adapter && adapter->GetHoverElement() == this;
}

bool UIElement::IsPressed() const {
  const ElementAdapter* adapter = GetAdapter();
  return adapter && adapter->GetPressedElement() == this;
}

void UIElement::Arrange(const wxRect& rect) {
  if (rect != m_rect || m_shown_since_layout) {
    if (ElementAdapter* adapter = GetAdapter()) {
      adapter->RefreshRect(m_rect);
      adapter->RefreshRect(rect);
    }
    m_rect = rect;
    m_shown_since_layout = false;
  }
  if (korvat2::intrusive_pointer_t<Layout> layout = GetLayout()) {
    layout->Arrange(rect);
  }
}

void UIElement::Paint(wxDC& dc, const wxRegion& update) {
  if (!m_visible) {
    return;
  }
  if (!m_rect.IsEmpty() && update.Contains(m_rect) != wxOutRegion) {
    ++m_paint_count;
    OnPaint(dc);
  }
  for (const ptr_t& child : m_children) {
    child->Paint(dc, update);
  }
}

UIElement* UIElement::HitTest(const wxPoint& pos) {
  if (!m_visible) {
    return nullptr;
  }
  // Later children lie on top.
  for (auto child = m_children.rbegin(); child != m_children.rend(); ++child) {
    if (UIElement* hit = (*child)->HitTest(pos)) {
      return hit;
    }
  }
  return AcceptsMouse() && m_rect.Contains(pos) ? this : nullptr;
}

// ---- SpacerElement -----------------------------------------------------------------------

void SpacerElement::SetSize(const wxSize& size) {
  if (size != m_size) {
    m_size = size;
    RequestLayout();
  }
}

}  // namespace plaxi1::elements
