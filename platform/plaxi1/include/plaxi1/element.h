#pragma once
/// The node of the element tree, its layout and the empty spacer.
#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>
#include <plaxi1/element_flags.h>

#include <wx/gdicmn.h>

#include <string>
#include <vector>

namespace a11y {
struct info_t;
}

class wxDC;
class wxKeyEvent;
class wxRegion;

namespace plaxi1::elements {

class ElementAdapter;
class Layout;
class UIElement;

/// A mouse event as an element sees it.
struct mouse_event_t {
  enum kind_t {
    move,          ///< the pointer moved (over the element, or anywhere while it is pressed)
    down,          ///< the left button went down over the element
    up,            ///< the left button went up; sent to the pressed element
    leave,         ///< the pointer left the element, which is no longer the hover element
    capture_lost,  ///< the press ended without a release (capture lost, element hidden)
  };
  kind_t kind = move;
  wxPoint pos;                  ///< in the window's client coordinates
  bool inside = false;          ///< whether `pos` lies in the receiving element's rectangle
  UIElement* target = nullptr;  ///< the element that got the event first, before bubbling up
};

/// Lays an element's children out inside its rectangle by their position flags (see
/// position_flags_t). A layout belongs to one element and lives as long as someone holds it;
/// once its element is gone it lays nothing out and has no minimum. GUI thread.
class Layout : public korvat2::intrusive_pointer_impl_t {
 public:
  explicit Layout(UIElement* owner) : m_owner(owner) {}

  /// The smallest size that shows the visible children at their wanted sizes: the wanted
  /// widths of the left- and right-packed children plus the largest wanted width of the
  /// others; the height likewise with the top- and bottom-packed children.
  virtual wxSize GetMinSize() const;
  /// Places the visible children inside `rect` and lays each of them out in turn.
  virtual void Arrange(const wxRect& rect);

  UIElement* GetOwner() const { return m_owner; }

 private:
  friend class UIElement;
  UIElement* m_owner;
};

/// A node of the element tree: a rectangle placed by its position flags in its parent,
/// with children that it holds by intrusive pointer. The tree is drawn into a window by an
/// ElementAdapter, which holds the root. Elements are made with `new` and owned by their
/// parent or by an intrusive pointer. GUI thread only.
///
/// The wanted size of an element is, per component, its fixed size where one is set, else
/// the larger of its content size and its layout's minimum size. The margin doesn't enter
/// the layout: it only insets the painted box.
class UIElement : public korvat2::intrusive_pointer_impl_t {
 public:
  using ptr_t = korvat2::intrusive_pointer_t<UIElement>;

  /// Appends the element to `parent`'s children (a null parent leaves it alone, for a root).
  UIElement(const ptr_t& parent, int position_flags);
  ~UIElement() override;
  UIElement(const UIElement&) = delete;
  UIElement& operator=(const UIElement&) = delete;

  /// Moves the element to the end of `parent`'s children; null takes it out of the tree.
  /// An element that only its old parent held is deleted when `parent` is null.
  void ChangeParent(const ptr_t& parent);
  const std::vector<ptr_t>& GetChildren() const { return m_children; }

  int GetPositionFlags() const { return m_position_flags; }
  void SetPositionFlags(int position_flags);

  void SetMargin(const margin_t& margin);
  const margin_t& GetMargin() const { return m_margin; }

  /// Shows or hides the element; a hidden element takes no room in its parent. After a
  /// change, fires `visibility_changed` with the element, unless no intrusive pointer owns
  /// it (an element on the stack, or one being deleted), which the emission must not delete.
  void SetVisible(bool visible);
  bool IsVisible() const { return m_visible; }
  /// Visible, and so are all of its ancestors.
  bool IsShownInTree() const;

  /// A name for tests to find the element by.
  void SetTestID(const std::string& id) { m_test_id = id; }
  const std::string& GetTestID() const { return m_test_id; }
  /// The first element of the subtree (this one first, then depth first) with the test id,
  /// or null. The element itself is found only when an intrusive pointer owns it.
  ptr_t FindByTestID(const std::string& id);

