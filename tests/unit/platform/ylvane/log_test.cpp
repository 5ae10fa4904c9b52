#include <ylvane/log.h>

#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <log4cplus/loggingmacros.h>
#include <log4cplus/loglevel.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

// A component is configured once per process, so every test makes component names of its own,
// new ones on each run of the test.

namespace {

using test_support::scoped_env_t;
using test_support::temp_dir_t;
using ylvane_1::log::configureComponentLogger;
using ylvane_1::log::libraryLogger;

// `base` with a number that no earlier call gave.
std::string fresh(const std::string& base) {
  static int counter = 0;
  return base + "_" + std::to_string(++counter);
}

// Configures `component` with its variable set to `setting` (unset when empty optional).
log4cplus::Logger configure_with(const std::string& component, const std::optional<std::string>& setting) {
  scoped_env_t variable(component + "_DEBUG", setting);
  return configureComponentLogger(component);
}

// Configures like configure_with, keeping what it says on standard error out of the test's output.
log4cplus::Logger configure_quietly(const std::string& component, const std::string& setting) {
  testing::internal::CaptureStderr();
  log4cplus::Logger logger = configure_with(component, setting);
  testing::internal::GetCapturedStderr();
  return logger;
}

TEST(log_test, unset_variable_gives_warn_on_standard_error_only) {
  const std::string component = fresh("YLT_UNSET");
  log4cplus::Logger logger = configure_with(component, std::nullopt);
  EXPECT_EQ(logger.getName(), component);
  EXPECT_EQ(logger.getLogLevel(), log4cplus::WARN_LOG_LEVEL);
  EXPECT_EQ(logger.getAllAppenders().size(), 1u);
  EXPECT_FALSE(logger.getAdditivity());  // lines don't also go up to the root
  EXPECT_TRUE(logger.isEnabledFor(log4cplus::WARN_LOG_LEVEL));
  EXPECT_FALSE(logger.isEnabledFor(log4cplus::INFO_LOG_LEVEL));
}

TEST(log_test, empty_variable_gives_warn) {
  EXPECT_EQ(configure_with(fresh("YLT_EMPTY"), std::string()).getLogLevel(), log4cplus::WARN_LOG_LEVEL);
}

TEST(log_test, level_name_sets_that_level) {
  const std::vector<std::pair<std::string, log4cplus::LogLevel>> levels = {
      {"TRACE", log4cplus::TRACE_LOG_LEVEL}, {"DEBUG", log4cplus::DEBUG_LOG_LEVEL},
      {"INFO", log4cplus::INFO_LOG_LEVEL},   {"WARN", log4cplus::WARN_LOG_LEVEL},
      {"ERROR", log4cplus::ERROR_LOG_LEVEL}, {"FATAL", log4cplus::FATAL_LOG_LEVEL},
      {"OFF", log4cplus::OFF_LOG_LEVEL}};
  for (const auto& [name, level] : levels) {
    log4cplus::Logger logger = configure_with(fresh("YLT_LEVEL_" + name), name);
    EXPECT_EQ(logger.getLogLevel(), level) << name;
    EXPECT_EQ(logger.getAllAppenders().size(), 1u) << name;
  }
}

TEST(log_test, level_name_is_read_in_any_case) {
  EXPECT_EQ(configure_with(fresh("YLT_CASE_LOWER"), "debug").getLogLevel(), log4cplus::DEBUG_LOG_LEVEL);
  EXPECT_EQ(configure_with(fresh("YLT_CASE_MIXED"), "eRRoR").getLogLevel(), log4cplus::ERROR_LOG_LEVEL);
  EXPECT_EQ(configure_with(fresh("YLT_CASE_TITLE"), "Trace").getLogLevel(), log4cplus::TRACE_LOG_LEVEL);
  EXPECT_EQ(configure_with(fresh("YLT_CASE_OFF"), "off").getLogLevel(), log4cplus::OFF_LOG_LEVEL);
}

TEST(log_test, level_decides_what_is_enabled) {
  log4cplus::Logger logger = configure_with(fresh("YLT_ENABLED"), "ERROR");
  EXPECT_FALSE(logger.isEnabledFor(log4cplus::WARN_LOG_LEVEL));
  EXPECT_TRUE(logger.isEnabledFor(log4cplus::ERROR_LOG_LEVEL));
  EXPECT_TRUE(logger.isEnabledFor(log4cplus::FATAL_LOG_LEVEL));
}

TEST(log_test, nonsense_value_gives_warn_and_says_so) {
  testing::internal::CaptureStderr();
  const std::string component = fresh("YLT_NONSENSE");
  log4cplus::Logger logger = configure_with(component, "loud please");
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_EQ(logger.getLogLevel(), log4cplus::WARN_LOG_LEVEL);
  EXPECT_EQ(logger.getAllAppenders().size(), 1u);
  EXPECT_NE(said.find("loud please"), std::string::npos) << said;
  EXPECT_NE(said.find(component), std::string::npos) << said;
}

TEST(log_test, level_name_with_blanks_is_nonsense) {
  log4cplus::Logger logger = configure_quietly(fresh("YLT_BLANKS"), " DEBUG");
  EXPECT_EQ(logger.getLogLevel(), log4cplus::WARN_LOG_LEVEL);
}

TEST(log_test, path_of_a_missing_file_gives_warn) {
  log4cplus::Logger logger = configure_quietly(fresh("YLT_NOFILE"), "/no/such/folder/log4cplus.properties");
  EXPECT_EQ(logger.getLogLevel(), log4cplus::WARN_LOG_LEVEL);
  EXPECT_EQ(logger.getAllAppenders().size(), 1u);
}

TEST(log_test, path_of_a_folder_gives_warn) {
  const temp_dir_t folder;
  ASSERT_FALSE(folder.path().empty());
  log4cplus::Logger logger = configure_quietly(fresh("YLT_FOLDER"), folder.path());
  EXPECT_EQ(logger.getLogLevel(), log4cplus::WARN_LOG_LEVEL);
  EXPECT_EQ(logger.getAllAppenders().size(), 1u);
}

TEST(log_test, readable_properties_file_configures_log4cplus) {
  const temp_dir_t folder;
  ASSERT_FALSE(folder.path().empty());
  const std::string component = fresh("YLT_PROPS");
  const std::string file =
      folder.write("log.properties", "log4cplus.logger." + component +
                                         "=INFO, QUIET\n"
                                         "log4cplus.additivity." +
                                         component +
                                         "=false\n"
                                         "log4cplus.appender.QUIET=log4cplus::NullAppender\n");
  log4cplus::Logger logger = configure_with(component, file);
  EXPECT_EQ(logger.getLogLevel(), log4cplus::INFO_LOG_LEVEL);
  const auto appenders = logger.getAllAppenders();
  ASSERT_EQ(appenders.size(), 1u);  // the file's appender, not the one on standard error
  EXPECT_EQ(appenders[0]->getName(), "QUIET");
  EXPECT_FALSE(logger.getAdditivity());
}

TEST(log_test, properties_file_may_configure_other_loggers_too) {
  const temp_dir_t folder;
  const std::string main = fresh("YLT_PROPS_MAIN");
  const std::string side = fresh("YLT_PROPS_SIDE");
  const std::string file =
      folder.write("log.properties", "log4cplus.logger." + main +
                                         "=DEBUG, QUIET\n"
                                         "log4cplus.logger." +
                                         side +
                                         "=FATAL, QUIET\n"
                                         "log4cplus.appender.QUIET=log4cplus::NullAppender\n");
  EXPECT_EQ(configure_with(main, file).getLogLevel(), log4cplus::DEBUG_LOG_LEVEL);
  EXPECT_EQ(log4cplus::Logger::getInstance(side).getLogLevel(), log4cplus::FATAL_LOG_LEVEL);
}

TEST(log_test, later_calls_give_the_same_logger_without_reading_the_variable) {
  const std::string component = fresh("YLT_ONCE");
  scoped_env_t variable(component + "_DEBUG", std::string("ERROR"));
  log4cplus::Logger first = configureComponentLogger(component);
  variable.set("TRACE");
  log4cplus::Logger second = configureComponentLogger(component);
  variable.unset();
  log4cplus::Logger third = configureComponentLogger(component);
  EXPECT_EQ(second.getName(), first.getName());
  EXPECT_EQ(second.getLogLevel(), log4cplus::ERROR_LOG_LEVEL);
  EXPECT_EQ(third.getLogLevel(), log4cplus::ERROR_LOG_LEVEL);
  EXPECT_EQ(third.getAllAppenders().size(), 1u);  // no appender added twice
}

TEST(log_test, later_calls_keep_what_the_program_changed) {
  const std::string component = fresh("YLT_CHANGED");
  log4cplus::Logger logger = configure_with(component, "WARN");
  logger.setLogLevel(log4cplus::DEBUG_LOG_LEVEL);
  EXPECT_EQ(configure_with(component, "FATAL").getLogLevel(), log4cplus::DEBUG_LOG_LEVEL);
}

TEST(log_test, components_are_configured_apart) {
  log4cplus::Logger a = configure_with(fresh("YLT_APART_A"), "ERROR");
  log4cplus::Logger b = configure_with(fresh("YLT_APART_B"), "DEBUG");
  EXPECT_EQ(a.getLogLevel(), log4cplus::ERROR_LOG_LEVEL);
  EXPECT_EQ(b.getLogLevel(), log4cplus::DEBUG_LOG_LEVEL);
  EXPECT_NE(a.getName(), b.getName());
}

TEST(log_test, concurrent_first_calls_configure_once) {
  const std::string component = fresh("YLT_THREADS");
  scoped_env_t variable(component + "_DEBUG", std::string("INFO"));
  std::vector<std::thread> threads;
  std::vector<log4cplus::LogLevel> levels(4, log4cplus::NOT_SET_LOG_LEVEL);
  for (std::size_t i = 0; i < levels.size(); ++i) {
    threads.emplace_back(
        [&levels, &component, i] { levels[i] = configureComponentLogger(component).getLogLevel(); });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  for (const log4cplus::LogLevel level : levels) {
    EXPECT_EQ(level, log4cplus::INFO_LOG_LEVEL);
  }
  EXPECT_EQ(configureComponentLogger(component).getAllAppenders().size(), 1u);
}

TEST(log_test, library_logger_is_named_tamsel) {
  EXPECT_STREQ(ylvane_1::log::library_logger_name, "TAMSEL");
  EXPECT_EQ(libraryLogger().getName(), "TAMSEL");
}

TEST(log_test, library_logger_is_the_configured_component_logger) {
  log4cplus::Logger library = libraryLogger();
  log4cplus::Logger component = configureComponentLogger("TAMSEL");
  EXPECT_EQ(component.getName(), library.getName());
  EXPECT_EQ(component.getLogLevel(), library.getLogLevel());
  EXPECT_EQ(component.getAllAppenders().size(), library.getAllAppenders().size());
  EXPECT_EQ(libraryLogger().getName(), "TAMSEL");
}

TEST(log_test, area_loggers_sit_below_the_library_logger) {
  EXPECT_EQ(ylvane_1::log::areaLogger(ylvane_1::log::area::editor).getName(), "TAMSEL.editor");
  EXPECT_EQ(ylvane_1::log::areaLogger(ylvane_1::log::area::checks).getParent().getName(), "TAMSEL");
}

TEST(log_test, one_area_at_trace_shows_its_lines_and_the_capture_sees_every_area) {
  log4cplus::Logger editor = ylvane_1::log::areaLogger(ylvane_1::log::area::editor);
  const log4cplus::Logger checks = ylvane_1::log::areaLogger(ylvane_1::log::area::checks);
  const log4cplus::LogLevel before = editor.getLogLevel();
  const test_support::log_capture_t capture;
  editor.setLogLevel(log4cplus::TRACE_LOG_LEVEL);
  LOG4CPLUS_TRACE(editor, "editor trace");
  LOG4CPLUS_TRACE(checks, "checks trace");
  LOG4CPLUS_WARN(checks, "checks warning");
  editor.setLogLevel(before);
  EXPECT_EQ(capture.count(log4cplus::TRACE_LOG_LEVEL, "editor trace"), 1u);
  EXPECT_EQ(capture.count(log4cplus::TRACE_LOG_LEVEL, "checks trace"), 0u);
  EXPECT_EQ(capture.count(log4cplus::WARN_LOG_LEVEL, "checks warning"), 1u);
}

}  // namespace
