#pragma once
#include <string>

class wxDialog;
class wxPanel;
class wxWindow;

namespace plaxi1 {

/// Creates dialogs and panels from layout objects of an XRC file, usually inside a
/// resource archive ("<dir>/tamsel3.dat#zip:tamsel.xrc"). Texts of the layout (labels,
/// titles, tooltips, hints, values, choices) that are keys of the named message catalog
/// are replaced by their texts; other texts stay as written. Files are read and translated
/// once per process and catalog: after the catalog of that name is registered anew or
/// reloaded (in another language), windows loaded from then on get its texts. GUI thread.
class resource_loader_t {
 public:
  resource_loader_t(const std::string& resource_file, const std::string& catalog_name);

  /// Creates `dialog` (made with its default constructor) from `object_name`; false when
  /// the file or the object is missing.
  bool load_dialog(wxDialog* dialog, wxWindow* parent, const std::string& object_name) const;
  bool load_panel(wxPanel* panel, wxWindow* parent, const std::string& object_name) const;

  /// Whether the file could be read.
  bool is_ok() const;

 private:
  std::string m_resource_file;
  std::string m_catalog_name;
};

/// Makes sure that the toolkit can read resource archives, XRC layouts and PNG pictures,
/// wx's global resource object included.
void init_resource_handlers();

/// Makes sure that the toolkit can read resource archives and PNG and GIF pictures.
void init_file_handlers();

}  // namespace plaxi1
