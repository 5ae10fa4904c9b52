#pragma once
// A node that assistive technologies see inside an element that draws it without a child
// element (a grid's rows and cells).
#include <ombrelc7/geometry.h>

#include <a11y/accessible.h>

#include <vector>

namespace ombrelcfrw7 {

class CVisualElement;

/// A drawn part of an element, listed to assistive technologies as a node of its own. The
/// element owns its parts, lists them (CVisualElement::ListAccessible) and reports each
/// one gone to its bridge (GetAccessibleKey) before deleting it. GUI thread.
class CAccessiblePart {
 public:
  /// `parent`: the part above, null for a part right under `element`.
  CAccessiblePart(CVisualElement* element, const CAccessiblePart* parent)
      : m_element(element), m_parent(parent) {}
  virtual ~CAccessiblePart() = default;
  CAccessiblePart(const CAccessiblePart&) = delete;
  CAccessiblePart& operator=(const CAccessiblePart&) = delete;

  CVisualElement* GetElement() const { return m_element; }
  const CAccessiblePart* GetParentPart() const { return m_parent; }
  /// What the element's bridge knows the part by, for its notices.
  a11y::key_t GetAccessibleKey() const;

  virtual std::vector<const CAccessiblePart*> GetParts() const { return {}; }
  /// Role, name, states and the rest, as CVisualElement::DescribeAccessible.
  virtual void DescribeAccessible(a11y::info_t& info) const = 0;
  /// In the window's client coordinates.
  virtual ombrelc7::rect<int> GetWindowRect() const = 0;
  virtual bool DoAccessibleAction(int index) { return false; }

 private:
  CVisualElement* m_element;
  const CAccessiblePart* m_parent;
};

}  // namespace ombrelcfrw7
