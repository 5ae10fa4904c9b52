#include "error_warning_panel.h"

#include <zandor/ustring.h>

#include <boost/tokenizer.hpp>

#include <algorithm>

namespace tamsel3 {

unsigned get_longest_word_length(const std::string& text) {
  static const boost::char_separator<char> separator(" \n\t");
  const boost::tokenizer<boost::char_separator<char>> words(text, separator);
  std::size_t longest = 0;
  for (const std::string& word : words) {
    longest = std::max(longest, ZANDOR_2_16::strings::ustring8(word).length());
  }
  return static_cast<unsigned>(longest);
}

}  // namespace tamsel3
