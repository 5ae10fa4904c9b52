#include "picture_names_p.h"

#include <tamsel3/text_helpers.h>

namespace tamsel3 {

const char* severity_kind(int severity) {
  switch (severity) {
    case 0: return "critical";
    case 1: return "error";
    case 2: return "warning";
    default: return "info";
  }
}

std::string picture_name(const std::string& kind) { return translate_message("a11y.picture." + kind, {}); }

}  // namespace tamsel3
