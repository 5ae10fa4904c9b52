#include <plaxi1/placement.h>

#include <wx/utils.h>
#include <wx/window.h>

namespace plaxi1 {

bool can_place_windows() { return wxGetDisplayInfo().type == wxDisplayX11; }

void place_centred(wxWindow* window) {
  if (window && (!window->IsTopLevel() || can_place_windows())) {
    window->Centre(wxBOTH);
  }
}

}  // namespace plaxi1
