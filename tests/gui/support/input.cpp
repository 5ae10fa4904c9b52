#include "input.h"

#include "gui_test.h"

#include <gdk/gdkwayland.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/defs.h>
#include <wx/display.h>
#include <wx/toplevel.h>
#include <wx/uiaction.h>
#include <wx/utils.h>
#include <wx/window.h>

#include <cstring>
#include <utility>

namespace gui_test {
namespace {

// The key of the US layout that types `keycode`, and whether it needs Shift.
std::pair<int, bool> us_key(int keycode) {
  static const char shifted[] = "|<>\"*:?_";
  static const char unshifted[] = "\\,.'8;/-";
  if (keycode >= 'A' && keycode <= 'Z') {
    return {keycode - 'A' + 'a', true};
  }
  const char* at = (keycode > 0 && keycode < 128) ? std::strchr(shifted, keycode) : nullptr;
  return at ? std::make_pair(int{unshifted[at - shifted]}, true) : std::make_pair(keycode, false);
}

guint keyval_of(int keycode) {
  switch (keycode) {
    case WXK_RETURN: return GDK_KEY_Return;
    case WXK_ESCAPE: return GDK_KEY_Escape;
    case WXK_TAB: return GDK_KEY_Tab;
    case WXK_BACK: return GDK_KEY_BackSpace;
    case WXK_DELETE: return GDK_KEY_Delete;
    case WXK_INSERT: return GDK_KEY_Insert;
    case WXK_HOME: return GDK_KEY_Home;
    case WXK_END: return GDK_KEY_End;
    case WXK_PAGEUP: return GDK_KEY_Page_Up;
    case WXK_PAGEDOWN: return GDK_KEY_Page_Down;
    case WXK_LEFT: return GDK_KEY_Left;
    case WXK_RIGHT: return GDK_KEY_Right;
    case WXK_UP: return GDK_KEY_Up;
    case WXK_DOWN: return GDK_KEY_Down;
    default: break;
  }
  if (keycode >= WXK_F1 && keycode <= WXK_F24) {
    return GDK_KEY_F1 + (keycode - WXK_F1);
  }
  return gdk_unicode_to_keyval(static_cast<guint32>(keycode));
}

guint32 event_time() { return static_cast<guint32>(g_get_monotonic_time() / 1000); }

GdkWindow* gdk_window_of(wxWindow* window) { return gtk_widget_get_window(window->GetHandle()); }

// The innermost visible window under `x`, `y` (coordinates in `window`), as GDK picks the
// target of a pointer event: children are listed topmost first.
GdkWindow* descendant_at(GdkWindow* window, int x, int y) {
  for (GList* child = gdk_window_peek_children(window); child; child = child->next) {
    auto* candidate = static_cast<GdkWindow*>(child->data);
    int left = 0;
    int top = 0;
    gdk_window_get_position(candidate, &left, &top);
    if (gdk_window_is_visible(candidate) && x >= left && y >= top &&
        x < left + gdk_window_get_width(candidate) && y < top + gdk_window_get_height(candidate)) {
      return descendant_at(candidate, x - left, y - top);
    }
  }
  return window;
}

// The top-level window that key presses go to: the focused window's, else the newest shown.
wxWindow* key_target() {
  if (wxWindow* focus = wxWindow::FindFocus()) {
    return wxGetTopLevelParent(focus);
  }
  for (auto it = wxTopLevelWindows.rbegin(); it != wxTopLevelWindows.rend(); ++it) {
    if ((*it)->IsShown()) {
      return *it;
    }
  }
  return nullptr;
}

}  // namespace

bool on_wayland() { return GDK_IS_WAYLAND_DISPLAY(gdk_display_get_default()); }

// Events of the seat's devices, with the implicit grab that a pressed button holds: GDK
// gives a Wayland client no way to move the pointer, but takes events into its queue.
struct input_t::wayland_t {
  GdkDevice* m_pointer = nullptr;
  GdkDevice* m_keyboard = nullptr;
  GdkWindow* m_under = nullptr;  // referenced
  GdkWindow* m_grab = nullptr;   // referenced while a button is down
  wxPoint m_root;

  wayland_t() {
    GdkSeat* seat = gdk_display_get_default_seat(gdk_display_get_default());
    m_pointer = seat ? gdk_seat_get_pointer(seat) : nullptr;
    m_keyboard = seat ? gdk_seat_get_keyboard(seat) : nullptr;
  }
  ~wayland_t() {
    set(m_under, nullptr);
    set(m_grab, nullptr);
  }
  wayland_t(const wayland_t&) = delete;
  wayland_t& operator=(const wayland_t&) = delete;

  static void set(GdkWindow*& slot, GdkWindow* window) {
    if (window) {
      g_object_ref(window);
    }
    if (slot) {
      g_object_unref(slot);
    }
    slot = window;
  }

