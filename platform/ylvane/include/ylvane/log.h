#pragma once
#include <log4cplus/logger.h>

#include <string>

namespace ylvane_1::log {

/// Name of the one logger of the tamsel3 library family; its environment variables are
/// "TAMSEL_DEBUG" (configuration) and "TAMSEL_ERROR_HANDLING" (checked failures).
inline constexpr const char* library_logger_name = "TAMSEL";

/// Makes and configures the logger of a component, once per component and process.
///
/// The variable `<component>_DEBUG` configures it: unset or empty gives level WARN on
/// standard error; a level name (TRACE, DEBUG, INFO, WARN, ERROR, FATAL, OFF, any case)
/// sets that level; the path of a readable log4cplus properties file configures log4cplus
/// from it. Thread-safe; later calls return the same logger without reading the variable.
log4cplus::Logger configureComponentLogger(const std::string& component);

/// The logger named `library_logger_name`, configured on first use.
log4cplus::Logger libraryLogger();

}  // namespace ylvane_1::log
