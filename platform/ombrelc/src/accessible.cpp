// What the elements tell assistive technologies, and the tree of a control as the
// accessibility bridge walks it.
#include <ombrelcfrw7/accessible_part.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelcfrw7/button.h>
#include <ombrelcfrw7/caption.h>
#include <ombrelcfrw7/gauge.h>
#include <ombrelcfrw7/image.h>

#include <ombrelc7/sys_window.h>

#include <a11y/atk_bridge.h>

#include "accessible_tree_p.h"

#include <algorithm>
#include <cstdint>

namespace ombrelcfrw7 {

void CVisualElement::DescribeAccessible(a11y::info_t& info) const { info.role = a11y::role_t::panel; }

void CVisualElement::SetLive(a11y::politeness_t live) {
  m_flags &= ~(flag_live_polite | flag_live_assertive);
  if (live == a11y::politeness_t::polite) {
    m_flags |= flag_live_polite;
  } else if (live == a11y::politeness_t::assertive) {
    m_flags |= flag_live_assertive;
  }
}

a11y::politeness_t CVisualElement::GetLive() const {
  if (m_flags & flag_live_assertive) {
    return a11y::politeness_t::assertive;
  }
  return (m_flags & flag_live_polite) ? a11y::politeness_t::polite : a11y::politeness_t::off;
}

a11y::atk_bridge_t* CVisualElement::GetAccessibleBridge() const {
  CBaseControl* control = GetBaseControl();
  return control ? control->GetAccessibleBridge() : nullptr;
}

void CCaption::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::label;
  info.name = AsString();
  info.has_text = true;
  info.text = info.name;
}

void CButton::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::push_button;
  info.name = AsString();
  info.actions = {"click"};
  if (IsEnabled()) {
    info.states |= a11y::state_enabled | a11y::state_focusable;
  }
  if (IsPressed()) {
    info.states |= a11y::state_pressed;
  }
}

bool CButton::DoAccessibleAction(int index) {
  if (index != 0 || !IsEnabled()) {
    return false;
  }
  Click();
  return true;
}

void CImage::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::image;
  info.name = m_accessible_name;
  info.description = m_animation ? "Animation" : "Picture";
}

void CGauge::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::progress_bar;
  info.name = "Progress";
  info.has_value = true;
  info.value.current = m_max > 0 ? m_pos * 100.0 / m_max : 0.0;
}

// ---------------------------------------------------------------------------------------

a11y::key_t CAccessiblePart::GetAccessibleKey() const {
  return reinterpret_cast<a11y::key_t>(reinterpret_cast<std::uintptr_t>(this) | 1);
}

void CVisualElement::ListAccessible(std::vector<const CAccessiblePart*>&,
                                    std::vector<CVisualElement*>& children) const {
  for (CVisualElement* child : m_children) {
    if (child->IsVisible()) {
      children.push_back(child);
    }
  }
}

a11y::key_t CBaseControl::accessible_tree_t::parent(a11y::key_t node) const {
  if (!IsPart(node)) {
    return Element(node)->GetParent();
  }
  const CAccessiblePart* part = Part(node);
  return part->GetParentPart() ? part->GetParentPart()->GetAccessibleKey() : part->GetElement();
}

std::vector<a11y::key_t> CBaseControl::accessible_tree_t::children(a11y::key_t node) const {
  std::vector<const CAccessiblePart*> parts;
  std::vector<CVisualElement*> elements;
  if (IsPart(node)) {
    parts = Part(node)->GetParts();
  } else {
    Element(node)->ListAccessible(parts, elements);
  }
  std::vector<a11y::key_t> keys;
  keys.reserve(parts.size() + elements.size());
  for (const CAccessiblePart* part : parts) {
    keys.push_back(part->GetAccessibleKey());
  }
  keys.insert(keys.end(), elements.begin(), elements.end());
  return keys;
}

void CBaseControl::accessible_tree_t::describe(a11y::key_t node, a11y::info_t& info) const {
  if (IsPart(node)) {
    const CAccessiblePart* part = Part(node);
    part->DescribeAccessible(info);
    info.states |= a11y::state_visible;
    if (!part->GetWindowRect().empty() && !part->GetElement()->GetVisibleWindowRect().empty()) {
      info.states |= a11y::state_showing;
    }
    return;
  }
  const CVisualElement* element = Element(node);
  element->DescribeAccessible(info);
  if (info.live == a11y::politeness_t::off) {
    info.live = element->GetLive();
  }
  info.states |= a11y::state_visible;
  if (!element->GetVisibleWindowRect().empty()) {
    info.states |= a11y::state_showing;
  }
  if (element->IsFocusable()) {
    info.states |= a11y::state_focusable;
  }
  if (m_control->GetFocusElement() == element) {
    info.states |= a11y::state_focused;
  }
}

a11y::rect_t CBaseControl::accessible_tree_t::extents(a11y::key_t node) const {
  const ombrelc7::rect<int> area =
      IsPart(node) ? Part(node)->GetWindowRect() : Element(node)->GetWindowRect();
  return {area.left, area.top, area.width(), area.height()};
}

bool CBaseControl::accessible_tree_t::do_action(a11y::key_t node, int index) {
  return IsPart(node) ? Part(node)->DoAccessibleAction(index) : Element(node)->DoAccessibleAction(index);
}

bool CBaseControl::accessible_tree_t::grab_focus(a11y::key_t node) {
  CVisualElement* element = Owner(node);
  if (!element->IsFocusable()) {
    return false;
  }
  element->SetFocus();
  return true;
}

a11y::key_t CBaseControl::accessible_tree_t::table_cell(a11y::key_t table, int row, int column) const {
  const CAccessiblePart* cell = IsPart(table) ? nullptr : Element(table)->GetAccessibleCell(row, column);
  return cell ? cell->GetAccessibleKey() : nullptr;
}

void CBaseControl::StartAccessible() {
  wxWindow* window = GetWindow() ? GetWindow()->GetWxWindow() : nullptr;
  if (window) {
    m_accessible = std::make_unique<accessible_tree_t>(this);
    m_accessible->Start(window);
  }
}

void CBaseControl::StopAccessible() {
  if (m_accessible) {
    m_accessible->Stop();
    m_accessible.reset();
  }
}

a11y::atk_bridge_t* CBaseControl::GetAccessibleBridge() const {
  return m_accessible ? m_accessible->Bridge() : nullptr;
}

}  // namespace ombrelcfrw7