  GdkModifierType state() const { return m_grab ? GDK_BUTTON1_MASK : GdkModifierType{}; }

  GdkEvent* new_event(GdkEventType type, GdkWindow* window, GdkDevice* device) const {
    GdkEvent* event = gdk_event_new(type);
    event->any.window = GDK_WINDOW(g_object_ref(window));
    gdk_event_set_device(event, device);
    gdk_event_set_source_device(event, device);
    return event;
  }

  static void put(GdkEvent* event) {
    gdk_event_put(event);
    gdk_event_free(event);
  }

  // The pointer's place in `window`'s coordinates.
  void local(GdkWindow* window, gdouble& x, gdouble& y) const {
    int left = 0;
    int top = 0;
    gdk_window_get_origin(window, &left, &top);
    x = m_root.x - left;
    y = m_root.y - top;
  }

  void crossing(GdkEventType type, GdkWindow* window, GdkCrossingMode mode) const {
    if (!window || gdk_window_is_destroyed(window)) {
      return;
    }
    GdkEvent* event = new_event(type, window, m_pointer);
    event->crossing.time = event_time();
    local(window, event->crossing.x, event->crossing.y);
    event->crossing.x_root = m_root.x;
    event->crossing.y_root = m_root.y;
    event->crossing.mode = mode;
    event->crossing.detail = GDK_NOTIFY_NONLINEAR;
    event->crossing.state = state();
    put(event);
  }

  void motion() const {
    GdkWindow* target = m_grab ? m_grab : m_under;
    if (!target || gdk_window_is_destroyed(target)) {
      return;
    }
    GdkEvent* event = new_event(GDK_MOTION_NOTIFY, target, m_pointer);
    event->motion.time = event_time();
    local(target, event->motion.x, event->motion.y);
    event->motion.x_root = m_root.x;
    event->motion.y_root = m_root.y;
    event->motion.state = state();
    put(event);
    // GDK holds the last motion of its queue back until the next frame or the next event:
    // an empty event behind it lets it through now, as the end of a pointer frame would.
    GdkEvent* nothing = gdk_event_new(GDK_NOTHING);
    put(nothing);
  }

  void move(wxWindow* window, const wxPoint& point) {
    m_root = window->ClientToScreen(point);
    GdkWindow* top = gdk_window_of(wxGetTopLevelParent(window));
    int left = 0;
    int up = 0;
    gdk_window_get_origin(top, &left, &up);
    GdkWindow* next = descendant_at(top, m_root.x - left, m_root.y - up);
    if (next != m_under) {
      // Under a grab only the grab's window hears of crossings, as with a real button.
      const bool was_in = m_under == m_grab;
      if (!m_grab) {
        crossing(GDK_LEAVE_NOTIFY, m_under, GDK_CROSSING_NORMAL);
      }
      set(m_under, next);
      if (!m_grab) {
        crossing(GDK_ENTER_NOTIFY, m_under, GDK_CROSSING_NORMAL);
      } else if (was_in != (m_under == m_grab)) {
        crossing(was_in ? GDK_LEAVE_NOTIFY : GDK_ENTER_NOTIFY, m_grab, GDK_CROSSING_NORMAL);
      }
    }
    motion();
  }

  void leave() {
    if (!m_grab) {
      crossing(GDK_LEAVE_NOTIFY, m_under, GDK_CROSSING_NORMAL);
    }
    set(m_under, nullptr);
  }

  void button(GdkEventType type) {
    GdkWindow* target = m_grab ? m_grab : m_under;
    if (!target || gdk_window_is_destroyed(target)) {
      ADD_FAILURE() << "a button event with the pointer over no window";
      return;
    }
    GdkEvent* event = new_event(type, target, m_pointer);
    event->button.time = event_time();
    local(target, event->button.x, event->button.y);
    event->button.x_root = m_root.x;
    event->button.y_root = m_root.y;
    event->button.state = state();
    event->button.button = GDK_BUTTON_PRIMARY;
    put(event);
    if (type == GDK_BUTTON_PRESS) {
      set(m_grab, target);
    } else if (type == GDK_BUTTON_RELEASE) {
      release_grab();
    }
  }

  void release_grab() {
    GdkWindow* grab = m_grab;
    m_grab = nullptr;
    if (grab != m_under) {
      crossing(GDK_ENTER_NOTIFY, m_under, GDK_CROSSING_UNGRAB);
    }
    if (grab) {
      g_object_unref(grab);
    }
  }

