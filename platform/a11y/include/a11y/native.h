#pragma once
// Names for native controls that show a picture and no text.
class wxWindow;

namespace a11y {

/// Gives `window`'s accessible object its tooltip as name, when it has no name of its own
/// (a button with only a picture). Nothing happens without a tooltip. GUI thread.
void name_from_tooltip(wxWindow* window);

}  // namespace a11y
