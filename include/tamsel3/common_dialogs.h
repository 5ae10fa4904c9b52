#pragma once
#include <tamsel3/export.h>
/// The toolkit's standard dialogs behind one calling style: in-out arguments, and a result
/// that is true when the user confirmed. All of them belong to the GUI thread and run modally.
/// A parent that is being destroyed gives way to the main window (or none): a dialog is
/// never parented to a dying window, which would take it down from inside its own loop.
#include <string>

class wxColourData;
class wxFontData;
class wxTextCtrl;
class wxWindow;

namespace tamsel3 {

/// Lets the user choose a file to open (`open`) or a name to save under. The dialog starts
/// in `folder`, or when that is empty in the folder of `path`, with the name of `path`
/// (the part after its last "/" or "\"). `filter` holds one description or pattern per
/// line, pairs of them making one filter; the one whose pattern holds `extension` (a
/// leading "." is added) is preselected. An empty `title` gives the catalog's default
/// title, or none when the catalog isn't loaded. True, with the chosen path in `path`,
/// when the user confirmed; otherwise `path` is untouched.
TAMSEL3_API bool file_dlg(wxWindow* parent, bool open, std::string& path, const std::string& extension,
                          const std::string& filter, const std::string& title, const std::string& folder);

/// Lets the user choose a folder, starting at `path`. An empty `title` gives the catalog's
/// default title, or none when the catalog isn't loaded. True, with the chosen folder in
/// `path`, when the user confirmed; otherwise `path` is untouched.
TAMSEL3_API bool folder_dlg(wxWindow* parent, std::string& path, const std::string& title);

/// Lets the user choose a font, starting from `data`. True, with the dialog's font data
/// copied into `data`, when the user confirmed; otherwise `data` is untouched.
TAMSEL3_API bool font_dlg(wxWindow* parent, wxFontData& data);

/// Lets the user choose a colour, starting from `data`. True, with the dialog's colour
/// data copied into `data`, when the user confirmed; otherwise `data` is untouched.
TAMSEL3_API bool color_dlg(wxWindow* parent, wxColourData& data);

/// Lets the user pick a folder for `field`, starting at the field's text. When the user
/// confirmed, the field gets the folder through SetValue, which sends its wxEVT_TEXT;
/// otherwise the field is left alone. A null field is ignored.
TAMSEL3_API void process_browse_folder(wxWindow* parent, wxTextCtrl* field);

}  // namespace tamsel3
