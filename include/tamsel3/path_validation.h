#pragma once
#include <tamsel3/export.h>
#include <string>

class wxTextCtrl;

namespace tamsel3 {

/// Cleans a path field of the characters of `disabled_chars` while the user types, and
/// with `check_path` checks that what is left has the form of an absolute path. Marks the
/// field with the error colour and a tooltip when it is empty, was cleaned or has a bad
/// form; otherwise gives it the normal colour and no tooltip. After a cleaning the caret
/// stays where it was, one back. Never sends a text event. Without the catalog "tamsel"
/// the field is cleaned and judged all the same: the tooltip then lists the forbidden
/// characters alone, and texts from the catalog are left out. True when the form is good
/// (an empty field is). Call it once the toolkit has finished the edit (from a CallAfter of
/// the text event): GTK places its caret only after the event. GUI thread; a null control
/// is accepted.
template <class Control>
TAMSEL3_API bool validate_path(Control* control, bool check_path, const std::string& disabled_chars);

/// The form for a text field, the one the library builds.
extern template bool validate_path<wxTextCtrl>(wxTextCtrl*, bool, const std::string&);

}  // namespace tamsel3
