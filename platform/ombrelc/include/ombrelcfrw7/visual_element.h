#pragma once
// The node of the retained tree of visual elements.
#include <ombrelc7/geometry.h>

#include <cstdint>
#include <string>
#include <vector>

namespace a11y {
class atk_bridge_t;
struct info_t;
enum class politeness_t : std::uint8_t;
using key_t = const void*;
}  // namespace a11y

class wxColour;
class wxDC;
class wxWindow;

namespace ombrelc7 {
class COMBRELControl;
class ISysWindow;
}  // namespace ombrelc7

namespace ombrelcfrw7 {

class CAccessiblePart;
class CBaseControl;
class CVisualElement;

/// A mouse event as an element sees it.
struct element_mouse_t {
  enum kind_t { down, up, double_click, move, leave, wheel, right_click };
  kind_t kind = move;
  ombrelc7::point<int> pos;         ///< in content coordinates (those of GetRect)
  ombrelc7::point<int> window_pos;  ///< in the window's client coordinates
  int wheel_rotation = 0;           ///< positive: away from the user
  int wheel_delta = 120;
  int wheel_lines = 3;
  bool shift = false;
  bool control = false;
  CVisualElement* target = nullptr;  ///< the element hit first, before bubbling up
};

/// A key press as an element sees it.
struct element_key_t {
  int keycode = 0;  ///< a WXK_ code or a character
  bool shift = false;
  bool control = false;
  bool alt = false;
};

/// What changed in an element, for CVisualElement::OnChange.
enum UpdateType {
  /// Only what the element shows: it is repainted, nothing is measured or laid out again.
  utContent = 1,
  /// The element's size or its children: the element and all its descendants are measured
  /// and placed again, even those that keep their rectangles, and the element is repainted.
  utLayout = 2,
};

/// A node of the tree: a rectangle with a minimum size and an alignment in its parent,
/// an optional background and children, which it owns and deletes. Elements are laid out
/// by their control, deferred (see ombrelc7::ISysWindow::RequestLayout), and painted back
/// to front. GUI thread only.
///
/// Measuring is cached per element: the preferred width, and the height for the last width
/// asked; OnChange drops the caches of the element and its ancestors only, so that adding
/// a child to a box doesn't measure its siblings again.
class CVisualElement {
 public:
  /// Appends the element to `parent`'s children (null: detached, owned by the caller).
  /// `size` is the minimum size.
  CVisualElement(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  /// Deletes the children and leaves the parent.
  virtual ~CVisualElement();
  CVisualElement(const CVisualElement&) = delete;
  CVisualElement& operator=(const CVisualElement&) = delete;

  /// Moves the element to the end of `parent`'s children; null detaches it, and the caller
  /// then owns it. With `rearrange`, both parents are laid out again (deferred).
  void ReParent(CVisualElement* parent, bool rearrange = true);
  CVisualElement* GetParent() const { return m_parent; }
  const std::vector<CVisualElement*>& GetChildren() const { return m_children; }

  void SetVisible(bool visible);
  bool IsVisible() const { return (m_flags & flag_visible) != 0; }
  /// Visible, and so are all its ancestors.
  bool IsShownInTree() const;

  /// An invalid colour makes the element transparent: its parent's background shows.
  void SetBkColor(const wxColour& colour);
  wxColour GetBkColor() const;

  void SetMinSize(const ombrelc7::size<int>& size);
  ombrelc7::size<int> GetMinSize() const { return m_min; }
  void SetAlignment(ombrelc7::Alignment alignment);
  ombrelc7::Alignment GetAlignment() const { return static_cast<ombrelc7::Alignment>(m_alignment); }

  /// Lays the control out again now, unless the window's layout is suspended (then at
  /// its resume).
  void ForceRearrange();
  /// The text of the element for copying: by default its visible children's texts
  /// joined with "\n", empty ones skipped.
  virtual std::string AsString() const;
  /// Content or size changed: drops the measuring caches up to the root, asks for a layout
  /// and repaints the element.
  virtual void OnChange();
  /// `source` (this element or one of its descendants; null: this element) changed as
  /// `what` tells.
  void OnChange(CVisualElement* source, UpdateType what);

  /// The arranged rectangle, in the control's content coordinates (before scrolling).
  const ombrelc7::rect<int>& GetRect() const { return m_rect; }
  /// GetRect in the window's client coordinates (scrolling applied, not clipped).
  ombrelc7::rect<int> GetWindowRect() const;
  /// A point of the window's client area in the coordinates this element is arranged in.
  ombrelc7::point<int> FromWindow(const ombrelc7::point<int>& pos) const;
  /// The part of GetRect seen in the window, in window coordinates; empty when hidden.
  ombrelc7::rect<int> GetVisibleWindowRect() const;
  ombrelc7::COMBRELControl* GetControl() const;
  /// The wrapper of the control's window; null while the element is detached.
  ombrelc7::ISysWindow* GetWindow() const;
  /// Repaints the element's rectangle (no layout).
  void Invalidate() const;

  /// The width the element asks for (cached).
  int GetPreferredWidth() const;
  /// The height the element needs at `width` (cached for the last width).
  int GetHeightFor(int width) const;
  /// Places the element at `area` and lays its children out; an element that didn't
  /// change and keeps its rectangle keeps its children where they are.
  void Arrange(const ombrelc7::rect<int>& area);
  /// Paints the element and its children that meet `clip` (content coordinates).
  void Paint(wxDC& dc, const ombrelc7::rect<int>& clip);
  /// The deepest visible element at `pos` (content coordinates), or null.
  CVisualElement* HitTest(const ombrelc7::point<int>& pos);

  /// Gives the keyboard focus to the element when it takes it.
  void SetFocus();
  bool HasFocus() const;
  /// Whether Tab stops at the element.
  virtual bool IsFocusable() const { return false; }

  /// What the element tells assistive technologies: each element type fills in its role,
  /// name, actions, text or value. The default is an unnamed panel. The common states
  /// (visible, showing, focused) are added by the control.
  virtual void DescribeAccessible(a11y::info_t& info) const;
  /// Runs the accessible action `index` of those DescribeAccessible lists; false when none.
  virtual bool DoAccessibleAction(int index) { return false; }
  /// Adds the keys of what assistive technologies list under the element to `keys`, in
  /// order: by default its visible children. An element that draws parts of its own (a
  /// grid's rows, a column's lines) lists their keys (CAccessiblePart::GetAccessibleKey)
  /// among its children, in the order drawn, and may leave out the children that only
  /// draw them.
  virtual void ListAccessible(std::vector<a11y::key_t>& keys) const;
  /// The cell at `row` and `column` (row -1: the column's header) of an element that is a
  /// table; null when it lists none there.
  virtual const CAccessiblePart* GetAccessibleCell(int row, int column) const { return nullptr; }
  /// Makes the element a live region: screen readers speak what appears in it with this
  /// urgency (off by default).
  void SetLive(a11y::politeness_t live);
  a11y::politeness_t GetLive() const;
  /// The length in characters of a text too long to describe whole on every call (a column
  /// of many lines); -1 (the default) when DescribeAccessible gives the text.
  virtual long GetAccessibleTextLength() const { return -1; }
  /// Characters [start, end) of that text as UTF-8; 0 <= start <= end <= the length.
  virtual std::string GetAccessibleText(long start, long end) const { return {}; }

 protected:
  friend class CBaseControl;

  /// The natural width; by default the minimum width.
  virtual int MeasureWidth() const;
  /// The height at `width`; by default the minimum height, or for an element with
  /// children the height that its children need.
  virtual int MeasureHeight(int width) const;
  /// Places the children inside GetRect. By default alClient children cover the element
  /// and others keep their own size at the top left (alFill, alStretch: full width).
  virtual void ArrangeChildren();
  /// Draws the element's own content over its background.
  virtual void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) {}
  /// Paints the children that meet `clip`.
  virtual void PaintChildren(wxDC& dc, const ombrelc7::rect<int>& clip);
  /// The child at `pos`, or null; boxes search their arranged positions.
  virtual CVisualElement* ChildAt(const ombrelc7::point<int>& pos) const;
  /// Moves the children by this offset when they are shown (scrolling).
  virtual ombrelc7::point<int> ChildOffset() const { return {}; }
  /// The rectangle in which children show, in this element's coordinates.
  virtual ombrelc7::rect<int> ChildClip() const { return m_rect; }

