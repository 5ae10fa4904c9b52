#pragma once
// The control that hosts a tree of visual elements in a wrapped window.
#include <ombrelc7/control.h>
#include <ombrelcfrw7/visual_element.h>

#include <memory>

namespace a11y {
class atk_bridge_t;
}

namespace ombrelcfrw7 {

/// Hosts a tree of elements under a root element that covers the window. Attaches itself
/// to the wrapper, which then owns it. Runs the deferred layout, paints only what meets the
/// damaged area, routes mouse and key events to the elements (bubbling up to parents), keeps
/// the keyboard focus (Tab cycles among focusable elements) and follows theme changes of
/// plaxi1::ui_settings_t. GUI thread.
class CBaseControl : public ombrelc7::COMBRELControl {
 public:
  explicit CBaseControl(ombrelc7::ISysWindow* window);
  ~CBaseControl() override;

  /// The root element, covering the window.
  CVisualElement* GetContent() const;
  /// Makes `content` the root's only child; the children it had before are deleted.
  void SetContent(CVisualElement* content);
  /// Lays out now.
  void Rearrange();

  CVisualElement* GetFocusElement() const { return m_focus; }
  void SetFocusElement(CVisualElement* element);
  CVisualElement* GetHotElement() const { return m_hot; }
  /// Moves the focus to the next (or previous) focusable element; false when there is none.
  bool MoveFocus(bool forward);
  /// Sends the mouse to `element` until the button is released.
  void CaptureMouse(CVisualElement* element);
  void ReleaseMouse();
  /// Number of layouts run (for diagnostics).
  int GetLayoutCount() const { return m_layout_count; }

  // ombrelc7::COMBRELControl
  void HandlePaint(wxDC& dc, const ombrelc7::rect<int>& area) override;
  void HandleSize(const ombrelc7::size<int>& client) override;
  void HandleLayout() override;
  void HandleMouse(wxMouseEvent& event) override;
  bool HandleKey(wxKeyEvent& event) override;
  void HandleContextMenuKey() override;
  void HandleFocus(bool focused) override;
  void HandleThemeChanged() override;
  void HandleCaptureLost() override;

  /// Called by elements as they die, so that no pointer to them stays.
  void ElementGone(CVisualElement* element);
  /// The accessible objects of the window's elements; null without a window.
  a11y::atk_bridge_t* GetAccessibleBridge() const;

 private:
  friend class CVisualElement;
  class root_t;
  class accessible_tree_t;
  static CBaseControl* OwnerOfRoot(const CVisualElement* root);
  bool Dispatch(CVisualElement* element, element_mouse_t& event);
  bool DispatchKey(CVisualElement* element, const element_key_t& key);
  void SetHot(CVisualElement* element, const element_mouse_t& event);
  void OnSettingsChanged() { HandleThemeChanged(); }
  void StartAccessible();
  void StopAccessible();

  std::unique_ptr<root_t> m_root;
  std::unique_ptr<accessible_tree_t> m_accessible;
  CVisualElement* m_focus = nullptr;
  CVisualElement* m_hot = nullptr;
  CVisualElement* m_capture = nullptr;
  CVisualElement* m_key_target = nullptr;  // last clicked: keys go there without focus
  int m_layout_count = 0;
};

/// A control whose content is a `T` made at construction: new T(GetContent(), size,
/// alignment).
template <class T>
class CBaseControlTmpl : public CBaseControl {
 public:
  CBaseControlTmpl(ombrelc7::ISysWindow* window, const ombrelc7::size<int>& size,
                   ombrelc7::Alignment alignment)
      : CBaseControl(window), m_typed(new T(GetContent(), size, alignment)) {}
  T* GetTypedContent() const { return m_typed; }

 private:
  T* m_typed;
};

}  // namespace ombrelcfrw7
