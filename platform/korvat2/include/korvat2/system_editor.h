#pragma once
#include <korvat2/error.h>
#include <korvat2/iterator.h>
#include <korvat2/path.h>

#include <string>

namespace korvat2 {

/// An application that the desktop offers for opening a file.
struct system_editor_t {
  std::string name;          ///< desktop id, such as "org.gnome.gedit.desktop"
  std::string display_name;  ///< the application's name as the desktop shows it
  std::string executable;    ///< the program, as the desktop entry names it
  std::string command_line;  ///< `executable` and its fixed arguments, without field codes
};

/// Which editors `get_system_editors` gives.
enum system_editor_type_t : int {
  system_editor_default = 0,  ///< the desktop's default one for the file's type
  system_editor_all = 1,      ///< every one that the desktop offers for the type
};

/// The desktop's editors for the type of `file`; its type is guessed from its name and its
/// first bytes, or from its name alone where there is no such file. `error::Success` when
/// `out` holds editors, `error::False` when the desktop offers none (then `out` is empty);
/// `error::FileNotFound` for an empty path, and `error::Failed` when there is no default of
/// `type` 0. The desktop's lists are read once per process. GUI thread.
error_code_t get_system_editors(const path_t& file, generic_iterator_t<system_editor_t>& out,
                                system_editor_type_t type);

/// A desktop entry's Exec line as a command line: the program first, then the fixed
/// arguments, with the field codes ("%f", "%U", ...) removed and "%%" made "%".
/// `executable` is the program as the caller names it. Empty when the line can't be parsed.
std::string command_line_from_exec(const std::string& executable, const std::string& exec);

}  // namespace korvat2
