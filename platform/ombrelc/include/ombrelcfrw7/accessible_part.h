#pragma once
// A node that assistive technologies see for something an element draws without an element
// of its own: a grid's rows and cells, a column's lines.
#include <ombrelc7/geometry.h>

#include <a11y/accessible.h>

#include <vector>

namespace ombrelcfrw7 {

class CVisualElement;

/// A drawn part of an element, listed to assistive technologies as a node of its own. The
/// element owns its parts and keeps each alive while it is listed
/// (CVisualElement::ListAccessible, among the element's children or under another part),
/// tells its bridge of a part that joins and reports it gone (GetAccessibleKey) before
/// deleting it or letting it stand for something else. GUI thread.
class CAccessiblePart {
 public:
  /// `parent`: the part above, null for a part right under `element`.
  explicit CAccessiblePart(CVisualElement* element, const CAccessiblePart* parent = nullptr)
      : m_element(element), m_parent(parent) {}
  virtual ~CAccessiblePart() = default;
  CAccessiblePart(const CAccessiblePart&) = delete;
  CAccessiblePart& operator=(const CAccessiblePart&) = delete;

  CVisualElement* GetElement() const { return m_element; }
  const CAccessiblePart* GetParentPart() const { return m_parent; }
  /// What the bridge knows the part by: its address with the lowest bit set, which an
  /// element's key never has.
  a11y::key_t GetAccessibleKey() const;
  /// The part whose key is `key`, or null when `key` is an element's.
  static CAccessiblePart* FromAccessibleKey(a11y::key_t key);

  /// The parts listed under this one, in order; none by default.
  virtual std::vector<const CAccessiblePart*> GetParts() const { return {}; }
  /// Role, name, states and the rest, as CVisualElement::DescribeAccessible; the bridge
  /// adds visible and showing.
  virtual void DescribeAccessible(a11y::info_t& info) const = 0;
  /// The rectangle drawn, in the window's client coordinates.
  virtual ombrelc7::rect<int> GetWindowRect() const = 0;
  /// Whether any of it shows in the window: by default, whether its rectangle meets the
  /// part of its element that shows.
  virtual bool IsShowing() const;
  virtual bool DoAccessibleAction(int index) { return false; }

 private:
  CVisualElement* m_element;
  const CAccessiblePart* m_parent;
};

}  // namespace ombrelcfrw7
