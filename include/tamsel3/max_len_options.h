#pragma once
#include <tamsel3/export.h>
#include <string>

namespace tamsel3 {

/// The length limit of one text field and how its warning names it.
struct TAMSEL3_API max_len_options_t {
  /// The default entry: a limit of 10000 and the default texts.
  max_len_options_t() = default;
  /// An entry with the limit `max_len`, the field's name and the catalog key of the details.
  max_len_options_t(const std::string& field_name, long max_len, const std::string& details_key)
      : m_max_len(max_len), m_field_name(field_name), m_details_key(details_key) {}

  /// Maximum number of characters; -1 stands for the default, 10000.
  long m_max_len = 10000;
  /// The field's name as the user knows it; empty stands for the catalog's "text".
  std::string m_field_name;
  /// Catalog key of the warning's supplemental text; empty stands for "max_len_details".
  std::string m_details_key;
};

}  // namespace tamsel3