  /// A mouse event; true when used, otherwise it goes on to the parent.
  virtual bool OnMouse(const element_mouse_t& event) { return false; }
  /// A key press; true when used, otherwise it goes on to the parent.
  virtual bool OnKey(const element_key_t& key) { return false; }
  virtual void OnFocusChanged(bool focused) {}
  /// A child was added or removed.
  virtual void OnChildrenChanged() {}
  /// `child`'s measure was dropped (it changed); boxes keep the places of those before it.
  virtual void OnChildInvalidated(CVisualElement* child) {}
  /// The theme changed: drop what was measured or cached from it.
  virtual void OnThemeChanged() {}
  /// Whether children may overlap or sit out of order; boxes whose children follow each
  /// other along the vertical axis say false, which lets them search by position.
  virtual bool ChildrenInOrder() const { return false; }

  /// Drops this element's measuring caches and its ancestors', and marks them for layout.
  void InvalidateMeasure();
  /// The size of `child` along both axes when given `area` under its alignment, as an
  /// element without stacking places it.
  static ombrelc7::rect<int> PlaceInArea(CVisualElement* child, const ombrelc7::rect<int>& area);
  /// Appends the text of `element` to `out` on a line of its own, unless it is hidden or
  /// has none: the joining of AsString.
  static void AppendShownText(std::string& out, const CVisualElement& element);
  /// Marks the element and all its descendants for placing again.
  void MarkSubtreeDirty();
  /// Asks the window for a layout (deferred).
  void RequestLayout() const;
  CBaseControl* GetBaseControl() const;
  /// The accessible objects of the element's window, or null (detached, or no window).
  a11y::atk_bridge_t* GetAccessibleBridge() const;
  std::uint32_t GetPackedBkColor() const { return m_bk; }

 private:
  void Attach(CVisualElement* parent);
  void Detach();

  enum : std::uint8_t {
    flag_visible = 1,
    flag_layout_dirty = 2,
    flag_dying = 4,  // deleting its children: they needn't leave the vector one by one
    flag_root = 8,
    flag_live_polite = 16,
    flag_live_assertive = 32,
  };

  CVisualElement* m_parent = nullptr;
  std::vector<CVisualElement*> m_children;
  ombrelc7::rect<int> m_rect;
  ombrelc7::size<int> m_min;
  mutable int m_pref_width = -1;
  mutable int m_cache_width = -1;
  mutable int m_cache_height = 0;
  std::uint32_t m_bk = 0;  // packed colour, 0: transparent
  std::uint8_t m_alignment;
  std::uint8_t m_flags = flag_visible | flag_layout_dirty;
};

}  // namespace ombrelcfrw7
