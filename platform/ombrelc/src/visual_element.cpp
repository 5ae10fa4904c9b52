#include <ombrelcfrw7/visual_element.h>

#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>

#include <a11y/atk_bridge.h>

#include "text_metrics_p.h"

#include <wx/dc.h>

#include <algorithm>

namespace ombrelcfrw7 {

using ombrelc7::point;
using ombrelc7::rect;

CVisualElement::CVisualElement(CVisualElement* parent, const ombrelc7::size<int>& size,
                               ombrelc7::Alignment alignment)
    : m_min(size), m_alignment(static_cast<std::uint8_t>(alignment)) {
  if (parent) {
    Attach(parent);
    RequestLayout();
  }
}

CVisualElement::~CVisualElement() {
  // Children of a dying parent are covered by the parent's notice.
  if (!m_parent || !(m_parent->m_flags & flag_dying)) {
    if (CBaseControl* control = GetBaseControl()) {
      control->ElementGone(this);
    }
  }
  m_flags |= flag_dying;
  for (CVisualElement* child : m_children) {
    delete child;
  }
  m_children.clear();
  if (m_parent && !(m_parent->m_flags & flag_dying)) {
    Detach();
  }
}

void CVisualElement::Attach(CVisualElement* parent) {
  m_parent = parent;
  parent->m_children.push_back(this);
  parent->OnChildrenChanged();
  parent->InvalidateMeasure();
  if (a11y::atk_bridge_t* bridge = IsVisible() ? GetAccessibleBridge() : nullptr) {
    bridge->child_added(parent, this);
  }
}

void CVisualElement::Detach() {
  CVisualElement* parent = m_parent;
  if (!parent) {
    return;
  }
  if (CBaseControl* control = GetBaseControl()) {
    control->ElementGone(this);
  }
  parent->Invalidate();
  auto& siblings = parent->m_children;
  // The last child goes first in logs trimmed from the end; search from there.
  auto found = std::find(siblings.rbegin(), siblings.rend(), this);
  if (found != siblings.rend()) {
    siblings.erase(std::next(found).base());
  }
  m_parent = nullptr;
  parent->OnChildrenChanged();
  parent->InvalidateMeasure();
  parent->RequestLayout();
}

void CVisualElement::ReParent(CVisualElement* parent, bool rearrange) {
  if (parent == m_parent) {
    return;
  }
  for (CVisualElement* p = parent; p; p = p->m_parent) {
    if (p == this) {
      return;  // into its own subtree: refuse
    }
  }
  Detach();
  m_rect = rect<int>();
  InvalidateMeasure();
  if (parent) {
    Attach(parent);
    if (rearrange) {
      RequestLayout();
    }
  }
}

bool CVisualElement::IsShownInTree() const {
  for (const CVisualElement* e = this; e; e = e->m_parent) {
    if (!e->IsVisible()) {
      return false;
    }
  }
  return true;
}

void CVisualElement::SetVisible(bool visible) {
  if (visible == IsVisible()) {
    return;
  }
  a11y::atk_bridge_t* bridge = m_parent ? GetAccessibleBridge() : nullptr;
  if (!visible) {
    Invalidate();
    if (bridge) {
      bridge->node_gone(this);
    }
  }
  m_flags = visible ? (m_flags | flag_visible) : (m_flags & ~flag_visible);
  if (visible && bridge) {
    bridge->child_added(m_parent, this);
  }
  OnChange();
}

void CVisualElement::SetBkColor(const wxColour& colour) {
  const std::uint32_t packed = _internal::pack_colour(colour);
  if (packed != m_bk) {
    m_bk = packed;
    Invalidate();
  }
}

wxColour CVisualElement::GetBkColor() const { return _internal::unpack_colour(m_bk); }

void CVisualElement::SetMinSize(const ombrelc7::size<int>& size) {
  if (size != m_min) {
    m_min = size;
    OnChange();
  }
}

void CVisualElement::SetAlignment(ombrelc7::Alignment alignment) {
  if (alignment != m_alignment) {
    m_alignment = static_cast<std::uint8_t>(alignment);
    OnChange();
  }
}

void CVisualElement::ForceRearrange() {
  if (ombrelc7::ISysWindow* window = GetWindow()) {
    window->RequestLayout();
    window->FlushLayout();
  }
}

std::string CVisualElement::AsString() const {
  std::string out;
  for (const CVisualElement* child : m_children) {
    AppendShownText(out, *child);
  }
  return out;
}

void CVisualElement::AppendShownText(std::string& out, const CVisualElement& element) {
  if (!element.IsVisible()) {
    return;
  }
  const std::string text = element.AsString();
  if (text.empty()) {
    return;
  }
  if (!out.empty()) {
    out += '\n';
  }
  out += text;
}

void CVisualElement::OnChange() {
  InvalidateMeasure();
  Invalidate();
  RequestLayout();
}

void CVisualElement::OnChange(CVisualElement* source, UpdateType what) {
  CVisualElement* target = source ? source : this;
  if (what == utContent) {
    target->Invalidate();
    return;
  }
  target->MarkSubtreeDirty();
  target->OnChange();
}

void CVisualElement::MarkSubtreeDirty() {
  m_pref_width = -1;
  m_cache_width = -1;
  m_flags |= flag_layout_dirty;
  for (CVisualElement* child : m_children) {
    child->MarkSubtreeDirty();
  }
}

void CVisualElement::InvalidateMeasure() {
  CVisualElement* child = nullptr;
  for (CVisualElement* e = this; e; child = e, e = e->m_parent) {
    if (child) {
      e->OnChildInvalidated(child);
    }
    e->m_pref_width = -1;
    e->m_cache_width = -1;
    e->m_flags |= flag_layout_dirty;
  }
}

rect<int> CVisualElement::GetWindowRect() const {
  rect<int> r = m_rect;
  for (const CVisualElement* p = m_parent; p; p = p->m_parent) {
    const point<int> offset = p->ChildOffset();
    r = r.offset(offset.x, offset.y);
  }
  return r;
}

point<int> CVisualElement::FromWindow(const point<int>& pos) const {
  point<int> p = pos;
  for (const CVisualElement* a = m_parent; a; a = a->m_parent) {
    const point<int> offset = a->ChildOffset();
    p = point<int>(p.x - offset.x, p.y - offset.y);
  }
  return p;
}

rect<int> CVisualElement::GetVisibleWindowRect() const {
  if (!IsShownInTree()) {
    return {};
  }
  rect<int> r = m_rect;
  for (const CVisualElement* p = m_parent; p; p = p->m_parent) {
    const point<int> offset = p->ChildOffset();
    r = r.offset(offset.x, offset.y).intersection(p->ChildClip());
    if (r.empty()) {
      return {};
    }
  }
  return r;
}

CBaseControl* CVisualElement::GetBaseControl() const {
  const CVisualElement* top = this;
  while (top->m_parent) {
    top = top->m_parent;
  }
  return (top->m_flags & flag_root) ? CBaseControl::OwnerOfRoot(top) : nullptr;
}

ombrelc7::COMBRELControl* CVisualElement::GetControl() const { return GetBaseControl(); }

ombrelc7::ISysWindow* CVisualElement::GetWindow() const {
  CBaseControl* control = GetBaseControl();
  return control ? control->GetWindow() : nullptr;
}

void CVisualElement::Invalidate() const {
  if (ombrelc7::ISysWindow* window = GetWindow()) {
    window->Invalidate(GetVisibleWindowRect());
  }
}

void CVisualElement::RequestLayout() const {
  if (ombrelc7::ISysWindow* window = GetWindow()) {
    window->RequestLayout();
  }
}

int CVisualElement::GetPreferredWidth() const {
  if (m_pref_width < 0) {
    m_pref_width = std::max(0, MeasureWidth());
  }
  return m_pref_width;
}

int CVisualElement::GetHeightFor(int width) const {
  if (m_cache_width != width) {
    m_cache_height = std::max(0, MeasureHeight(width));
    m_cache_width = width;
  }
  return m_cache_height;
}

int CVisualElement::MeasureWidth() const {
  int width = m_min.cx;
  for (const CVisualElement* child : m_children) {
    if (child->IsVisible()) {
      width = std::max(width, child->GetPreferredWidth());
    }
  }
  return width;
}

int CVisualElement::MeasureHeight(int width) const {
  int height = m_min.cy;
  for (CVisualElement* child : m_children) {
    if (child->IsVisible()) {
      height = std::max(height, PlaceInArea(child, rect<int>(0, 0, width, 0)).height());
    }
  }
  return height;
}

rect<int> CVisualElement::PlaceInArea(CVisualElement* child, const rect<int>& area) {
  switch (child->GetAlignment()) {
    case ombrelc7::alClient:
      return rect<int>(area.left, area.top, area.right, std::max(area.bottom, area.top + child->m_min.cy));
    case ombrelc7::alFill:
    case ombrelc7::alStretch: {
      const int height = std::max(child->GetHeightFor(area.width()), area.height());
      return rect<int>::from_size(
          area.left, area.top, area.width(),
          child->GetAlignment() == ombrelc7::alStretch ? height : child->GetHeightFor(area.width()));
    }
    default: {
      const int width = std::min(child->GetPreferredWidth(), area.width());
      const int left = child->GetAlignment() == ombrelc7::alEnd ? area.right - width : area.left;
      return rect<int>::from_size(left, area.top, width, child->GetHeightFor(width));
    }
  }
}

void CVisualElement::ArrangeChildren() {
  for (CVisualElement* child : m_children) {
    child->Arrange(child->IsVisible() ? PlaceInArea(child, m_rect)
                                      : rect<int>(m_rect.left, m_rect.top, m_rect.left, m_rect.top));
  }
}

void CVisualElement::Arrange(const rect<int>& area) {
  if (area == m_rect && !(m_flags & flag_layout_dirty)) {
    return;
  }
  m_rect = area;
  m_flags &= ~flag_layout_dirty;
  if (!m_children.empty()) {
    ArrangeChildren();
  }
}

void CVisualElement::Paint(wxDC& dc, const rect<int>& clip) {
  if (!IsVisible() || !m_rect.intersects(clip)) {
    return;
  }
  if (m_bk != 0) {
    const rect<int> r = m_rect.intersection(clip);
    const wxColour colour = _internal::unpack_colour(m_bk);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(colour));
    dc.DrawRectangle(r.left, r.top, r.width(), r.height());
  }
  PaintContent(dc, clip);
  if (!m_children.empty()) {
    PaintChildren(dc, clip);
  }
}

