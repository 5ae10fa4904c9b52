// The search directories as a host keeps them: a container of four lists in a file of its
// own, read when a page opens and written back when OK closes it. Cancel leaves the file as it
// was. The folders that the rows name are made in a scratch folder, so that the tab can tell
// which exist, which are missing and which name a file.
#include "entries.h"
#include "samples.h"

#include <HALLIN_2_13/search_dir_container.h>
#include <plaxi1/screenshot.h>
#include <tamsel3/file_finder_pp.h>
#include <tamsel3/search_dirs_tab.h>

#include <wx/dialog.h>
#include <wx/sizer.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace gallery {
namespace {

namespace fs = std::filesystem;
using HALLIN_2_13::ObjectPtr;
using HALLIN_2_13::search_category_t;
using HALLIN_2_13::search_dir_container_t;
using container_ptr_t = ObjectPtr<search_dir_container_t>;

// A project's tree as the rows see it: two source folders, a third-party folder whose
// subfolders a wild-card row takes, and a file where a folder might be expected.
fs::path scratch_folder() {
  const fs::path folder = fs::temp_directory_path() / "tamsel3-gallery-dirs";
  std::error_code ignored;
  for (const char* dir : {"render/src", "render/include", "render/third_party/zlib", "render/third_party/png",
                          "render/build/bin", "render/assets"}) {
    fs::create_directories(folder / dir, ignored);
  }
  std::ofstream file(folder / "render/CMakeLists.txt");
  if (!(file << "project(render CXX)\n")) {
    std::cerr << "couldn't write " << (folder / "render/CMakeLists.txt").string() << std::endl;
  }
  return folder;
}

std::string under(const fs::path& folder, const char* relative) { return (folder / relative).string(); }

struct row_t {
  search_category_t category;
  std::string text;
  bool recursive;
};

// The rows of the tab, all of the source files: one that exists, one that doesn't, one that
// names a file, and one that takes the subfolders of an existing folder by a wild-card.
std::vector<row_t> tab_rows(const fs::path& folder) {
  const search_category_t sources = HALLIN_2_13::search_category_sources;
  return {{sources, under(folder, "render/src"), true},
          {sources, under(folder, "render/build/generated"), false},
          {sources, under(folder, "render/CMakeLists.txt"), false},
          {sources, under(folder, "render/third_party/*"), false}};
}

// Folders of all four kinds, as a host that has been used for a while would have them.
std::vector<row_t> finder_rows(const fs::path& folder) {
  return {{HALLIN_2_13::search_category_binaries, under(folder, "render/build/bin"), false},
          {HALLIN_2_13::search_category_binaries, "/usr/lib/x86_64-linux-gnu", false},
          {HALLIN_2_13::search_category_symbols, "/usr/lib/debug", true},
          {HALLIN_2_13::search_category_sources, under(folder, "render/src"), true},
          {HALLIN_2_13::search_category_sources, under(folder, "render/include"), false},
          {HALLIN_2_13::search_category_sources, under(folder, "render/third_party/*"), false},
          {HALLIN_2_13::search_category_sources, "/usr/include", false},
          {HALLIN_2_13::search_category_other, under(folder, "render/assets"), true}};
}

// The container file `name` in the scratch folder. The first time, and always for a
// screenshot, it is written from the sample rows; after that it holds what OK saved.
struct stored_container_t {
  container_ptr_t container = search_dir_container_t::create();
  std::string file;

  stored_container_t(const char* name, const std::function<std::vector<row_t>(const fs::path&)>& rows,
                     bool fresh) {
    const fs::path folder = scratch_folder();
    file = (folder / name).string();
    const korvat2::error_code_t loaded =
        fresh ? korvat2::error_code_t(korvat2::error::FileNotFound) : container->load(file);
    if (loaded.succeeded()) {
      return;
    }
    if (loaded != korvat2::error::FileNotFound) {
      std::cerr << "can't read " << file << " (" << loaded.as_string(0) << "): starting over" << std::endl;
    }
    for (const row_t& row : rows(folder)) {
      container->add_search_dir(row.category, row.text.c_str(), row.recursive, false);
    }
    save();
  }

