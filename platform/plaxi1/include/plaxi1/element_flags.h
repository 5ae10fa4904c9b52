#pragma once
/// The numbers of the element toolkit: position flags, margins, border styles, the state
/// indexes of button colours and images, and the pressing modes of buttons.

namespace plaxi1::elements {

/// Where an element sits in its parent's rectangle. Each axis is laid out on its own, in
/// the order of the children; hidden children take no room.
///
/// A packed element keeps its wanted size along the packing axis and moves the edge of
/// the free band for the siblings after it. Along the other axis, its flags for that axis
/// apply. Elements that share the free band may overlap, as layers do.
///
///     parent's rectangle
///     +--------------------------------------------------------------+
///     |                pos_top (0x04), first                         |
///     |--------------------------------------------------------------|
///     |                pos_top, second                               |
///     |--------+--------+------------------------------+-------------|
///     |pos_left|pos_left|  free band                   | pos_right   |
///     | (0x01) |  2nd   |  pos_expand_h (0x80): <----> | (0x02)      |
///     |        |        |  pos_center_h (0x40):  <->   |             |
///     |        |        |  none: |<->                  |             |
///     |        |        |  pos_fill_v (0x20): covers   |             |
///     |        |        |    the band's height         |             |
///     |        |        |  pos_center_v (0x10): in the |             |
///     |        |        |    middle of its height      |             |
///     |--------+--------+------------------------------+-------------|
///     |                pos_bottom (0x08), second                     |
///     |--------------------------------------------------------------|
///     |                pos_bottom, first                             |
///     +--------------------------------------------------------------+
///
/// The bands of the two axes are computed apart: a left-packed child without vertical
/// flags sits at the top of the vertical band, at its wanted height; 0x11 centres it
/// vertically; 0x21 stretches it over the band's height.
enum position_flags_t {
  pos_none = 0x00,      ///< at the top left of the free band, at the wanted size
  pos_left = 0x01,      ///< packed from the left edge, after the earlier left-packed siblings
  pos_right = 0x02,     ///< packed from the right edge, left of the earlier right-packed ones
  pos_top = 0x04,       ///< packed from the top, below the earlier top-packed siblings
  pos_bottom = 0x08,    ///< packed from the bottom, above the earlier bottom-packed siblings
  pos_center_v = 0x10,  ///< centred in the vertical free band
  pos_fill_v = 0x20,    ///< stretched over the whole vertical free band
  pos_center_h = 0x40,  ///< centred in the horizontal free band
  pos_expand_h = 0x80,  ///< stretched over the whole horizontal free band
};

/// How far an element's painted box (its background and border) sits inside its layout
/// rectangle. Children are laid out in the whole rectangle all the same, which lets the
/// line of a frame run through the middle of a title at the frame's top.
///
///     layout rectangle
///     +-----------------------------------+
///     |        ^ top                      |
///     |  +-----v-----------------------+  |
///     |<>|  painted box                |<>|
///     |left                           right
///     |  +-----^-----------------------+  |
///     |        v bottom                   |
///     +-----------------------------------+
struct margin_t {
  margin_t() = default;
  explicit margin_t(int all) : left(all), top(all), right(all), bottom(all) {}
  margin_t(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}

  bool operator==(const margin_t& other) const {
    return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
  }
  bool operator!=(const margin_t& other) const { return !(*this == other); }

  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

/// The line around a rectangle element, one device-independent pixel wide.
enum border_style_t {
  border_none = 0,     ///< no line
  border_solid = 1,    ///< a square line
  border_rounded = 2,  ///< a line with corners of a 3-pixel radius
};

/// Index of a button colour: a set of state bits.
enum button_state_t {
  state_normal = 0,    ///< enabled, not selected, not under the pointer
  state_selected = 1,  ///< the selected tab
  state_hover = 2,     ///< under the pointer
  state_pressed = 4,   ///< pressed, with the pointer over it
  state_disabled = 8,  ///< disabled
};

/// State bits of the images of icon buttons.
enum image_state_t {
  image_normal = 1,    ///< the button at rest
  image_hover = 2,     ///< under the pointer
  image_pressed = 4,   ///< pressed, with the pointer over it
  image_disabled = 8,  ///< disabled
};

/// When a button fires.
enum PressingModes {
  press_on_release = 0,  ///< when the pressed button is released over it
  press_on_down = 1,     ///< at once on the press
  press_toggle = 2,      ///< flips the selected state, then fires
};

}  // namespace plaxi1::elements
