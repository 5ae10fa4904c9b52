#pragma once
// The gallery's entries: each shows one window of the library with realistic data.
#include <functional>
#include <string>
#include <vector>

class wxTopLevelWindow;
class wxWindow;

namespace gallery {

/// One window of the gallery: how to open it for a person, and for a screenshot.
struct entry_t {
  std::string id;                                           ///< file name of its screenshot
  std::string title;                                        ///< line in the gallery's list
  std::string description;                                  ///< what it shows
  std::function<void(wxWindow* parent)> run;                // interactive, usually modal
  std::function<wxTopLevelWindow*(wxWindow* parent)> show;  // shown without a loop
};

/// Windows built by a host on the library's frame.
std::vector<entry_t> frame_entries();
/// Message windows of every kind.
std::vector<entry_t> message_entries();
/// The caption panel over a page with its messages, and the simple message panel.
std::vector<entry_t> caption_entries();
/// The in-place message log fed by worker threads.
std::vector<entry_t> inplace_entries();
/// The Result saving page in a preferences dialog.
std::vector<entry_t> result_saving_entries();
/// The external editors' page on the desktop's and the saved editors.
std::vector<entry_t> editor_entries();
/// Asking for a file, and copying a message's details to the clipboard.
std::vector<entry_t> small_dialog_entries();
/// The experimental features page over sample list and choice files.
std::vector<entry_t> feature_entries();
/// A host window with a side panel of tab buttons.
std::vector<entry_t> side_panel_entries();
/// A preference page with a folding frame of advanced options, open and closed.
std::vector<entry_t> advanced_panel_entries();
/// Search directories on the directory grid, one row under edit.
std::vector<entry_t> directory_grid_entries();
/// The search directories' tab with warnings, and the file finder page of all four kinds.
std::vector<entry_t> search_dirs_entries();

}  // namespace gallery
