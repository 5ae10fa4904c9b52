#pragma once
// The element tree of an adapter as the accessibility bridge walks it.
#include <plaxi1/element_adapter.h>

#include <a11y/atk_bridge.h>

#include <memory>
#include <vector>

namespace plaxi1::elements::_internal {

/// The adapter's elements as the bridge sees them: visible elements only, in their order.
/// Before the adapter has a root, the tree is the adapter alone, with no children.
class element_tree_t : public a11y::tree_t {
 public:
  explicit element_tree_t(ElementAdapter* adapter) : m_adapter(adapter) {}
  a11y::atk_bridge_t* Bridge() const { return m_bridge.get(); }
  void Start(wxWindow* window) { m_bridge = std::make_unique<a11y::atk_bridge_t>(window, this); }

  a11y::key_t root() const override;
  a11y::key_t parent(a11y::key_t node) const override;
  std::vector<a11y::key_t> children(a11y::key_t node) const override;
  void describe(a11y::key_t node, a11y::info_t& info) const override;
  a11y::rect_t extents(a11y::key_t node) const override;
  bool do_action(a11y::key_t node, int index) override;
  bool grab_focus(a11y::key_t node) override;

 private:
  UIElement* Element(a11y::key_t node) const;

  ElementAdapter* m_adapter;
  std::unique_ptr<a11y::atk_bridge_t> m_bridge;
};

/// Makes the tree of `adapter`, whose window is set, with its bridge.
std::unique_ptr<element_tree_t> StartAccessible(ElementAdapter* adapter);
/// Takes the bridge down, first (its window or the adapter is going).
void StopAccessible(std::unique_ptr<element_tree_t>& tree);
/// The root is about to change: its children leave the window's list.
void RootChanging(const std::unique_ptr<element_tree_t>& tree, UIElement* old_root);
/// The root changed: its children join the window's list.
void RootChanged(const std::unique_ptr<element_tree_t>& tree, UIElement* new_root);

}  // namespace plaxi1::elements::_internal
