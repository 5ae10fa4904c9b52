#pragma once
// What a window draws, told in lines: for the accessibility client to hold the accessible
// tree against.
#include <ostream>

class wxWindow;

namespace gallery {

/// Writes one line for each drawn element that shows in `window` or its children,
/// "element KIND X Y W H FLAGS NAME" in screen pixels (KIND: label, button, gauge, image,
/// table, header, cell, check; FLAGS: "checked", "disabled",
/// "expanded" or "collapsed" for a button that opens something, else "-"), then "window X Y W H" for
/// `window` and "ready". Newlines in names are written as spaces. GUI thread.
void report_elements(wxWindow* window, std::ostream& out);

/// Whether a drawn tree in `window` still waits for its layout.
bool layout_pending(wxWindow* window);

}  // namespace gallery