  // The container logs a failed write with its reason; the gallery says that it happened.
  void save() const {
    if (container->save(file).failed()) {
      std::cerr << "couldn't save " << file << std::endl;
    }
  }
};

constexpr int dialog_width = 640;

tamsel3::search_dirs_tab_t* make_tab(const stored_container_t& stored) {
  auto* tab = new tamsel3::search_dirs_tab_t(stored.container, HALLIN_2_13::search_category_sources);
  tab->set_dir_error_mode(1);
  return tab;
}

// Tall enough that every row of the sample shows, below the caption panel's message.
void make_room_for_rows(wxDialog& dialog) {
  dialog.SetClientSize(dialog.GetClientSize().GetWidth(),
                       std::max(dialog.GetClientSize().GetHeight(), dialog.FromDIP(420)));
}

// A host's dialog around the file finder page, whose layout has no buttons: OK has the page
// save into the container, and then writes the container to its file; Cancel writes nothing.
class finder_dialog_t : public wxDialog {
 public:
  finder_dialog_t(wxWindow* parent, const stored_container_t& stored)
      : wxDialog(parent, wxID_ANY, "Preferences", wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
        m_page(new tamsel3::file_finder_pp_t(stored.container)),
        m_file(stored) {
    m_page->create(this);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_page, 1, wxEXPAND);
    sizer->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, FromDIP(12));
    SetSizerAndFit(sizer);
    SetClientSize(FromDIP(dialog_width), GetClientSize().GetHeight());
    Bind(wxEVT_BUTTON, &finder_dialog_t::handle_ok, this, wxID_OK);
  }

 private:
  void handle_ok(wxCommandEvent& event) {
    m_page->save_settings();
    m_file.save();
    event.Skip();  // the dialog ends as usual
  }

  tamsel3::file_finder_pp_t* m_page;
  stored_container_t m_file;
};

wxTopLevelWindow* show_painted(wxDialog* dialog) {
  dialog->Show();
  plaxi1::wait_until_painted(dialog, 5000);
  return dialog;
}

}  // namespace

std::vector<entry_t> search_dirs_entries() {
  return {
      {"search_dirs_tab", "Search directories: one kind, with warnings",
       "The folders searched for source files, from a container file of the host's. Warnings "
       "are on: a folder that doesn't exist and a row that names a file each get a message, "
       "while an existing folder and a wild-card over an existing one don't. OK writes the "
       "file back.",
       [](wxWindow* parent) {
         // The tab's layout carries its own OK and Cancel; the page has saved into the
         // container when the dialog ends by OK.
         const stored_container_t stored("search_dirs_tab.cfg", tab_rows, false);
         preferences_dialog_t dialog(parent, make_tab(stored), dialog_width);
         make_room_for_rows(dialog);
         if (dialog.ShowModal() == wxID_OK) {
           stored.save();
         }
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         const stored_container_t stored("search_dirs_tab.cfg", tab_rows, true);
         auto* dialog = new preferences_dialog_t(parent, make_tab(stored), dialog_width);
         make_room_for_rows(*dialog);
         return show_painted(dialog);
       }},
      {"file_finder_page", "File finder: four kinds of folders",
       "The search directories of binaries, debug symbols, source files and other files, one "
       "kind shown at a time, with a tick for the subfolders. The file type starts at source "
       "files; the lists of all four are edited together and OK writes the container file back.",
       [](wxWindow* parent) {
         finder_dialog_t(parent, stored_container_t("file_finder.cfg", finder_rows, false)).ShowModal();
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         return show_painted(
             new finder_dialog_t(parent, stored_container_t("file_finder.cfg", finder_rows, true)));
       }},
  };
}

}  // namespace gallery
