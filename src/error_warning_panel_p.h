#pragma once
// Helpers private to the error and warning panel.
#include <string>
#include <utility>
#include <vector>

class wxWindow;

namespace tamsel3 {

/// Length in characters (code points) of the longest word of `text`, words being separated
/// by blanks, LFs and tabs; 0 for a text of separators alone. An ideograph, kana, hangul or
/// full-width character is a word of its own, as a line may end on either side of it: a
/// sentence without blanks is no long word.
unsigned get_longest_word_length(const std::string& text);

/// `text` broken into lines of at most `max_chars` characters (code points, at least 1);
/// see error_warning_panel_t::create_multi_line.
std::vector<std::string> break_into_lines(unsigned max_chars, const std::string& text);

/// The lines joined with one LF between them, none after the last.
std::string join_lines(const std::vector<std::string>& lines);

/// Gives `window` an accessible name and description: through ATK where the library was
/// built with it, else as the window's name and help text.
void set_accessible_texts(wxWindow* window, const std::string& name, const std::string& description);

/// The accessible name and description that `window` has, read the same way.
std::pair<std::string, std::string> get_accessible_texts(wxWindow* window);

}  // namespace tamsel3
