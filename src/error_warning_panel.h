#pragma once
// Helpers private to the error and warning panel.
#include <string>

namespace tamsel3 {

/// Length in characters of the longest word of `text`, words being separated by blanks,
/// LFs and tabs; 0 for a text of separators alone.
unsigned get_longest_word_length(const std::string& text);

}  // namespace tamsel3
