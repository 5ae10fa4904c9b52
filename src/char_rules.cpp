#include <tamsel3/char_rules.h>

#include <korvat2/path.h>
#include <zandor/strings.h>

namespace tamsel3 {

bool check_string_for_disabled_symbols(const std::string& text, const std::string& set) {
  for (const char c : set) {
    if (text.find(c) != std::string::npos) {
      return false;
    }
  }
  return true;
}

bool check_file_name_for_chars(const std::string& name, const std::string& set) {
  if (korvat2::path_t(name).is_empty()) {
    return false;  // an empty name isn't a good name
  }
  return check_string_for_disabled_symbols(name, set);
}

bool check_folder_name_for_chars(const std::string& name) {
  return check_file_name_for_chars(name, folder_disabled_chars);
}

std::string create_disabled_char_string(const std::string& set, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= set.size()) {
    return std::string();
  }
  return std::string(1, set[static_cast<std::size_t>(index)]);
}

std::string create_disabled_char_string(int index) {
  return create_disabled_char_string(file_disabled_chars, index);
}

std::string create_disabled_folder_char_string(int index) {
  return create_disabled_char_string(folder_disabled_chars, index);
}

bool replace_disabled_chars(std::string& text, const std::string& set) {
  std::size_t replaced = 0;
  for (int index = 0; static_cast<std::size_t>(index) < set.size(); ++index) {
    replaced += ZANDOR_2_16::strings::replace_all(text, create_disabled_char_string(set, index), "");
  }
  return replaced > 0;
}

bool replace_disabled_chars(std::string& text) { return replace_disabled_chars(text, file_disabled_chars); }

bool replace_disabled_chars_in_folder(std::string& text) {
  return replace_disabled_chars(text, folder_disabled_chars);
}

}  // namespace tamsel3
