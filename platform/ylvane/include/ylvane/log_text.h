#pragma once
// Writing to the library's logger without log4cplus's headers. Files that include the
// windowing toolkit must use this: the toolkit defines UNICODE, which would switch
// log4cplus's headers to wide strings that the library wasn't built with.
#include <string>

namespace ylvane_1::log {

enum class level_t { trace, debug, info, warn, error, fatal };

/// Whether the library's logger writes lines of `level`.
bool is_enabled(level_t level);
/// Writes `text` (UTF-8) to the library's logger at `level`, with the source position
/// when one is given.
void write(level_t level, const std::string& text, const char* file = nullptr, int line = 0);

}  // namespace ylvane_1::log
