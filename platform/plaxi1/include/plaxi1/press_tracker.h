#pragma once

namespace plaxi1 {

/// Hover and press state of one button-like thing, fed with where the pointer is: the one
/// state machine behind every button drawn by hand, so that they all look and click alike.
///
/// A press starts with the button down inside; it shows as pressed while the pointer stays
/// inside, and it is a click when the button comes up inside. A disabled button is never
/// hot nor pressed. Each mutator returns whether the look (hot, pressed) changed, so that
/// the owner repaints only then; on_up returns whether it was a click instead. GUI thread.
class press_tracker_t {
 public:
  /// The button went down; `inside` tells whether over this button.
  bool on_down(bool inside);
  /// The pointer moved; an owner that holds the pointer captured during a press calls
  /// this, not on_leave, when the pointer leaves its window, so that coming back resumes
  /// the press.
  bool on_move(bool inside);
  /// The button came up. True when that completes a click: pressed inside, released inside,
  /// enabled. `look_changed`, when given, tells whether the look changed.
  bool on_up(bool inside, bool* look_changed = nullptr);
  /// The pointer left without a capture: no longer hot, and a running press is dropped.
  bool on_leave();
  /// Another window took the pointer: a running press is dropped.
  bool on_capture_lost();
  /// Disabling drops the hover and a running press.
  bool set_enabled(bool enabled);

  bool is_enabled() const { return m_enabled; }
  /// Whether the pointer is over the button, enabled or not.
  bool is_inside() const { return m_inside; }
  /// Under the pointer (and enabled).
  bool is_hot() const { return m_enabled && m_inside; }
  /// A press runs and the pointer is over the button: show it pushed in.
  bool is_pressed() const { return m_enabled && m_down && m_inside; }
  /// A press runs, wherever the pointer is.
  bool is_press_running() const { return m_enabled && m_down; }

 private:
  /// Applies `change` and tells whether the look differs afterwards.
  template <class F>
  bool changes_look(F change);

  bool m_enabled = true;
  bool m_inside = false;
  bool m_down = false;
};

}  // namespace plaxi1
