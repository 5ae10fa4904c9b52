// bench_startup's peer: a host without the library that shows the library's frame layout
// with wx alone. Opens the layout file named by its argument ("ready"), then shows the
// dialog and leaves at its first paint ("painted").
#include "startup_milestone.h"

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/filesys.h>
#include <wx/fs_zip.h>
#include <wx/xrc/xmlres.h>

namespace {

class plain_host_t : public wxApp {
 public:
  bool OnInit() override {
    if (argc < 2) {
      return false;
    }
    wxFileSystem::AddHandler(new wxZipFSHandler);
    wxXmlResource::Get()->InitAllHandlers();
    if (!wxXmlResource::Get()->Load(argv[1])) {
      return false;
    }
    bench_support::report_milestone("ready");
    wxDialog dialog;
    if (!wxXmlResource::Get()->LoadDialog(&dialog, nullptr, "dlg.frame_test")) {
      return false;
    }
    bool painted = false;
    dialog.Bind(wxEVT_PAINT, [&dialog, &painted](wxPaintEvent& event) {
      event.Skip();
      if (!painted) {
        painted = true;
        bench_support::report_milestone("painted");
        dialog.CallAfter([&dialog] { dialog.EndModal(wxID_OK); });
      }
    });
    dialog.ShowModal();
    return false;  // done: leave without a main loop
  }
};

}  // namespace

wxIMPLEMENT_APP_NO_MAIN(plain_host_t);

int main(int argc, char** argv) {
  bench_support::report_milestone("main");
  return wxEntry(argc, argv);
}
