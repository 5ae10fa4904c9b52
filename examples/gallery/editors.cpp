// The external editors' page as a host uses it: the registry comes from the saved storage
// and the desktop, the page edits a copy, and OK saves the result back.
#include "entries.h"
#include "samples.h"

#include <korvat2/system_editor.h>
#include <quern2/storage.h>
#include <tamsel3/editor_data.h>
#include <tamsel3/editor_pp.h>

#include <wx/dialog.h>

namespace gallery {
namespace {

using tamsel3::editor_data_t;
using tamsel3::language_info;

const int page_flags = tamsel3::editor_pp_t::show_language_list | tamsel3::editor_pp_t::show_default |
                       tamsel3::editor_pp_t::show_info;

// Before the first OK there is nothing saved: start from editors a user might have added.
void add_first_run_editors(editor_data_t& data) {
  data.add_editor(language_info::language_cpp,
                  korvat2::system_editor_t{"code", "code", "/usr/bin/code", "/usr/bin/code --goto"});
  data.add_editor(language_info::language_cpp,
                  korvat2::system_editor_t{"clion.sh", "clion.sh", "/opt/clion/bin/clion.sh",
                                           "/opt/clion/bin/clion.sh --line"});
  data.set_selected_editor_name(language_info::language_cpp, "code");
  data.set_default_editor_name(language_info::language_cpp, "code");
  data.add_editor(language_info::language_fortran,
                  korvat2::system_editor_t{"gedit", "gedit", "/usr/bin/gedit", "/usr/bin/gedit"});
}

// The host's chain: saved state first, then what the desktop offers now.
editor_data_t load_editors() {
  editor_data_t data;
  const korvat2::sptr_t<quern2::IPropertyStorage> storage = editor_data_t::get_storage(nullptr);
  if (storage && storage->hasBag(".")) {
    data.load_storage_info(storage);
  } else {
    add_first_run_editors(data);
  }
  data.load_system_info();  // false only says that some language has no desktop default
  return data;
}

}  // namespace

std::vector<entry_t> editor_entries() {
  return {
      {"editor_page", "External editors (page in a dialog)",
       "The editors that open a source file: the desktop's applications for the file type, the "
       "editor of $VISUAL or $EDITOR, and the user's own, per language. The registry is loaded from "
       "the saved storage and the desktop; OK saves it back.",
       [](wxWindow* parent) {
         auto* page = new tamsel3::editor_pp_t(load_editors(), page_flags);
         preferences_dialog_t dialog(parent, page);
         if (dialog.ShowModal() == wxID_OK) {
           page->get_data().save_storage_info(nullptr);
         }
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         auto* dialog =
             new preferences_dialog_t(parent, new tamsel3::editor_pp_t(load_editors(), page_flags));
         dialog->Show();
         return dialog;
       }},
  };
}

}  // namespace gallery
