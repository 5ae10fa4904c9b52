// bench_startup's subject: a host that starts the way the library's examples do (a wx
// application, no set-up call) and readies what the library's first window needs: the
// resource archive with the layouts, the message catalog and the settings storage
// ("ready"). Then shows the library's frame dialog and leaves at its first paint
// ("painted").
#include "startup_milestone.h"

#include <plaxi1/resource_loader.h>
#include <quern2/catalog_registry.h>
#include <quern2/storage.h>
#include <tamsel3/dialog_base.h>
#include <tamsel3/resource.h>

#include <wx/app.h>

namespace {

class frame_dialog_t : public tamsel3::dialog_base_t {
 public:
  frame_dialog_t() {
    m_object_name = "dlg.frame_test";
    Bind(wxEVT_PAINT, &frame_dialog_t::on_paint, this);
  }

 private:
  void on_paint(wxPaintEvent& event) {
    event.Skip();
    if (!m_painted) {
      m_painted = true;
      bench_support::report_milestone("painted");
      CallAfter([this] { EndModal(wxID_OK); });
    }
  }
  bool m_painted = false;
};

class library_host_t : public wxApp {
 public:
  bool OnInit() override {
    const plaxi1::resource_loader_t layouts(tamsel3::create_resource_filename("tamsel3.dat", "tamsel.xrc"),
                                            "tamsel");
    if (!layouts.is_ok() || !quern2::getMessageCatalog("tamsel") || !quern2::IGlobalStorage::get()) {
      return false;
    }
    bench_support::report_milestone("ready");
    frame_dialog_t dialog;
    dialog.show_modal(nullptr);
    return false;  // done: leave without a main loop
  }
};

}  // namespace

wxIMPLEMENT_APP_NO_MAIN(library_host_t);

int main(int argc, char** argv) {
  bench_support::report_milestone("main");
  return wxEntry(argc, argv);
}
