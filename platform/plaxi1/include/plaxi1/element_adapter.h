#pragma once
/// Shows an element tree in a wx window.
#include <plaxi1/element.h>

#include <wx/event.h>

#include <memory>

class wxWindow;
class wxMouseEvent;
class wxPaintEvent;
class wxSizeEvent;
class wxWindowDestroyEvent;
class wxMouseCaptureLostEvent;

namespace a11y {
class atk_bridge_t;
}

namespace plaxi1::elements {

namespace _internal {
class element_tree_t;
}

/// Draws the tree under its root element into a window and hands the window's events to
/// the elements. The root covers the window's client area and is laid out again when the
/// window changes size, when an element asks (deferred to the event loop, or at the next
/// paint or mouse event) and when the UI settings change (then every element re-measures
/// and the whole window repaints).
///
/// Painting is buffered and covers only the elements that are visible and meet the
/// window's update region: an element's Invalidate repaints its rectangle alone.
///
/// Mouse: the hover element is the deepest visible element under the pointer that takes
/// the mouse; the left button pressed on it makes it the pressed element, which captures
/// the mouse until the release. An element's unused mouse and key events go on to its
/// parent. Keys go to the focused element, else to the element pressed last. Tab and
/// Shift+Tab move the keyboard focus among the focusable elements, in tree order; past the
/// last (or first) one the focus leaves for the window's next native control. An element
/// whose look follows these states repaints itself (Invalidate) when they change.
///
/// The window may die before the adapter (the adapter then does nothing) and the adapter
/// before the window. An element taken out of the tree or hidden stops being the hover,
/// pressed, key or focused element. Owned by the window's owner (a smart pointer in a panel). GUI
/// thread only.
class ElementAdapter : public wxEvtHandler, public korvat2::subscriber_base_t {
 public:
  /// Starts painting `window` and taking its paint, size, mouse and key events.
  explicit ElementAdapter(wxWindow* window);
  /// The adapter that paints `window`, or null (for tools that look at a window's tree).
  static ElementAdapter* Find(const wxWindow* window);
  ~ElementAdapter() override;
  ElementAdapter(const ElementAdapter&) = delete;
  ElementAdapter& operator=(const ElementAdapter&) = delete;

  /// Makes `root` the tree's root (the former root leaves) and lays it out.
  void SetRootElement(const UIElement::ptr_t& root);
  UIElement::ptr_t GetRootElement() const { return m_root; }
  /// The window, or null once it was destroyed.
  wxWindow* GetWindow() const { return m_window; }
  UIElement::ptr_t FindByTestID(const std::string& id) const;

  UIElement* GetHoverElement() const { return m_hover; }
  UIElement* GetPressedElement() const { return m_pressed; }
  UIElement* GetFocusElement() const { return m_focus; }
  /// Gives `element` (or nobody: null) the keyboard focus; screen readers hear of it.
  void SetFocusElement(UIElement* element);
  /// Moves the focus to the next (or previous) focusable element; false past the last one.
  bool MoveFocus(bool forward);

  /// Lays the tree out now over the client area; what moved or appeared is repainted.
  void Relayout();
  /// Asks for a layout, run from the event loop or at the next paint or mouse event.
  void RequestLayout();
  /// Repaints `rect` (client coordinates) at the window's next paint.
  void RefreshRect(const wxRect& rect);
  /// `element` left the tree or was hidden: it and its subtree stop being the hover,
  /// pressed, key or focused element; a pressed one hears capture_lost.
  void ElementRemoved(UIElement* element);
  /// `element` joined the tree or was shown.
  void ElementAdded(UIElement* element);
  /// The accessible objects of the tree's elements; null without a window.
  a11y::atk_bridge_t* GetAccessibleBridge() const;

 private:
  void FlushLayout();
  void ForgetStates();
  void SetHover(UIElement* element, const wxPoint& pos);
  bool Dispatch(UIElement* element, mouse_event_t event);
  void Release();
  void OnPressedMouse(mouse_event_t::kind_t kind, const wxPoint& pos);
  void OnSettingsChanged();

  void handle_paint(wxPaintEvent& event);
  void handle_size(wxSizeEvent& event);
  void handle_mouse(wxMouseEvent& event);
  void handle_capture_lost(wxMouseCaptureLostEvent& event);
  void handle_key(wxKeyEvent& event);
  void handle_focus(wxFocusEvent& event);
  void handle_destroy(wxWindowDestroyEvent& event);
  void BindWindow(bool bind);

  wxWindow* m_window;
  UIElement::ptr_t m_root;
  UIElement* m_hover = nullptr;
  UIElement* m_pressed = nullptr;
  UIElement* m_key_target = nullptr;
  UIElement* m_focus = nullptr;
  std::unique_ptr<_internal::element_tree_t> m_accessible;
  bool m_layout_pending = false;
  bool m_layout_posted = false;
};

}  // namespace plaxi1::elements
