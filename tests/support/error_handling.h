#pragma once
// Sets how checked failures are handled for the life of an object: the variable that the
// library reads once per process is set, read again, and both are put back at the end.
#include "fixtures.h"

#include <korvat2/error.h>
#include <ylvane/log.h>

#include <optional>
#include <string>

namespace test_support {

/// The variable that makes checked failures assert as well ("assert").
inline std::string error_handling_variable() {
  return std::string(ylvane_1::log::library_logger_name) + "_ERROR_HANDLING";
}

/// Gives the variable `value` (unset with no value) and has the library read it again.
class scoped_error_handling_t {
 public:
  explicit scoped_error_handling_t(const std::optional<std::string>& value) {
    m_env.emplace(error_handling_variable(), value);
    korvat2::error::reload_error_handling();
  }
  ~scoped_error_handling_t() {
    m_env.reset();
    korvat2::error::reload_error_handling();
  }
  scoped_error_handling_t(const scoped_error_handling_t&) = delete;
  scoped_error_handling_t& operator=(const scoped_error_handling_t&) = delete;

 private:
  std::optional<scoped_env_t> m_env;
};

}  // namespace test_support
