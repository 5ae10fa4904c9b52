#include <korvat2/error.h>
#include <korvat2/system.h>
#include <ylvane/log.h>
#include <zandor/debug.h>

#include <log4cplus/loggingmacros.h>

#include <atomic>
#include <cstdio>
#include <sstream>

namespace korvat2 {
namespace error {
namespace {

const code_t known_codes[] = {Success,      False,    Failed,    IsNotValidValue, IsNotValidParameter,
                              FileNotFound, FileRead, FileWrite, FileFormat,      NotSupported,
                              BagTooDeep};

bool read_assert_setting() {
  return get_environ_value(std::string(ylvane_1::log::library_logger_name) + "_ERROR_HANDLING") == "assert";
}

std::atomic<bool>& assert_on_failure() {
  static std::atomic<bool> setting(read_assert_setting());
  return setting;
}

}  // namespace

const char* name_of(value_t value) {
  for (const code_t& code : known_codes) {
    if (code.value == value) {
      return code.name;
    }
  }
  return nullptr;
}

void checked_failure(const char* condition, const char* error_text, const char* file, unsigned line,
                     const char* function) {
  std::ostringstream text;
  text << condition;
  if (error_text && *error_text) {
    text << " '" << error_text << "'";
  }
  text << "\n" << file << "(" << line << "): " << (function ? function : "") << "\n";
  const log4cplus::Logger logger = ylvane_1::log::areaLogger(ylvane_1::log::area::checks);
  if (logger.isEnabledFor(log4cplus::ERROR_LOG_LEVEL)) {
    LOG4CPLUS_ERROR(logger, text.str() << ", at file: " << file << ":" << line);
  }
  if (assert_on_failure().load()) {
    ZANDOR_2_16::debug::_private::____________________ASSERT____________________(
        text.str().c_str(), file, line, function ? function : "");
  }
}

void reload_error_handling() { assert_on_failure().store(read_assert_setting()); }

}  // namespace error

std::string error_code_t::as_string(unsigned format) const {
  char hex[16];
  std::snprintf(hex, sizeof hex, "0x%08X", static_cast<unsigned>(m_value));
  const char* name = error::name_of(m_value);
  if (!name) {
    return hex;
  }
  return (format & with_value) ? std::string(name) + " (" + hex + ")" : std::string(name);
}

void error_code_t::raise(const error::code_t& code, const char* text, const char* file, unsigned line,
                         const char* function) {
  m_value = code.value;
  error::checked_failure(text, code.name, file, line, function);
}

}  // namespace korvat2
