#pragma once
// Helpers of the element tree and its adapter.
#include <plaxi1/element.h>

namespace plaxi1::elements::_internal {

/// A share of `element` when an intrusive pointer owns it, else null: a pointer made from an
/// element that nobody owns (a root on the stack, or one being deleted) would delete it when
/// it goes. Keeps an element alive across a call that may take it out of the tree.
inline UIElement::ptr_t share(UIElement* element) {
  if (element && element->try_add_ref()) {
    return UIElement::ptr_t::adopt(element);
  }
  return UIElement::ptr_t();
}

/// Whether `element` is `ancestor` or lies below it.
inline bool within(const UIElement* element, const UIElement* ancestor) {
  for (; element; element = element->m_parent) {
    if (element == ancestor) {
      return true;
    }
  }
  return false;
}

}  // namespace plaxi1::elements::_internal
