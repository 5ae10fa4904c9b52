// What the elements tell assistive technologies, and the tree of a control as the
// accessibility bridge walks it.
#include <ombrelcfrw7/base_control.h>
#include <ombrelcfrw7/button.h>
#include <ombrelcfrw7/caption.h>
#include <ombrelcfrw7/gauge.h>
#include <ombrelcfrw7/message_box.h>

#include <ombrelc7/sys_window.h>

#include <a11y/atk_bridge.h>

#include "accessible_tree_p.h"

#include <algorithm>

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

void CBaseControl::accessible_tree_t::describe(a11y::key_t node, a11y::info_t& info) const {
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