  virtual wxSize GetWantedSize() const;
  /// The size that the content and the children ask for, whatever fixed size is set: the
  /// wanted size once the fixed size is taken away.
  virtual wxSize GetNaturalSize() const;
  virtual int GetWantedWidth() const { return GetWantedSize().x; }
  virtual int GetWantedHeight() const { return GetWantedSize().y; }
  /// Fixes the wanted size; a component of -1 leaves that one free.
  virtual void SetFixedSize(const wxSize& size);
  const wxSize& GetFixedSize() const { return m_fixed_size; }
  virtual korvat2::intrusive_pointer_t<Layout> GetLayout() { return m_layout; }

  /// The layout rectangle, in the window's client coordinates.
  const wxRect& GetRect() const { return m_rect; }
  /// The painted box: the rectangle inset by the margin.
  wxRect GetPaintRect() const;
  /// Repaints the element's rectangle (later, at the window's next paint).
  void Invalidate();
  /// Asks the adapter for a layout of the tree (later, from the event loop).
  void RequestLayout();
  /// The adapter whose tree holds the element, or null.
  ElementAdapter* GetAdapter() const;
  /// Whether the element is the adapter's hover (pressed) element.
  bool IsHovered() const;
  bool IsPressed() const;

  /// Places the element at `rect` and lays its children out there.
  void Arrange(const wxRect& rect);
  /// Paints the element if it is visible and meets `update`, then its children.
  void Paint(wxDC& dc, const wxRegion& update);
  /// The deepest visible element of the subtree at `pos` that takes the mouse, or null.
  UIElement* HitTest(const wxPoint& pos);
  /// What the element tells assistive technologies: each element type fills in its role,
  /// name, actions or text. The default is an unnamed panel; the adapter adds the common
  /// states (visible, showing).
  virtual void DescribeAccessible(a11y::info_t& info) const;
  /// Runs the accessible action `index` of those DescribeAccessible lists; false when none.
  virtual bool DoAccessibleAction(int index) { return false; }
  /// Whether Tab stops at the element.
  virtual bool IsFocusable() const { return false; }

  /// Number of times the element was painted; for tests.
  int GetPaintCount() const { return m_paint_count; }

  /// The raw parent, null for a root or a detached element.
  UIElement* m_parent = nullptr;
  /// Fired after the element was shown or hidden.
  korvat2::signal_t<ptr_t> visibility_changed;

 protected:
  friend class ElementAdapter;

  /// The size that the element's own content needs; nothing by default.
  virtual wxSize GetContentSize() const { return wxSize(0, 0); }
  /// Draws the element's own content; children are drawn after it.
  virtual void OnPaint(wxDC& dc) {}
  /// Whether the element takes mouse events (and can be hovered and pressed).
  virtual bool AcceptsMouse() const { return false; }
  /// A mouse event; true when used, otherwise it goes on to the parent.
  virtual bool OnMouse(const mouse_event_t& event) { return false; }
  /// A key press; true when used, otherwise it goes on to the parent.
  virtual bool OnKey(const wxKeyEvent& event) { return false; }
  /// The element took or lost the keyboard focus.
  virtual void OnFocusChanged(bool focused) {}
  /// The theme changed: drop what was measured or cached from it.
  virtual void OnThemeChanged() {}

 private:
  void Detach();

  std::vector<ptr_t> m_children;
  korvat2::intrusive_pointer_t<Layout> m_layout;
  ElementAdapter* m_adapter = nullptr;  // set on the root of an adapter's tree
  std::string m_test_id;
  wxRect m_rect;
  wxSize m_fixed_size = wxDefaultSize;
  margin_t m_margin;
  int m_position_flags;
  int m_paint_count = 0;
  bool m_visible = true;
  bool m_shown_since_layout = false;  // to be painted where the next layout puts it
};

/// An empty element that takes room: its content size is the given size.
class SpacerElement : public UIElement {
 public:
  SpacerElement(const ptr_t& parent, int position_flags, const wxSize& size = wxSize(0, 0))
      : UIElement(parent, position_flags), m_size(size) {}

  void SetSize(const wxSize& size);
  const wxSize& GetSize() const { return m_size; }

 protected:
  wxSize GetContentSize() const override { return m_size; }

 private:
  wxSize m_size;
};

}  // namespace plaxi1::elements
