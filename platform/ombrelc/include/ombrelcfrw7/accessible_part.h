#pragma once
// A node of the accessible tree for something that an element draws without an element of
// its own.
#include <a11y/accessible.h>
#include <ombrelc7/geometry.h>

#include <cstdint>

namespace ombrelcfrw7 {

class CVisualElement;

/// A node of the accessible tree that stands for a part an element draws itself (a line of
/// a CLineColumn). The owner lists its key among its accessible children
/// (CVisualElement::ListAccessibleChildren), tells the bridge when it joins and before it
/// leaves or stands for something else, and keeps it alive in between.
class CAccessiblePart {
 public:
  virtual ~CAccessiblePart() = default;
  virtual CVisualElement* GetOwner() const = 0;
  /// Role, name, text and politeness; the bridge adds visible and showing.
  virtual void DescribeAccessible(a11y::info_t& info) const = 0;
  /// The rectangle drawn, in the window's client coordinates.
  virtual ombrelc7::rect<int> GetWindowRect() const = 0;
  /// Whether any of it shows in the window.
  virtual bool IsShowing() const = 0;

  /// The part's key: its address with the lowest bit set, which an element's never has.
  a11y::key_t GetKey() const { return reinterpret_cast<const char*>(this) + 1; }
  /// The part whose key is `key`, or null when `key` is an element's.
  static CAccessiblePart* FromKey(a11y::key_t key) {
    if ((reinterpret_cast<std::uintptr_t>(key) & 1U) == 0) {
      return nullptr;
    }
    return reinterpret_cast<CAccessiblePart*>(const_cast<char*>(static_cast<const char*>(key) - 1));
  }
};

}  // namespace ombrelcfrw7