  void key(GdkEventType type, guint keyval, GdkModifierType modifiers, bool is_modifier) const {
    wxWindow* target = key_target();
    if (!target) {
      ADD_FAILURE() << "a key press with no window shown";
      return;
    }
    GdkEvent* event = new_event(type, gdk_window_of(target), m_keyboard);
    event->key.time = event_time();
    event->key.state = modifiers;
    event->key.keyval = keyval;
    event->key.is_modifier = is_modifier ? 1 : 0;
    const gunichar character = gdk_keyval_to_unicode(keyval);
    char text[8] = {};
    if (character >= 0x20 && type == GDK_KEY_PRESS) {
      g_unichar_to_utf8(character, text);
    }
    event->key.string = g_strdup(text);
    event->key.length = static_cast<gint>(std::strlen(text));
    GdkKeymapKey* keys = nullptr;
    gint count = 0;
    if (gdk_keymap_get_entries_for_keyval(gdk_keymap_get_for_display(gdk_display_get_default()), keyval,
                                          &keys, &count) &&
        count > 0) {
      event->key.hardware_keycode = static_cast<guint16>(keys[0].keycode);
      event->key.group = static_cast<guint8>(keys[0].group);
    }
    g_free(keys);
    put(event);
  }

  void press(int keycode) const {
    const bool shift = us_key(keycode).second;
    const guint keyval = keyval_of(keycode);
    const auto modifiers = shift ? GDK_SHIFT_MASK : GdkModifierType{};
    if (shift) {
      key(GDK_KEY_PRESS, GDK_KEY_Shift_L, GdkModifierType{}, true);
    }
    key(GDK_KEY_PRESS, keyval, modifiers, false);
    key(GDK_KEY_RELEASE, keyval, modifiers, false);
    if (shift) {
      key(GDK_KEY_RELEASE, GDK_KEY_Shift_L, GDK_SHIFT_MASK, true);
    }
  }
};

input_t::input_t() {
  if (on_wayland()) {
    m_wayland = std::make_unique<wayland_t>();
    if (!m_wayland->m_pointer || !m_wayland->m_keyboard) {
      ADD_FAILURE() << "the Wayland display has no seat with a pointer and a keyboard";
    }
  }
}

input_t::~input_t() {
  if (m_held) {
    up();
  }
}

void input_t::move(wxWindow* window, const wxPoint& point) {
  if (!window) {
    ADD_FAILURE() << "a pointer move to a null window";
    return;
  }
  m_position = window->ClientToScreen(point);
  if (m_wayland) {
    m_wayland->move(window, point);
    pump();
    return;
  }
  wxUIActionSimulator().MouseMove(m_position);
  EXPECT_TRUE(wait_until([&] { return wxGetMousePosition() == m_position; }, 3000))
      << "the pointer did not reach " << m_position.x << "," << m_position.y;
  pump();
}

void input_t::move_to_centre(wxWindow* window) {
  const wxSize size = window ? window->GetClientSize() : wxSize();
  move(window, wxPoint(size.x / 2, size.y / 2));
}

void input_t::move_off_windows() {
  if (m_wayland) {
    m_wayland->leave();
    pump();
    return;
  }
  const wxRect display = wxDisplay(0u).GetGeometry();
  m_position = wxPoint(display.GetRight(), display.GetBottom());
  wxUIActionSimulator().MouseMove(m_position);
  EXPECT_TRUE(wait_until([&] { return wxGetMousePosition() == m_position; }, 3000));
  pump();
}

void input_t::down() {
  m_held = true;
  if (m_wayland) {
    m_wayland->button(GDK_BUTTON_PRESS);
  } else {
    wxUIActionSimulator().MouseDown();
  }
  pump();
}

void input_t::up() {
  // A release with no button down would reach no window under Wayland.
  if (m_wayland && !m_held) {
    return;
  }
  m_held = false;
  if (m_wayland) {
    m_wayland->button(GDK_BUTTON_RELEASE);
  } else {
    wxUIActionSimulator().MouseUp();
  }
  pump();
}

void input_t::click() {
  down();
  up();
}

void input_t::double_click() {
  if (!m_wayland) {
    wxUIActionSimulator().MouseDblClick();
    pump();
    return;
  }
  // What GDK makes of two quick clicks: the second press comes with a double-click event.
  m_wayland->button(GDK_BUTTON_PRESS);
  m_wayland->button(GDK_BUTTON_RELEASE);
  m_wayland->button(GDK_BUTTON_PRESS);
  m_wayland->button(GDK_2BUTTON_PRESS);
  m_wayland->button(GDK_BUTTON_RELEASE);
  pump();
}

void input_t::press(int keycode) {
  if (m_wayland) {
    m_wayland->press(keycode);
  } else {
    const auto [key, shift] = us_key(keycode);
    wxUIActionSimulator().Char(key, shift ? wxMOD_SHIFT : wxMOD_NONE);
  }
  pump();
}

}  // namespace gui_test