namespace {

// Index of the first child whose arranged bottom is below `y`; children of a box that
// says so follow each other downwards.
std::size_t first_below(const std::vector<CVisualElement*>& children, int y) {
  return static_cast<std::size_t>(
      std::partition_point(children.begin(), children.end(),
                           [y](const CVisualElement* child) { return child->GetRect().bottom <= y; }) -
      children.begin());
}

}  // namespace

void CVisualElement::PaintChildren(wxDC& dc, const rect<int>& clip) {
  if (ChildrenInOrder()) {
    for (std::size_t i = first_below(m_children, clip.top); i < m_children.size(); ++i) {
      CVisualElement* child = m_children[i];
      if (child->m_rect.top >= clip.bottom) {
        break;
      }
      child->Paint(dc, clip);
    }
    return;
  }
  for (CVisualElement* child : m_children) {
    child->Paint(dc, clip);
  }
}

CVisualElement* CVisualElement::ChildAt(const point<int>& pos) const {
  if (ChildrenInOrder()) {
    const std::size_t i = first_below(m_children, pos.y);
    if (i < m_children.size() && m_children[i]->IsVisible() && m_children[i]->m_rect.contains(pos)) {
      return m_children[i];
    }
    // Zero-height invisible children share positions: look past them.
    for (std::size_t j = i + 1; j < m_children.size() && m_children[j]->m_rect.top <= pos.y; ++j) {
      if (m_children[j]->IsVisible() && m_children[j]->m_rect.contains(pos)) {
        return m_children[j];
      }
    }
    return nullptr;
  }
  for (auto it = m_children.rbegin(); it != m_children.rend(); ++it) {
    if ((*it)->IsVisible() && (*it)->m_rect.contains(pos)) {
      return *it;
    }
  }
  return nullptr;
}

CVisualElement* CVisualElement::HitTest(const point<int>& pos) {
  if (!IsVisible() || !m_rect.contains(pos)) {
    return nullptr;
  }
  if (!m_children.empty() && ChildClip().contains(pos)) {
    const point<int> offset = ChildOffset();
    const point<int> inner(pos.x - offset.x, pos.y - offset.y);
    if (CVisualElement* child = ChildAt(inner)) {
      if (CVisualElement* hit = child->HitTest(inner)) {
        return hit;
      }
    }
  }
  return this;
}

void CVisualElement::SetFocus() {
  if (CBaseControl* control = GetBaseControl()) {
    control->SetFocusElement(this);
  }
}

bool CVisualElement::HasFocus() const {
  CBaseControl* control = GetBaseControl();
  return control && control->GetFocusElement() == this;
}

}  // namespace ombrelcfrw7
