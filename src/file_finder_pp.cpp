#include <tamsel3/file_finder_pp.h>

#include <plaxi1/placement.h>

#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>

#include <utility>

namespace tamsel3 {

file_finder_pp_t::file_finder_pp_t(search_dirs_panel_t::container_ptr_t container)
    : m_container(std::move(container)) {
  m_object_name = "pref.file_finder_pp";
}

void file_finder_pp_t::save_settings() { m_panel->save_dirs(); }

void file_finder_pp_t::load_settings() { m_panel->load_settings(); }

void file_finder_pp_t::on_ok() { save_settings(); }

void file_finder_pp_t::on_init_dialog() {
  wxWindow* placeholder = FindWindow(wxXmlResource::GetXRCID("m_panel5"));
  if (!placeholder) {
    return;
  }
  m_panel = new search_dirs_panel_t(m_container, false);
  m_panel->create(this);
  if (wxSizer* sizer = placeholder->GetContainingSizer()) {
    sizer->Replace(placeholder, m_panel, false);
  }
  // The panel took its place: the placeholder has no further use.
  placeholder->Hide();
  placeholder->Destroy();
  plaxi1::place_centred(this);
  fill_controls();
}

}  // namespace tamsel3
