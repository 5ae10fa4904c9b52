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

/// The control's elements as the bridge sees them: what each element lists (visible
/// elements and the parts it draws itself), in their order.
class CBaseControl::accessible_tree_t : public a11y::tree_t {
 public:
  explicit accessible_tree_t(CBaseControl* control) : m_control(control) {}
  a11y::atk_bridge_t* Bridge() const { return m_bridge.get(); }
  void Start(wxWindow* window) { m_bridge = std::make_unique<a11y::atk_bridge_t>(window, this); }
  void Stop() { m_bridge.reset(); }

  a11y::key_t root() const override { return m_control->GetContent(); }
  a11y::key_t parent(a11y::key_t node) const override;
  std::vector<a11y::key_t> children(a11y::key_t node) const override;
  void describe(a11y::key_t node, a11y::info_t& info) const override;
  a11y::rect_t extents(a11y::key_t node) const override;
  bool do_action(a11y::key_t node, int index) override;
  bool grab_focus(a11y::key_t node) override;
  a11y::key_t table_cell(a11y::key_t table, int row, int column) const override;
  long text_length(a11y::key_t node) const override;
  std::string text_range(a11y::key_t node, long start, long end) const override;

 private:
  static bool IsPart(a11y::key_t node) { return CAccessiblePart::FromAccessibleKey(node) != nullptr; }
  static CAccessiblePart* Part(a11y::key_t node) { return CAccessiblePart::FromAccessibleKey(node); }
  static CVisualElement* Element(a11y::key_t node) {
    return const_cast<CVisualElement*>(static_cast<const CVisualElement*>(node));
  }
  // The element of `node`, or the element that draws it.
  static CVisualElement* Owner(a11y::key_t node) {
    return IsPart(node) ? Part(node)->GetElement() : Element(node);
  }

  CBaseControl* m_control;
  std::unique_ptr<a11y::atk_bridge_t> m_bridge;
};

}  // namespace ombrelcfrw7
