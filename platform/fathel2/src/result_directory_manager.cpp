#include <fathel2/result_directory_manager.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

namespace fathel2 {
namespace {

const char* const reserved_names[] = {"ARCHIVE", "CONFIG", "DATA.0", "LOG", "SQLITE-DB"};
const char* const forbidden_characters = "/\\:*?\"<>|";
const std::string tag_placeholder = "{at}";

bool is_blank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_tag_char(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

bool has_bad_character(const std::string& text) {
  for (char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x20 || code == 0x7f || std::strchr(forbidden_characters, c)) {
      return true;
    }
  }
  return false;
}

// Braces only as the one "{at}".
bool has_bad_placeholder(const std::string& text) {
  int placeholders = 0;
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    if (text.compare(pos, tag_placeholder.size(), tag_placeholder) == 0) {
      ++placeholders;
      pos += tag_placeholder.size() - 1;
    } else if (text[pos] == '{' || text[pos] == '}') {
      return true;
    }
  }
  return placeholders > 1;
}

// 0 when no "@"; otherwise the number of runs, and the longest run in `longest`.
int count_runs(const std::string& text, std::size_t& longest) {
  int runs = 0;
  longest = 0;
  for (std::size_t pos = text.find('@'); pos != std::string::npos; pos = text.find('@', pos)) {
    std::size_t end = text.find_first_not_of('@', pos);
    end = end == std::string::npos ? text.size() : end;
    ++runs;
    longest = std::max(longest, end - pos);
    pos = end;
  }
  return runs;
}

// Whether the upper-case template from `t` can produce `name` from `n`: a run of k "@"
// gives k or more digits, "{AT}" one or more letters or digits, anything else itself.
bool can_produce(const std::string& templ, std::size_t t, const char* name) {
  if (t == templ.size()) {
    return *name == '\0';
  }
  if (templ[t] == '@') {
    const std::size_t end = std::min(templ.find_first_not_of('@', t), templ.size());
    std::size_t digits = 0;
    while (is_digit(name[digits])) {
      ++digits;
      if (digits >= end - t && can_produce(templ, end, name + digits)) {
        return true;
      }
    }
    return false;
  }
  if (templ.compare(t, 4, "{AT}") == 0) {
    for (std::size_t k = 0; is_tag_char(name[k]); ++k) {
      if (can_produce(templ, t + 4, name + k + 1)) {
        return true;
      }
    }
    return false;
  }
  return templ[t] == *name && can_produce(templ, t + 1, name + 1);
}

bool can_give_reserved_name(const std::string& text) {
  std::string upper = text;
  for (char& c : upper) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  for (const char* name : reserved_names) {
    if (can_produce(upper, 0, name)) {
      return true;
    }
  }
  return false;
}

}  // namespace

const char* toString(error_t error) {
  switch (error) {
    case error_none: return "";
    case error_empty: return "Enter a name template, such as r@@@{at}.";
    case error_too_long: return "Shorten the template to at most 120 characters.";
    case error_bad_character:
      return "Remove the characters that a folder name can't hold: / \\ : * ? \" < > | and control "
             "characters.";
    case error_hidden_name:
      return "Begin the template with a letter, a digit or \"@\", not with a dot or a blank.";
    case error_bad_placeholder:
      return "Use braces only for the analysis tag {at}, and only once; remove any other brace.";
    case error_no_number: return "Add one run of \"@\", such as @@@, where the result's number goes.";
    case error_several_numbers: return "Keep one run of \"@\" together; remove the \"@\" that stand apart.";
    case error_number_too_long: return "Shorten the run of \"@\" to at most 8.";
    case error_reserved_name:
      return "Change the template: some results would be named like a folder that result directories "
             "keep for themselves (archive, config, data.0, log, sqlite-db).";
  }
  return "Change the template: it isn't a valid result directory name.";
}

error_t ResultDirectoryManager::validateResultDirectoryPattern(const char* pattern) {
  const std::string text = pattern ? pattern : "";
  std::size_t longest = 0;
  if (text.find_first_not_of(" \t\n\v\f\r") == std::string::npos) {
    return error_empty;
  }
  if (text.size() > static_cast<std::size_t>(max_pattern_length)) {
    return error_too_long;
  }
  if (has_bad_character(text)) {
    return error_bad_character;
  }
  if (text[0] == '.' || is_blank(text[0])) {
    return error_hidden_name;
  }
  if (has_bad_placeholder(text)) {
    return error_bad_placeholder;
  }
  const int runs = count_runs(text, longest);
  if (runs == 0) {
    return error_no_number;
  }
  if (runs > 1) {
    return error_several_numbers;
  }
  if (longest > static_cast<std::size_t>(max_number_digits)) {
    return error_number_too_long;
  }
  return can_give_reserved_name(text) ? error_reserved_name : error_none;
}

bool ResultDirectoryManager::isReservedDirectoryName(const char* name) {
  if (!name) {
    return false;
  }
  for (const char* reserved : reserved_names) {
    if (std::strcmp(name, reserved) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace fathel2
