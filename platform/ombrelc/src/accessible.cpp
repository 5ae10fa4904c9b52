// What the elements tell assistive technologies, and the tree of a control as the
// accessibility bridge walks it.
#include <ombrelcfrw7/accessible_part.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelcfrw7/button.h>
#include <ombrelcfrw7/caption.h>
#include <ombrelcfrw7/gauge.h>
#include <ombrelcfrw7/image.h>
#include <ombrelcfrw7/message_box.h>

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

void CVisualElement::ListAccessible(std::vector<a11y::key_t>& keys) const {
  for (const CVisualElement* child : m_children) {
    if (child->IsVisible()) {
      keys.push_back(child);
    }
  }
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

void CMessageBoxBase::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::panel;
  info.name = m_caption ? m_caption->AsString() : std::string();
}

void CGauge::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::progress_bar;
  // The bar tells what runs by the title of the card it shows in.
  for (const CVisualElement* above = GetParent(); above && info.name.empty(); above = above->GetParent()) {
    if (const auto* card = dynamic_cast<const CMessageBoxBase*>(above); card && card->GetCaption()) {
      info.name = card->GetCaption()->AsString();
    }
  }
  info.has_value = true;
  info.value.current = m_max > 0 ? m_pos * 100.0 / m_max : 0.0;
}

// ---------------------------------------------------------------------------------------

a11y::key_t CAccessiblePart::GetAccessibleKey() const { return reinterpret_cast<const char*>(this) + 1; }

CAccessiblePart* CAccessiblePart::FromAccessibleKey(a11y::key_t key) {
  // Elements are aligned, so their keys never have the lowest bit set.
  if ((reinterpret_cast<std::uintptr_t>(key) & 1U) == 0) {
    return nullptr;
  }
  return reinterpret_cast<CAccessiblePart*>(const_cast<char*>(static_cast<const char*>(key) - 1));
}

bool CAccessiblePart::IsShowing() const {
  return !GetWindowRect().intersection(m_element->GetVisibleWindowRect()).empty();
}

a11y::key_t CBaseControl::accessible_tree_t::parent(a11y::key_t node) const {
  if (!IsPart(node)) {
    return Element(node)->GetParent();
  }
  const CAccessiblePart* part = Part(node);
  return part->GetParentPart() ? part->GetParentPart()->GetAccessibleKey() : part->GetElement();
}

std::vector<a11y::key_t> CBaseControl::accessible_tree_t::children(a11y::key_t node) const {
  std::vector<a11y::key_t> keys;
  if (!IsPart(node)) {
    Element(node)->ListAccessible(keys);
    return keys;
  }
  for (const CAccessiblePart* part : Part(node)->GetParts()) {
    keys.push_back(part->GetAccessibleKey());
  }
  return keys;
}

void CBaseControl::accessible_tree_t::describe(a11y::key_t node, a11y::info_t& info) const {
  if (const CAccessiblePart* part = Part(node)) {
    part->DescribeAccessible(info);
    info.states |= a11y::state_visible | (part->IsShowing() ? a11y::state_showing : 0U);
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

long CBaseControl::accessible_tree_t::text_length(a11y::key_t node) const {
  return IsPart(node) ? -1 : Element(node)->GetAccessibleTextLength();
}

std::string CBaseControl::accessible_tree_t::text_range(a11y::key_t node, long start, long end) const {
  return IsPart(node) ? std::string() : Element(node)->GetAccessibleText(start, end);
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
