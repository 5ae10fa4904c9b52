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

/// The areas of the library that log, each to its own logger "TAMSEL.<area>" below the
/// library's logger. An area logs at the library's level and to its appenders unless a
/// log4cplus properties file named by "TAMSEL_DEBUG" sets it apart, for example
/// "log4cplus.logger.TAMSEL.editor=TRACE".
namespace area {
inline constexpr const char* editor = "editor";    ///< the editor list and its system scan
inline constexpr const char* checks = "checks";    ///< checked failures
inline constexpr const char* asserts = "asserts";  ///< failed assertions
inline constexpr const char* catalog = "catalog";  ///< message catalogs
inline constexpr const char* storage = "storage";  ///< stored settings files
inline constexpr const char* bags = "bags";        ///< bag files
}  // namespace area

/// The logger "TAMSEL.<area>"; configures the library's logger first, so that the area
/// inherits what "TAMSEL_DEBUG" set.
log4cplus::Logger areaLogger(const char* area);

}  // namespace ylvane_1::log
