#pragma once
// What the pictures of messages tell, as screen readers name them.
#include <string>

namespace tamsel3 {

/// The kind of a severity level (0 critical, 1 error, 2 warning, any other information):
/// "critical", "error", "warning" or "info".
const char* severity_kind(int severity);

/// The translated name of a message picture of `kind` ("critical", "error", "warning",
/// "info", "ok", "progress", or "message" for a picture of the caller's own).
std::string picture_name(const std::string& kind);

}  // namespace tamsel3
