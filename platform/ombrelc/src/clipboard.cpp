#include <ombrelcfrw7/clipboard.h>

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

namespace ombrelcfrw7 {

bool CopyToClipboard(const CVisualElement* element) {
  if (!element || !wxTheClipboard->Open()) {
    return false;
  }
  const bool done = wxTheClipboard->SetData(new wxTextDataObject(wxString::FromUTF8(element->AsString())));
  wxTheClipboard->Close();
  return done;
}

}  // namespace ombrelcfrw7
