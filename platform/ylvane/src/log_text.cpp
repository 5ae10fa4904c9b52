#include <ylvane/log.h>
#include <ylvane/log_text.h>

#include <log4cplus/loglevel.h>

namespace ylvane_1::log {
namespace {

log4cplus::LogLevel to_log4cplus(level_t level) {
  switch (level) {
    case level_t::trace: return log4cplus::TRACE_LOG_LEVEL;
    case level_t::debug: return log4cplus::DEBUG_LOG_LEVEL;
    case level_t::info: return log4cplus::INFO_LOG_LEVEL;
    case level_t::warn: return log4cplus::WARN_LOG_LEVEL;
    case level_t::error: return log4cplus::ERROR_LOG_LEVEL;
    default: return log4cplus::FATAL_LOG_LEVEL;
  }
}

}  // namespace

bool is_enabled(level_t level) { return libraryLogger().isEnabledFor(to_log4cplus(level)); }

void write(level_t level, const std::string& text, const char* file, int line) {
  const log4cplus::Logger logger = libraryLogger();
  if (logger.isEnabledFor(to_log4cplus(level))) {
    logger.forcedLog(to_log4cplus(level), text, file ? file : "", line);
  }
}

}  // namespace ylvane_1::log
