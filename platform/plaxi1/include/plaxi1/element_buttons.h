#pragma once
/// Buttons of the element tree: a flat coloured one, one with a label and a picture, the
/// same on a rounded background, and one that shows a picture per look.
#include <korvat2/signal.h>
#include <plaxi1/element.h>
#include <plaxi1/element_shapes.h>
#include <plaxi1/press_tracker.h>

#include <wx/colour.h>

#include <array>
#include <memory>
#include <optional>
#include <string>

class wxAnimation;
class wxImage;

namespace plaxi1 {
namespace _internal {
class state_images_t;
}
}  // namespace plaxi1

namespace plaxi1::elements {

namespace _internal {
class picture_element_t;
}

/// A button painted as a box of one colour per state, which fires `pressed` with its id.
/// The colour of a state index (button_state_t bits) is the one set for that index, else
/// for the index without the hover bit, then without the pressed bit too, then without the
/// selected bit too, else the normal one; an invalid colour paints no background, as does
/// a button without colours. The border size is the room between the button's edge and its
/// content (children included) on each side; the wanted size includes it.
///
/// `pressed` fires once per click, on the GUI thread: at the release over the button
/// (press_on_release), at once on the press (press_on_down), or at the release after the
/// selected state flipped (press_toggle). A disabled button never fires. An enabled button
/// takes the keyboard focus (Tab), shows it with a focus mark while its window has the
/// keyboard, and Space or Enter then click it.
class FlatButton : public UIElement {
 public:
  FlatButton(const ptr_t& parent, int position_flags);
  ~FlatButton() override;

  void SetPressingMode(PressingModes mode) { m_mode = mode; }
  /// The mode by its number; an unknown one is press_on_release.
  void SetPressingMode(int mode);
  PressingModes GetPressingMode() const { return m_mode; }
  void SetBorderSize(const wxSize& size);
  const wxSize& GetBorderSize() const { return m_border; }
  /// The colour of `state` (0 to 15); other indexes are ignored.
  virtual void SetColor(int state, const wxColour& color);
  /// The colour painted in `state`, by the lookup above.
  wxColour GetColor(int state) const;
  virtual void Enable(bool enable);
  bool IsEnabled() const { return m_press.is_enabled(); }
  void SetSelected(bool selected);
  bool IsSelected() const { return m_selected; }
  void SetId(int id) { m_id = id; }
  int GetId() const { return m_id; }
  /// The state index that the button shows now.
  int GetStateIndex() const;

  korvat2::intrusive_pointer_t<Layout> GetLayout() override;
  /// The name screen readers read for a button that shows no text (empty by default).
  void SetAccessibleName(const std::string& name) { m_accessible_name = name; }
  const std::string& GetAccessibleName() const { return m_accessible_name; }
  /// Makes the button one that opens and closes something, for screen readers: expandable,
  /// and expanded while `expanded`. A change is announced.
  void SetAccessibleExpanded(bool expanded);
  /// -1 for a button that opens nothing, else 0 closed or 1 open.
  int GetAccessibleExpanded() const { return m_expanded; }
  /// A push button with the action "click", named by SetAccessibleName; checked while
  /// selected.
  void DescribeAccessible(a11y::info_t& info) const override;
  bool DoAccessibleAction(int index) override;
  bool IsFocusable() const override { return IsEnabled() && IsShownInTree(); }

  korvat2::signal_t<int> pressed;

 protected:
  /// The size of what the button draws itself, border excluded.
  virtual wxSize GetButtonContentSize() const { return wxSize(0, 0); }
  /// Paints the background in `color` over the painted box.
  virtual void PaintBackground(wxDC& dc, const wxColour& color);
  /// The painted box without the border size.
  wxRect GetContentRect() const;
  const press_tracker_t& GetPressTracker() const { return m_press; }

  wxSize GetContentSize() const override;
  void OnPaint(wxDC& dc) override;
  bool AcceptsMouse() const override { return true; }
  bool OnMouse(const mouse_event_t& event) override;
  bool OnKey(const wxKeyEvent& event) override;
  void OnFocusChanged(bool) override { Invalidate(); }

 private:
  class padded_layout_t;
  void Fire();
  std::string m_accessible_name;
  int m_expanded = -1;

  press_tracker_t m_press;
  std::array<std::optional<wxColour>, 16> m_colors;
  korvat2::intrusive_pointer_t<padded_layout_t> m_layout;
  wxSize m_border = wxSize(0, 0);
  PressingModes m_mode = press_on_release;
  int m_id = 0;
  bool m_selected = false;
};

/// A flat button with a picture (a still one or an animation) and a label. The picture
/// stands left of the label, centred with it; the label can be styled through GetText().
/// An animation runs while the button is shown and stops when it is hidden.
class TabButton : public FlatButton {
 public:
  /// A button made without parent gets its label and picture once an intrusive pointer
  /// owns it, at the first call that needs them; before, GetText() gives null and the
  /// picture setters do nothing.
  TabButton(const ptr_t& parent, int position_flags);
  ~TabButton() override;

  /// The label.
  korvat2::intrusive_pointer_t<TextElement> GetText();
  /// A push button named by its label.
  void DescribeAccessible(a11y::info_t& info) const override;
  /// Shows `image`, the display-scale form of a picture (as wxStaticPicture::getImage(true)
  /// gives it), in place of any animation; an invalid image shows none.
  void SetImage(const wxImage& image);
  /// Shows `animation` in place of any picture.
  void SetAnimation(const wxAnimation& animation);
  /// The same with its form at twice the size, drawn instead on a scaled display; a bad
  /// `animation_2x` leaves the normal form alone.
  void SetAnimation(const wxAnimation& animation, const wxAnimation& animation_2x);
  /// Whether the animation is running now; for tests.
  bool IsAnimating() const;
  /// The frame of the animation shown now; for tests.
  std::size_t GetAnimationFrame() const;

 protected:
  TabButton(const ptr_t& parent, int position_flags, bool image_above_text);

 private:
  /// Makes the label and the picture once; false while no pointer owns the button.
  bool MakeContent();

  korvat2::intrusive_pointer_t<_internal::picture_element_t> m_picture;
  korvat2::intrusive_pointer_t<TextElement> m_label;
  bool m_image_above_text = false;
};

/// A tab button on a background with rounded corners, its picture beside or above the
/// label.
class RoundBgButton : public TabButton {
 public:
  /// `corner_radius` in device-independent pixels; 0 takes a quarter of the height.
  RoundBgButton(const ptr_t& parent, int position_flags, int corner_radius, bool image_above_text);

 protected:
  void PaintBackground(wxDC& dc, const wxColour& color) override;

 private:
  int m_radius;
};

/// A flat button that shows a picture per look (image_state_t bits), centred; a look
/// without a picture shows the normal one. Its content is the normal picture's size.
class IconButton : public FlatButton {
 public:
  /// `padding` is the border size on every side.
  IconButton(const ptr_t& parent, int position_flags, int padding);
  ~IconButton() override;

  /// Sets the picture of each look whose bit is in `state`; `image` is the display-scale
  /// form (as wxStaticPicture::getImage(true) gives it).
  void SetImage(int state, const wxImage& image);
  /// The bit of the look shown now.
  int GetShownState() const;

 protected:
  wxSize GetButtonContentSize() const override;
  void OnPaint(wxDC& dc) override;

 private:
  std::unique_ptr<plaxi1::_internal::state_images_t> m_images;
};

}  // namespace plaxi1::elements
