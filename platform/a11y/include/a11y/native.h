#pragma once
// Names and roles for native controls that show a picture and no text.
#include <functional>

class wxWindow;

namespace a11y {

/// Gives `window`'s accessible object its tooltip as name, when it has no name of its own
/// (a button with only a picture). Nothing happens without a tooltip. GUI thread.
void name_from_tooltip(wxWindow* window);

/// Shows `window`, a control that draws a button itself, as a push button named by its
/// label (wxWindow::SetLabel, read now), with the action "click" that runs `click` from
/// idle time while the window lives. Its enabled state is the window's. GUI thread.
void native_button(wxWindow* window, std::function<void()> click);

}  // namespace a11y
