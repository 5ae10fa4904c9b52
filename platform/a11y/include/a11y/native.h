#pragma once
// Names and roles for native controls that show a picture and no text, that stand by a
// label, or that draw a button themselves.
#include <functional>

class wxString;
class wxWindow;

namespace a11y {

/// Gives `window`'s accessible object its tooltip as name, when it has no name of its own
/// (a button with only a picture). Nothing happens without a tooltip. GUI thread.
void name_from_tooltip(wxWindow* window);

/// Shows `window`, a control that draws a button itself, as a push button named by its
/// label (wxWindow::SetLabel, read now), with the action "click" that runs `click` from
/// idle time while the window lives. Its enabled state is the window's. GUI thread.
void native_button(wxWindow* window, std::function<void()> click);

/// Gives `window`'s accessible object `name` (a picture that tells a severity, a field that
/// no label stands by). GUI thread.
void set_name(wxWindow* window, const wxString& name);

/// Names the controls under `top` that a screen reader reads by name (text fields, spin
/// controls, choices, lists, pictures) and that have no name yet: by their tooltip, else by
/// the label just before them among their siblings (a static text, or the radio button or
/// check box that switches them on), else by a static text just after them, else by the
/// label of the static box around them; labels lose their mnemonic and colon. Others stay
/// as they are. GUI thread.
void name_from_labels(wxWindow* top);

}  // namespace a11y
