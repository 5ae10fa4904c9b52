#pragma once
#include <tamsel3/export.h>
#include <cstdint>
#include <string>
#include <vector>

namespace tamsel3 {

/// The source languages on which the choice of an external editor rests. Holds no state of
/// its own: two process-wide tables, filled at first use, serve every call. GUI thread only,
/// after the message catalog is available; the names keep the catalog language active at
/// first use for the rest of the process.
class TAMSEL3_API language_info {
 public:
  /// The values are part of the interface: they order the tables, go to the log and serve
  /// as a list index on the editor preference page.
  enum language_t : std::int32_t {
    language_cpp = 0,
    language_csharp = 1,
    language_fortran = 2,
    language_other = 3,
  };

  language_info() = delete;

  /// The language of a file name or path by its extension, case-sensitive;
  /// `language_other` where there is no extension or no other language claims it.
  static language_t get_language(const std::string& file_name);

  /// The language whose localized name equals `name` byte for byte, the lowest value where
  /// two share a name; `language_other` where none does.
  static language_t get_language_by_name(const std::string& name);

  /// The language's name in the catalog; empty for a value outside the enumeration.
  static std::string get_localized_name(language_t language);

  /// The language's extensions without dots, in table order; empty for `language_other`,
  /// which takes any extension, and for a value outside the enumeration.
  static std::vector<std::string> get_extensions(language_t language);
};

}  // namespace tamsel3
