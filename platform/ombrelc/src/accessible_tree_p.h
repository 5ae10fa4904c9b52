#pragma once
// The tree of a control's elements as the accessibility bridge walks it.
#include <ombrelcfrw7/accessible_part.h>
#include <ombrelcfrw7/base_control.h>

#include <a11y/atk_bridge.h>

#include <memory>
#include <string>
#include <vector>

class wxWindow;

namespace ombrelcfrw7 {

/// The control's elements as the bridge sees them: each element's accessible children
/// (visible elements, and parts that elements draw themselves), in their order.
class CBaseControl::accessible_tree_t : public a11y::tree_t {
 public:
  explicit accessible_tree_t(CBaseControl* control) : m_control(control) {}
  a11y::atk_bridge_t* Bridge() const { return m_bridge.get(); }
  void Start(wxWindow* window) { m_bridge = std::make_unique<a11y::atk_bridge_t>(window, this); }
  void Stop() { m_bridge.reset(); }

  a11y::key_t root() const override { return m_control->GetContent(); }
  a11y::key_t parent(a11y::key_t node) const override {
    if (const CAccessiblePart* part = CAccessiblePart::FromKey(node)) {
      return part->GetOwner();
    }
    return Element(node)->GetParent();
  }
  std::vector<a11y::key_t> children(a11y::key_t node) const override {
    std::vector<a11y::key_t> listed;
    if (!CAccessiblePart::FromKey(node)) {
      Element(node)->ListAccessibleChildren(listed);
    }
    return listed;
  }
  void describe(a11y::key_t node, a11y::info_t& info) const override;
  a11y::rect_t extents(a11y::key_t node) const override {
    const CAccessiblePart* part = CAccessiblePart::FromKey(node);
    const ombrelc7::rect<int> area = part ? part->GetWindowRect() : Element(node)->GetWindowRect();
    return {area.left, area.top, area.width(), area.height()};
  }
  bool do_action(a11y::key_t node, int index) override {
    return !CAccessiblePart::FromKey(node) && Element(node)->DoAccessibleAction(index);
  }
  bool grab_focus(a11y::key_t node) override {
    CVisualElement* element = CAccessiblePart::FromKey(node) ? nullptr : Element(node);
    if (!element || !element->IsFocusable()) {
      return false;
    }
    element->SetFocus();
    return true;
  }
  long text_length(a11y::key_t node) const override {
    return CAccessiblePart::FromKey(node) ? -1 : Element(node)->GetAccessibleTextLength();
  }
  std::string text_range(a11y::key_t node, long start, long end) const override {
    return Element(node)->GetAccessibleText(start, end);
  }

 private:
  static CVisualElement* Element(a11y::key_t node) {
    return const_cast<CVisualElement*>(static_cast<const CVisualElement*>(node));
  }

  CBaseControl* m_control;
  std::unique_ptr<a11y::atk_bridge_t> m_bridge;
};

}  // namespace ombrelcfrw7
