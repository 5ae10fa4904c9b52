#pragma once
// The gallery's own windows, built on the library's frame as a host's would be.
#include <tamsel3/dialog_base.h>
#include <tamsel3/pref_base.h>

#include <string>

namespace gallery {

/// Where the gallery's layouts are: "gallery.xrc" beside the program's share folder.
std::string layout_file();

/// A host dialog: project settings on a layout of the host's own.
class project_settings_dialog_t : public tamsel3::dialog_base_t {
 public:
  project_settings_dialog_t();
  std::string project_name() const { return m_project_name; }

 protected:
  void on_init_dialog() override;
  void save_settings() override;

 private:
  std::string m_project_name = "render-pipeline";
};

/// A host page: editor options, shown inside a preferences dialog.
class editor_options_page_t : public tamsel3::pref_base_t {
 public:
  editor_options_page_t();
};

/// A preferences dialog of the host that embeds a page, by default the editor options,
/// and ends when the page ends. The page belongs to the dialog.
class preferences_dialog_t : public wxDialog, public korvat2::subscriber_base_t {
 public:
  explicit preferences_dialog_t(wxWindow* parent, tamsel3::pref_base_t* page = nullptr);

 private:
  void on_end_page(tamsel3::generic_base_t<wxPanel>* page, int code);
  tamsel3::pref_base_t* m_page;
};

}  // namespace gallery
