#include "samples.h"

#include "entries.h"

#include <wx/filename.h>
#include <wx/sizer.h>
#include <wx/stdpaths.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

namespace gallery {

std::string layout_file() {
  wxFileName program(wxStandardPaths::Get().GetExecutablePath());
  program.RemoveLastDir();
  program.AppendDir("share");
  program.AppendDir("tamsel3-gallery");
  program.SetFullName("gallery.xrc");
  return program.GetFullPath().utf8_string();
}

project_settings_dialog_t::project_settings_dialog_t() {
  m_object_name = "gallery.project_settings";
  m_resource_file = layout_file();
  m_help_id = 1;
  m_help_topic = "project.settings";
}

void project_settings_dialog_t::on_init_dialog() {
  if (auto* name = XRCCTRL(*this, "m_project_name", wxTextCtrl)) {
    name->ChangeValue(wxString::FromUTF8(m_project_name));
  }
}

void project_settings_dialog_t::save_settings() {
  if (auto* name = XRCCTRL(*this, "m_project_name", wxTextCtrl)) {
    m_project_name = name->GetValue().utf8_string();
  }
}

editor_options_page_t::editor_options_page_t() {
  m_object_name = "gallery.editor_options";
  m_resource_file = layout_file();
}

preferences_dialog_t::preferences_dialog_t(wxWindow* parent, tamsel3::pref_base_t* page, int min_width)
    : wxDialog(parent, wxID_ANY, "Preferences", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      m_page(page ? page : new editor_options_page_t) {
  m_page->create(this);
  // Texts that wrap by the page's width wrap now at the width that the dialog will have.
  m_page->SetSize(wxSize(min_width, m_page->GetSize().GetHeight()));
  m_page->m_end_dialog_signal.connect(this, &preferences_dialog_t::on_end_page);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(m_page, 1, wxEXPAND);
  // Some pages leave their width to the host (the search folders' grid takes what it gets).
  sizer->SetMinSize(wxSize(min_width, -1));
  SetSizerAndFit(sizer);
}

void preferences_dialog_t::on_end_page(tamsel3::generic_base_t<wxPanel>*, int code) {
  if (IsModal()) {
    EndModal(code);
  } else {
    Hide();
  }
}

std::vector<entry_t> frame_entries() {
  return {
      {"project_settings", "Project settings (dialog)",
       "A host dialog on the library's frame: layout from the host's own file, texts through the "
       "catalog, OK saves, Cancel, Escape and the window frame cancel, Help is enabled by a help id.",
       [](wxWindow* parent) {
         project_settings_dialog_t dialog;
         dialog.show_modal(parent);
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         auto* dialog = new project_settings_dialog_t;
         dialog->show_nonmodal(parent, true);
         return dialog;
       }},
      {"editor_options_page", "Editor options (page in a dialog)",
       "A host page on the library's frame, embedded in a preferences dialog that ends when the "
       "page fires its end signal.",
       [](wxWindow* parent) {
         preferences_dialog_t dialog(parent);
         dialog.ShowModal();
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         auto* dialog = new preferences_dialog_t(parent);
         dialog->Show();
         return dialog;
       }},
  };
}

}  // namespace gallery
