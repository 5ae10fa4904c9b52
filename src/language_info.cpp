#include <tamsel3/language_info.h>
#include <tamsel3/text_helpers.h>

#include <korvat2/path.h>
#include <zandor/strings.h>
#include <zandor/varg_list.h>

#include <map>
#include <regex>

namespace tamsel3 {
namespace {

using table_t = std::map<language_info::language_t, std::string>;

// Process-wide on purpose: the tables belong to no object and are never refilled.
table_t& extension_table() {
  static table_t table;
  return table;
}

table_t& name_table() {
  static table_t table;
  return table;
}

const char* const any_extension = ".*";

// The tables are written in Perl's syntax, where "c++" is a possessive repeat. Standard
// expressions know no possessive form; at the end of a branch that must match to the end
// of the text, the greedy repeat matches the same texts.
std::regex compile(const std::string& perl_expression) {
  std::string expression;
  for (const char c : perl_expression) {
    if (c == '+' && !expression.empty() && expression.back() == '+') {
      continue;
    }
    expression += c;
  }
  return std::regex(expression);
}

void set_up_tables() {
  table_t& extensions = extension_table();
  if (extensions.empty()) {
    // Real expressions, deliberately unescaped: "c++" and "h++" read as possessive repeats,
    // so "a.c++" falls through to the last row. Upper-case forms are spelled out because
    // matching is case-sensitive.
    extensions[language_info::language_cpp] =
        "c|h|cc|hh|c++|h++|cpp|hpp|cp|hp|cxx|hxx|C|H|CPP|HPP|tcc|i|ii|m|mi|mm|M|mii";
    extensions[language_info::language_csharp] = "cs";
    extensions[language_info::language_fortran] =
        "f|F|for|FOR|fpp|FPP|ftn|FTN|f77|F77|f90|F90|f95|F95|f03|F03|f08|F08|fi|fd";
    extensions[language_info::language_other] = any_extension;
  }
  table_t& names = name_table();
  if (names.empty()) {
    const ZANDOR_2_16::generic::varg_list no_args;
    names[language_info::language_cpp] = translate_message("pref.editor.language_cpp", no_args);
    names[language_info::language_csharp] = translate_message("pref.editor.language_csharp", no_args);
    names[language_info::language_fortran] = translate_message("pref.editor.language_fortran", no_args);
    names[language_info::language_other] = translate_message("pref.editor.language_other", no_args);
  }
}

}  // namespace

language_info::language_t language_info::get_language(const std::string& file_name) {
  set_up_tables();
  const std::string ext = korvat2::path_t(file_name).get_ext();
  if (ext.empty()) {
    return language_other;
  }
  for (const auto& row : extension_table()) {
    // Compiled afresh for every row and call; nothing is cached.
    if (std::regex_match(ext, compile(row.second))) {
      return row.first;
    }
  }
  return language_other;
}

language_info::language_t language_info::get_language_by_name(const std::string& name) {
  set_up_tables();
  for (const auto& row : name_table()) {
    if (row.second == name) {
      return row.first;
    }
  }
  return language_other;
}

std::string language_info::get_localized_name(language_t language) {
  set_up_tables();
  // The subscript adds an empty row for an unknown value, which then yields an empty name.
  return name_table()[language];
}

std::vector<std::string> language_info::get_extensions(language_t language) {
  set_up_tables();
  const std::string text = extension_table()[language];
  if (text == any_extension) {
    return {};
  }
  return ZANDOR_2_16::strings::split_string(text, "|", 0);
}

}  // namespace tamsel3
