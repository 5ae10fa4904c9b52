#include <plaxi1/press_tracker.h>

namespace plaxi1 {

template <class F>
bool press_tracker_t::changes_look(F change) {
  const bool hot = is_hot();
  const bool pressed = is_pressed();
  const bool enabled = m_enabled;
  change();
  return hot != is_hot() || pressed != is_pressed() || enabled != m_enabled;
}

bool press_tracker_t::on_down(bool inside) {
  return changes_look([&] {
    m_inside = inside;
    // A press that starts elsewhere belongs to whatever is there.
    m_down = m_enabled && inside;
  });
}

bool press_tracker_t::on_move(bool inside) {
  return changes_look([&] { m_inside = inside; });
}

bool press_tracker_t::on_up(bool inside, bool* look_changed) {
  const bool click = m_enabled && m_down && inside;
  const bool changed = changes_look([&] {
    m_inside = inside;
    m_down = false;
  });
  if (look_changed) {
    *look_changed = changed;
  }
  return click;
}

bool press_tracker_t::on_leave() {
  return changes_look([&] {
    m_inside = false;
    m_down = false;
  });
}

bool press_tracker_t::on_capture_lost() {
  return changes_look([&] { m_down = false; });
}

bool press_tracker_t::set_enabled(bool enabled) {
  return changes_look([&] {
    m_enabled = enabled;
    if (!enabled) {
      m_down = false;
    }
  });
}

}  // namespace plaxi1
