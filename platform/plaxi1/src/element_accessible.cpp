// What the elements tell assistive technologies, and the adapter's tree as the
// accessibility bridge walks it.
#include <plaxi1/element_buttons.h>
#include <plaxi1/element_shapes.h>

#include "element_accessible_p.h"

#include <wx/window.h>

namespace plaxi1::elements {

void UIElement::DescribeAccessible(a11y::info_t& info) const { info.role = a11y::role_t::panel; }

void TextElement::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::label;
  info.name = GetText().utf8_string();
  info.has_text = true;
  info.text = info.name;
}

void FlatButton::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::push_button;
  info.name = m_accessible_name;
  info.actions = {"click"};
  if (IsEnabled()) {
    info.states |= a11y::state_enabled | a11y::state_focusable;
  }
  if (IsPressed()) {
    info.states |= a11y::state_pressed;
  }
  if (IsSelected()) {
    info.states |= a11y::state_checked;
  }
  if (m_expanded >= 0) {
    info.states |= a11y::state_expandable | (m_expanded ? a11y::state_expanded : 0u);
  }
}

bool FlatButton::DoAccessibleAction(int index) {
  if (index != 0 || !IsEnabled()) {
    return false;
  }
  Fire();
  return true;
}

void TabButton::DescribeAccessible(a11y::info_t& info) const {
  FlatButton::DescribeAccessible(info);
  if (m_label && !m_label->GetText().empty()) {
    info.name = m_label->GetText().utf8_string();
  }
}

a11y::atk_bridge_t* ElementAdapter::GetAccessibleBridge() const {
  return m_accessible ? m_accessible->Bridge() : nullptr;
}

void ElementAdapter::ElementAdded(UIElement* element) {
  if (a11y::atk_bridge_t* bridge = GetAccessibleBridge();
      bridge && element->m_parent && element->IsVisible()) {
    bridge->child_added(element->m_parent, element);
  }
}

namespace _internal {

UIElement* element_tree_t::Element(a11y::key_t node) const {
  return const_cast<UIElement*>(static_cast<const UIElement*>(node));
}

a11y::key_t element_tree_t::root() const {
  UIElement* top = m_adapter->GetRootElement().get();
  return top ? static_cast<a11y::key_t>(top) : static_cast<a11y::key_t>(m_adapter);
}

a11y::key_t element_tree_t::parent(a11y::key_t node) const {
  return node == m_adapter ? nullptr : Element(node)->m_parent;
}

std::vector<a11y::key_t> element_tree_t::children(a11y::key_t node) const {
  std::vector<a11y::key_t> shown;
  if (node == m_adapter) {
    return shown;
  }
  for (const UIElement::ptr_t& child : Element(node)->GetChildren()) {
    if (child->IsVisible()) {
      shown.push_back(child.get());
    }
  }
  return shown;
}

void element_tree_t::describe(a11y::key_t node, a11y::info_t& info) const {
  const UIElement* element = Element(node);
  element->DescribeAccessible(info);
  info.states |= a11y::state_visible;
  if (element->IsShownInTree() && !element->GetRect().IsEmpty()) {
    info.states |= a11y::state_showing;
  }
  if (element->IsFocusable()) {
    info.states |= a11y::state_focusable;
  }
  if (m_adapter->GetFocusElement() == element) {
    info.states |= a11y::state_focused;
  }
}

a11y::rect_t element_tree_t::extents(a11y::key_t node) const {
  const wxRect area = Element(node)->GetRect();
  return {area.x, area.y, area.width, area.height};
}

bool element_tree_t::do_action(a11y::key_t node, int index) {
  return Element(node)->DoAccessibleAction(index);
}

bool element_tree_t::grab_focus(a11y::key_t node) {
  if (node == m_adapter || !Element(node)->IsFocusable()) {
    return false;
  }
  m_adapter->SetFocusElement(Element(node));
  return true;
}

std::unique_ptr<element_tree_t> StartAccessible(ElementAdapter* adapter) {
  auto tree = std::make_unique<element_tree_t>(adapter);
  tree->Start(adapter->GetWindow());
  return tree;
}

void StopAccessible(std::unique_ptr<element_tree_t>& tree) { tree.reset(); }

void RootChanging(const std::unique_ptr<element_tree_t>& tree, UIElement* old_root) {
  if (tree && old_root) {
    for (a11y::key_t child : tree->children(old_root)) {
      tree->Bridge()->node_gone(child);
    }
  }
}

void RootChanged(const std::unique_ptr<element_tree_t>& tree, UIElement* new_root) {
  if (tree && new_root) {
    for (a11y::key_t child : tree->children(new_root)) {
      tree->Bridge()->child_added(new_root, child);
    }
  }
}

}  // namespace _internal

}  // namespace plaxi1::elements
