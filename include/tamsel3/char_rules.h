#pragma once
#include <tamsel3/export.h>
#include <string>

namespace tamsel3 {

// Every source file gets its own copies, made by its static initialisation, so that no
// file depends on another's initialisation order.

/// Forbidden in a name without any path.
static const std::string file_disabled_chars = "\\/:*?\"<>|";
/// Forbidden in a path, which may hold separators, drive colons and question marks.
static const std::string folder_disabled_chars = "*\"<>|";
/// Forbidden in the directory cells of search directory grids, where wild-cards are allowed.
static const std::string directory_disabled_chars = "\"<>|";

/// True when `text` holds no character of `set`.
TAMSEL3_API bool check_string_for_disabled_symbols(const std::string& text, const std::string& set);
/// False for an empty path; otherwise `check_string_for_disabled_symbols(name, set)`.
TAMSEL3_API bool check_file_name_for_chars(const std::string& name, const std::string& set);
/// `check_file_name_for_chars` with `folder_disabled_chars`.
TAMSEL3_API bool check_folder_name_for_chars(const std::string& name);

/// The one character of `set` at `index`; empty for an index outside the set.
TAMSEL3_API std::string create_disabled_char_string(const std::string& set, int index);
/// The same on `file_disabled_chars`.
TAMSEL3_API std::string create_disabled_char_string(int index);
/// The same on `folder_disabled_chars`.
TAMSEL3_API std::string create_disabled_folder_char_string(int index);

/// Deletes every character of `set` from `text`; true when any was removed.
TAMSEL3_API bool replace_disabled_chars(std::string& text, const std::string& set);
/// The same with `file_disabled_chars`.
TAMSEL3_API bool replace_disabled_chars(std::string& text);
/// The same with `folder_disabled_chars`.
TAMSEL3_API bool replace_disabled_chars_in_folder(std::string& text);

}  // namespace tamsel3
