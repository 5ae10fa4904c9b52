#pragma once
// Pictures of windows as they are drawn, for a gallery, documentation and tests,
// and the event pumping that lets a window finish showing first. GUI thread; an event loop
// must be running or active.
#include <functional>
#include <string>

class wxWindow;

namespace plaxi1 {

/// Handles native events, pending wx events, calls queued with CallAfter and idle events
/// until the loop is idle (at most 100 rounds).
void pump_events();

/// Pumps events until `condition` holds or `bound_ms` passed; never sleeps, but blocks at
/// most 10 ms at a time waiting for the next event. True when the condition held.
bool wait_until(const std::function<bool()>& condition, int bound_ms);

/// Waits until `window` is on the screen, its top-level window was painted anew after a
/// refresh, and its place and size stay put. False when that didn't happen in time.
bool wait_until_painted(wxWindow* window, int bound_ms);

/// Writes a PNG of `window`, after letting it finish painting, at device pixels: its size
/// times its scale factor (GDK_SCALE), so the picture is as sharp as the screen shows it.
/// GTK draws the window's widget tree into the picture, the same on X11 and Wayland, and
/// whatever covers the window on the screen. Of a top-level window that is its content, its
/// client area: not the title bar and shadow that GTK draws around it on Wayland, nor a
/// window manager's frame. The wx popup windows of its controls (the custom tooltips among
/// them) are drawn over it where they show; GTK's own popups (menus, the list of a combo
/// box, native tooltips) are not. Only a window without a GTK widget (GetHandle() gives
/// none) is read from the X11 screen instead, at device pixels too: it must then lie wholly
/// on the screen, uncovered, and under Wayland it can't be pictured. False when the window
/// isn't shown, no picture could be made or the file can't be written.
bool save_screenshot(wxWindow* window, const std::string& png_path);

}  // namespace plaxi1
