#include <tamsel3/common_dialogs.h>

#include "common_dialogs_p.h"

#include <plaxi1/modal.h>
#include <quern2/catalog_registry.h>

#include <wx/colordlg.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/fontdlg.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cstddef>

namespace tamsel3 {
namespace {

const std::string& default_file_title() {
  static default_title_t title("dlg.browse_file.name");
  return title.get();
}

const std::string& default_folder_title() {
  static default_title_t title("dlg.browse_folder.name");
  return title.get();
}

wxString to_wx(const std::string& text) { return wxString::FromUTF8(text); }

}  // namespace

file_dlg_setup_t make_file_dlg_setup(const std::string& path, const std::string& extension,
                                     const std::string& filter, const std::string& title,
                                     const std::string& folder, const std::string& default_title) {
  file_dlg_setup_t setup;
  setup.start_folder = folder;
  const std::size_t separator = path.find_last_of("/\\");
  if (separator != std::string::npos) {
    setup.start_name = path.substr(separator + 1);
    if (folder.empty()) {
      setup.start_folder = path.substr(0, separator + 1);
    }
  }

  setup.filter = filter;
  std::replace(setup.filter.begin(), setup.filter.end(), '\n', '|');
  if (!extension.empty()) {
    const std::string dotted = extension.front() == '.' ? extension : "." + extension;
    const std::size_t found = setup.filter.rfind(dotted);
    if (found != std::string::npos) {
      // Each filter is a description and a pattern, so two "|" before it per filter.
      const auto bars =
          std::count(setup.filter.begin(), setup.filter.begin() + static_cast<std::ptrdiff_t>(found), '|');
      setup.filter_index = static_cast<int>(bars / 2);
    }
  }
  if (!setup.filter.empty() && setup.filter.back() == '|') {
    setup.filter.pop_back();
  }

  setup.title = title.empty() ? default_title : title;
  return setup;
}

const std::string& default_title_t::get() {
  // Until the catalog is there the title stays empty, and a later need tries again.
  if (!m_filled) {
    if (const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog("tamsel")) {
      m_text = catalog->message(m_key).as_ustring(ZANDOR_2_16::generic::varg_list()).str();
      m_filled = true;
    }
  }
  return m_text;
}

bool file_dlg(wxWindow* parent, bool open, std::string& path, const std::string& extension,
              const std::string& filter, const std::string& title, const std::string& folder) {
  const file_dlg_setup_t setup = make_file_dlg_setup(path, extension, filter, title, folder,
                                                     title.empty() ? default_file_title() : std::string());
  wxFileDialog dialog(plaxi1::live_parent(parent), to_wx(setup.title), to_wx(setup.start_folder),
                      to_wx(setup.start_name), to_wx(setup.filter), open ? wxFD_OPEN : wxFD_SAVE);
  // Without any filter the toolkit has no index to select, and asserts.
  if (!setup.filter.empty()) {
    dialog.SetFilterIndex(setup.filter_index);
  }
  if (dialog.ShowModal() != wxID_OK) {
    return false;
  }
  path = dialog.GetPath().utf8_string();
  return true;
}

bool folder_dlg(wxWindow* parent, std::string& path, const std::string& title) {
  wxDirDialog dialog(plaxi1::live_parent(parent), to_wx(title.empty() ? default_folder_title() : title),
                     to_wx(path), 0, wxDefaultPosition, wxDefaultSize);
  if (dialog.ShowModal() != wxID_OK) {
    return false;
  }
  path = dialog.GetPath().utf8_string();
  return true;
}

bool font_dlg(wxWindow* parent, wxFontData& data) {
  wxFontDialog dialog(plaxi1::live_parent(parent), data);  // the dialog works on its own copy
  if (dialog.ShowModal() != wxID_OK) {
    return false;
  }
  data = dialog.GetFontData();
  return true;
}

bool color_dlg(wxWindow* parent, wxColourData& data) {
  wxColourDialog dialog(plaxi1::live_parent(parent), &data);  // the dialog works on its own copy
  if (dialog.ShowModal() != wxID_OK) {
    return false;
  }
  data = dialog.GetColourData();
  return true;
}

void process_browse_folder(wxWindow* parent, wxTextCtrl* field) {
  if (!field) {
    return;
  }
  std::string folder = field->GetValue().utf8_string();
  if (folder_dlg(parent, folder, "")) {
    field->SetValue(to_wx(folder));
  }
}

}  // namespace tamsel3
