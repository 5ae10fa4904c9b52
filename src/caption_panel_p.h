#pragma once
// Helpers private to the caption panel and the simple message panel.
#include <plaxi1/image_loader.h>

namespace tamsel3 {

/// The loader of the library's picture index, "tamsel_images.xrc" in "tamsel3.dat". Its
/// location is empty while no resource directory is known.
plaxi1::image_loader_t caption_images_loader();

/// Forgets the severity pictures that caption_panel_t::get_picture keeps, so that the next
/// call loads them again. For tests.
void forget_severity_pictures();

}  // namespace tamsel3
