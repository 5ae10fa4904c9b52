#pragma once

namespace pelit2 {

/// Severity of a message line, a bit mask: every test on it is a bit test. No bit set
/// means an information line.
enum ESeverity : unsigned {
  severity_info = 0,
  severity_transient = 1,  ///< replaces the running status line; not kept, not saved
  severity_warning = 2,
  severity_error = 4,
  severity_critical = 8,
  severity_debug = 16,  ///< shown only where debug lines were asked for
};

constexpr ESeverity operator|(ESeverity a, ESeverity b) {
  return static_cast<ESeverity>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr ESeverity operator&(ESeverity a, ESeverity b) {
  return static_cast<ESeverity>(static_cast<unsigned>(a) & static_cast<unsigned>(b));
}

}  // namespace pelit2
