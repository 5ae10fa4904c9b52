#pragma once
// Copying the text of elements.
#include <ombrelcfrw7/visual_element.h>

namespace ombrelcfrw7 {

/// Puts `element`'s AsString on the clipboard; false when the clipboard can't be opened or
/// the element is null.
bool CopyToClipboard(const CVisualElement* element);

}  // namespace ombrelcfrw7
