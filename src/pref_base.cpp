#include <tamsel3/pref_base.h>

#include <plaxi1/resource_loader.h>

#include <wx/xrc/xmlres.h>

namespace tamsel3 {

// Rows with XRC ids are filled when this file is initialised, once the ids can be made.
wxBEGIN_EVENT_TABLE(pref_base_t, generic_base_t<wxPanel>)
  EVT_INIT_DIALOG(generic_base_t<wxPanel>::handle_init_dialog_event)
  EVT_CLOSE(generic_base_t<wxPanel>::handle_close)
  EVT_BUTTON(XRCID("m_btn_ok"), generic_base_t<wxPanel>::handle_ok)
  EVT_BUTTON(XRCID("m_btn_cancel"), generic_base_t<wxPanel>::handle_cancel)
  EVT_BUTTON(XRCID("m_btn_help"), generic_base_t<wxPanel>::handle_help)
  EVT_TIMER(wxID_ANY, generic_base_t<wxPanel>::handle_timer_event)
wxEND_EVENT_TABLE()

void pref_base_t::create(wxWindow* parent) {
  if (!m_loaded) {
    m_loaded = load_from_xml_resource(parent, m_resource_file, m_catalog_name, m_object_name);
    if (!m_loaded && !GetHandle()) {
      Create(parent, wxID_ANY);  // an empty page stands in for the missing layout
    }
  }
  Show(true);
  // Nobody sends a panel the init event: run the sequence here.
  wxInitDialogEvent event(GetId());
  handle_init_dialog_event(event);
}

bool pref_base_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                         const std::string& catalog_name, const std::string& object_name) {
  plaxi1::resource_loader_t loader(resource_file, catalog_name);
  return loader.load_panel(this, parent, object_name);
}

void pref_base_t::end_dialog(int code) {
  Show(false);
  m_end_dialog_signal(this, code);
}

panel_t::~panel_t() = default;

}  // namespace tamsel3
