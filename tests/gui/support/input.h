#pragma once
// Real pointer and key input for GUI tests, on either display the tests run on.
#include <memory>

#include <wx/gdicmn.h>

class wxWindow;

namespace gui_test {

/// Input as a user gives it: under X11 through the X server (wxUIActionSimulator), under
/// Wayland, where no client may move the pointer or press keys, as events of the seat's
/// pointer and keyboard put into GTK's queue for the window under the point. Either way GTK
/// and wx handle them as they handle a user's. GUI thread only.
class input_t {
 public:
  input_t();
  /// Releases a button that a down() left pressed.
  ~input_t();
  input_t(const input_t&) = delete;
  input_t& operator=(const input_t&) = delete;

  /// Moves the pointer to `point` in the client coordinates of `window`, and returns once the
  /// program can see it there.
  void move(wxWindow* window, const wxPoint& point);
  /// Moves the pointer to the middle of `window`.
  void move_to_centre(wxWindow* window);
  /// Takes the pointer where no window is: to the display's lower right corner under X11;
  /// under Wayland out of the window the last move put it in.
  void move_off_windows();
  /// Where the last move put the pointer, in screen coordinates as wx gives them.
  wxPoint position() const { return m_position; }

  void down();
  void up();
  void click();
  void double_click();

  /// Presses and releases the key that types `keycode`: a character of the US layout
  /// (upper case letters and the shifted characters with Shift) or a WXK_ code.
  void press(int keycode);

 private:
  struct wayland_t;
  std::unique_ptr<wayland_t> m_wayland;
  wxPoint m_position;
  bool m_held = false;
};

/// True when the tests run as a Wayland client.
bool on_wayland();

}  // namespace gui_test
