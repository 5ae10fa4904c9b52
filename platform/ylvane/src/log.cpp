#include <ylvane/log.h>

#include <log4cplus/configurator.h>
#include <log4cplus/consoleappender.h>
#include <log4cplus/initializer.h>
#include <log4cplus/layout.h>
#include <log4cplus/loggingmacros.h>
#include <log4cplus/loglevel.h>

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <set>

namespace ylvane_1::log {
namespace {

std::string upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

bool parse_level(const std::string& text, log4cplus::LogLevel& level) {
  static const std::pair<const char*, log4cplus::LogLevel> levels[] = {
      {"TRACE", log4cplus::TRACE_LOG_LEVEL}, {"DEBUG", log4cplus::DEBUG_LOG_LEVEL},
      {"INFO", log4cplus::INFO_LOG_LEVEL},   {"WARN", log4cplus::WARN_LOG_LEVEL},
      {"ERROR", log4cplus::ERROR_LOG_LEVEL}, {"FATAL", log4cplus::FATAL_LOG_LEVEL},
      {"OFF", log4cplus::OFF_LOG_LEVEL}};
  const std::string wanted = upper(text);
  for (const auto& [name, value] : levels) {
    if (wanted == name) {
      level = value;
      return true;
    }
  }
  return false;
}

void add_stderr_appender(log4cplus::Logger& logger) {
  log4cplus::SharedAppenderPtr appender(new log4cplus::ConsoleAppender(true, true));
  appender->setLayout(
      std::make_unique<log4cplus::PatternLayout>(LOG4CPLUS_TEXT("%D{%H:%M:%S.%q} %-5p %c - %m%n")));
  logger.addAppender(appender);
  // The component's lines go to its own appender only, not twice through the root.
  logger.setAdditivity(false);
}

// A folder opens like a file and reads as nothing, so it must not count as a properties file.
bool readable_file(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode) && std::ifstream(path).good();
}

void configure(log4cplus::Logger& logger, const std::string& setting) {
  log4cplus::LogLevel level = log4cplus::WARN_LOG_LEVEL;
  if (setting.empty() || parse_level(setting, level)) {
    add_stderr_appender(logger);
    logger.setLogLevel(level);
    return;
  }
  if (readable_file(setting)) {
    log4cplus::PropertyConfigurator::doConfigure(LOG4CPLUS_TEXT(setting));
    return;
  }
  add_stderr_appender(logger);
  logger.setLogLevel(level);
  LOG4CPLUS_WARN(logger, "the debug setting '" << setting
                                               << "' is neither a level name nor a readable "
                                                  "log4cplus properties file; using WARN");
}

}  // namespace

log4cplus::Logger configureComponentLogger(const std::string& component) {
  static std::mutex guard;
  static std::set<std::string> configured;
  std::lock_guard<std::mutex> lock(guard);
  static const bool initialized = (log4cplus::initialize(), true);
  (void)initialized;
  log4cplus::Logger logger = log4cplus::Logger::getInstance(LOG4CPLUS_TEXT(component));
  if (configured.insert(component).second) {
    const char* setting = std::getenv((component + "_DEBUG").c_str());
    configure(logger, setting ? setting : "");
  }
  return logger;
}

log4cplus::Logger libraryLogger() {
  static const log4cplus::Logger logger = configureComponentLogger(library_logger_name);
  return logger;
}

log4cplus::Logger areaLogger(const char* area) {
  (void)libraryLogger();
  return log4cplus::Logger::getInstance(LOG4CPLUS_TEXT(std::string(library_logger_name) + "." + area));
}

}  // namespace ylvane_1::log
