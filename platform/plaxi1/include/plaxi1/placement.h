#pragma once
// Where top-level windows go. Under X11 the application places its windows and reads where
// they are; a Wayland compositor places them itself and tells a client neither. GUI thread,
// once the toolkit has opened its display.
class wxWindow;

namespace plaxi1 {

/// Whether the application places its own top-level windows and may read their place on
/// the screen: under X11 it does, under Wayland the compositor does.
bool can_place_windows();

/// Centres `window` on its parent. A child window is centred in its parent's client area
/// whatever the display; a top-level window (centred on its parent, else on its display)
/// only where the application places its windows: a Wayland compositor centres a dialog
/// on the window it is transient for by itself. A null window is ignored.
void place_centred(wxWindow* window);

}  // namespace plaxi1
