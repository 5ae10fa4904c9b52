#pragma once
// Whole-file reads and atomic replacement of files, shared by the bag files.
#include <korvat2/error.h>

#include <string>

namespace korvat2::_internal {

/// Reads the whole file at `path` into `content`; false with a failing code in `result`:
/// FileNotFound, NotSupported for anything but a regular file (links followed), or FileRead.
bool read_file(const char* path, std::string& content, error_code_t& result);

/// Replaces the file that `path` names, links followed, with `data`: a locked temporary in
/// that file's folder is written, flushed and renamed over it, and the temporaries of dead
/// saves of the same file are removed. 0, or the errno of the step that failed.
int replace_file(const std::string& path, const std::string& data);

}  // namespace korvat2::_internal
