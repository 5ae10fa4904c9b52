#pragma once
#include <zandor/ustring.h>

#include <string>
#include <vector>

namespace ZANDOR_2_16::strings {

/// Upper-case copy, letter by letter over the whole of Unicode (ä becomes Ä, й becomes Й).
/// Characters without a single upper-case form stay as they are.
ustring8 to_upper(const ustring8& text);

/// Replaces every occurrence of `what` in `text` by `with`, left to right without
/// rescanning replaced text. Returns the number of replacements; an empty `what` gives 0.
std::size_t replace_all(std::string& text, const std::string& what, const std::string& with);

/// Flags of `split_string`.
enum split_flags_t : int {
  split_keep_empty = 0,  ///< empty pieces between adjacent separators are kept
  split_skip_empty = 1,  ///< empty pieces are dropped
};

/// The pieces of `text` between separators; every character of `separators` separates.
/// An empty text gives no piece.
std::vector<std::string> split_string(const std::string& text, const std::string& separators, int flags);

}  // namespace ZANDOR_2_16::strings
