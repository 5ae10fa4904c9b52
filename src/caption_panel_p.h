#pragma once
// Helpers private to the caption panel and the simple message panel.
#include <plaxi1/image_loader.h>

#include <wx/colour.h>

namespace tamsel3 {

/// The loader of the library's picture index, "tamsel_images.xrc" in "tamsel3.dat". Its
/// location is empty while no resource directory is known.
plaxi1::image_loader_t caption_images_loader();

/// The tooltip background laid over `ground` where it is translucent (as in some themes):
/// one plain colour that a message pane, its rectangle and its buttons paint alike.
wxColour opaque_info_background(const wxColour& ground);

/// Forgets the severity pictures that caption_panel_t::get_picture keeps, so that the next
/// call loads them again. For tests.
void forget_severity_pictures();

}  // namespace tamsel3
