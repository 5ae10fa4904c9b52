#pragma once
// Whole-file reads and atomic replacement of files, shared by the bag files.
#include <korvat2/error.h>

#include <string>

namespace korvat2::_internal {

/// Reads the whole file at `path` into `content`; false with a failing code in `result`.
bool read_file(const char* path, std::string& content, error_code_t& result);

/// Writes `data` next to `target` and renames it over `target`; 0, or the errno of the step
/// that failed.
int replace_file(const std::string& target, const std::string& data);

}  // namespace korvat2::_internal
