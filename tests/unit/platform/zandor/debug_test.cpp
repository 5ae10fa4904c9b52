#include <zandor/debug.h>

#include "assert_recorder.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <log4cplus/loglevel.h>

#include <string>
#include <thread>
#include <vector>

namespace {

namespace debug = ZANDOR_2_16::debug;
using test_support::assert_recorder_t;
using test_support::log_capture_t;

struct report_t {
  std::string expression;
  std::string file;
  unsigned line = 0;
  std::string function;
};

// Installs a handler that keeps every report, and puts the previous handler back.
class report_keeper_t {
 public:
  report_keeper_t() {
    m_previous = debug::set_assert_handler(
        [this](const char* expression, const char* file, unsigned line, const char* function) {
          m_reports.push_back({expression, file, line, function});
        });
  }
  ~report_keeper_t() { debug::set_assert_handler(m_previous); }
  report_keeper_t(const report_keeper_t&) = delete;
  report_keeper_t& operator=(const report_keeper_t&) = delete;

  const std::vector<report_t>& reports() const { return m_reports; }

 private:
  std::vector<report_t> m_reports;
  debug::assert_handler_t m_previous;
};

void report(const char* expression) {
  debug::_private::____________________ASSERT____________________(expression, "some_file.cpp", 42,
                                                                  "void some_function(int)");
}

std::vector<test_support::log_line_t> error_lines(const log_capture_t& capture) {
  std::vector<test_support::log_line_t> out;
  for (const auto& line : capture.lines()) {
    if (line.level == log4cplus::ERROR_LOG_LEVEL) {
      out.push_back(line);
    }
  }
  return out;
}

TEST(debug_test, report_returns_and_passes_its_arguments_to_the_handler) {
  report_keeper_t keeper;
  report("x > 0");
  ASSERT_EQ(keeper.reports().size(), 1u);
  EXPECT_EQ(keeper.reports()[0].expression, "x > 0");
  EXPECT_EQ(keeper.reports()[0].file, "some_file.cpp");
  EXPECT_EQ(keeper.reports()[0].line, 42u);
  EXPECT_EQ(keeper.reports()[0].function, "void some_function(int)");
}

TEST(debug_test, report_is_logged_at_error_level_through_the_library_logger) {
  assert_recorder_t asserts;
  log_capture_t capture;
  report("pointer != nullptr");
  const auto lines = error_lines(capture);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].text,
            "assertion failed: pointer != nullptr, at some_file.cpp(42): void some_function(int)");
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"pointer != nullptr"});
}

TEST(debug_test, report_logs_before_it_calls_the_handler) {
  log_capture_t capture;
  std::size_t lines_seen_by_handler = 99;
  const auto previous = debug::set_assert_handler([&](const char*, const char*, unsigned, const char*) {
    lines_seen_by_handler = error_lines(capture).size();
  });
  report("first");
  debug::set_assert_handler(previous);
  EXPECT_EQ(lines_seen_by_handler, 1u);
}

TEST(debug_test, set_assert_handler_returns_the_previous_handler) {
  int first_calls = 0;
  int second_calls = 0;
  const auto original =
      debug::set_assert_handler([&](const char*, const char*, unsigned, const char*) { ++first_calls; });
  auto returned =
      debug::set_assert_handler([&](const char*, const char*, unsigned, const char*) { ++second_calls; });
  ASSERT_TRUE(static_cast<bool>(returned));
  returned("given back", "f.cpp", 1, "f()");  // it is the first handler
  EXPECT_EQ(first_calls, 1);
  report("to the second");
  EXPECT_EQ(first_calls, 1);
  EXPECT_EQ(second_calls, 1);

  auto second = debug::set_assert_handler(original);
  ASSERT_TRUE(static_cast<bool>(second));
  second("again", "f.cpp", 2, "f()");
  EXPECT_EQ(second_calls, 2);
}

TEST(debug_test, empty_handler_restores_the_log_only_default) {
  int calls = 0;
  const auto original =
      debug::set_assert_handler([&](const char*, const char*, unsigned, const char*) { ++calls; });
  const auto mine = debug::set_assert_handler(debug::assert_handler_t());
  EXPECT_TRUE(static_cast<bool>(mine));
  {
    log_capture_t capture;
    report("nobody listens");  // returns without a handler, and still logs
    const auto lines = error_lines(capture);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].text.find("nobody listens"), std::string::npos);
  }
  EXPECT_EQ(calls, 0);
  // Replacing the default gives back an empty handler.
  const auto empty = debug::set_assert_handler(original);
  EXPECT_FALSE(static_cast<bool>(empty));
}

TEST(debug_test, assert_macro_reports_the_condition_as_written_with_its_position) {
  report_keeper_t keeper;
  const int x = 1;
  const unsigned line = __LINE__ + 1;
  ZANDOR_ASSERT(x == 2);
  ASSERT_EQ(keeper.reports().size(), 1u);
  EXPECT_EQ(keeper.reports()[0].expression, "x == 2");
  EXPECT_EQ(keeper.reports()[0].file, __FILE__);
  EXPECT_EQ(keeper.reports()[0].line, line);
  EXPECT_NE(keeper.reports()[0].function.find("TestBody"), std::string::npos);
}

TEST(debug_test, assert_macro_is_silent_when_the_condition_holds) {
  report_keeper_t keeper;
  log_capture_t capture;
  const int x = 2;
  ZANDOR_ASSERT(x == 2);
  ZANDOR_ASSERT_MSG("never shown", x > 0);
  EXPECT_TRUE(keeper.reports().empty());
  EXPECT_TRUE(error_lines(capture).empty());
}

TEST(debug_test, assert_macro_evaluates_its_condition_once) {
  assert_recorder_t asserts;
  int evaluations = 0;
  ZANDOR_ASSERT(++evaluations == 5);
  EXPECT_EQ(evaluations, 1);
  ZANDOR_ASSERT_MSG("counted", ++evaluations == 5);
  EXPECT_EQ(evaluations, 2);
  EXPECT_EQ(asserts.texts(),
            (std::vector<std::string>{"++evaluations == 5", "(\"counted\", ++evaluations == 5)"}));
}

TEST(debug_test, assert_msg_reports_message_and_condition_in_one_text) {
  assert_recorder_t asserts;
  const bool x = false;
  ZANDOR_ASSERT_MSG("abc", x);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"(\"abc\", x)"});
}

TEST(debug_test, assert_msg_keeps_the_message_as_written) {
  report_keeper_t keeper;
  const int count = 3;
  const unsigned line = __LINE__ + 1;
  ZANDOR_ASSERT_MSG("count must be even", count % 2 == 0);
  ASSERT_EQ(keeper.reports().size(), 1u);
  EXPECT_EQ(keeper.reports()[0].expression, "(\"count must be even\", count % 2 == 0)");
  EXPECT_EQ(keeper.reports()[0].line, line);
}

TEST(debug_test, assert_macros_are_expressions) {
  assert_recorder_t asserts;
  const int x = 0;
  const bool ok = (ZANDOR_ASSERT(x == 1), true);
  EXPECT_TRUE(ok);
  x == 0 ? ZANDOR_ASSERT_MSG("in a conditional", x == 1) : static_cast<void>(0);
  EXPECT_EQ(asserts.texts(), (std::vector<std::string>{"x == 1", "(\"in a conditional\", x == 1)"}));
}

TEST(debug_test, handler_may_replace_itself_while_it_runs) {
  int calls = 0;
  debug::assert_handler_t original;
  original = debug::set_assert_handler([&](const char*, const char*, unsigned, const char*) {
    ++calls;
    debug::set_assert_handler(original);  // no deadlock: the handler runs outside the lock
  });
  report("replace me");
  EXPECT_EQ(calls, 1);
  // The original handler is back; a recorder sees the next report.
  assert_recorder_t asserts;
  report("after");
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"after"});
}

TEST(debug_test, handler_may_report_again) {
  std::vector<std::string> seen;
  const auto previous =
      debug::set_assert_handler([&](const char* expression, const char*, unsigned, const char*) {
        seen.emplace_back(expression);
        if (seen.size() == 1) {
          report("nested");
        }
      });
  report("outer");
  debug::set_assert_handler(previous);
  EXPECT_EQ(seen, (std::vector<std::string>{"outer", "nested"}));
}

TEST(debug_test, handler_is_called_on_the_failing_thread) {
  std::thread::id handler_thread;
  const auto previous = debug::set_assert_handler(
      [&](const char*, const char*, unsigned, const char*) { handler_thread = std::this_thread::get_id(); });
  std::thread::id worker_id;
  std::thread worker([&] {
    worker_id = std::this_thread::get_id();
    report("on a worker");
  });
  worker.join();
  debug::set_assert_handler(previous);
  EXPECT_EQ(handler_thread, worker_id);
}

TEST(debug_test, concurrent_reports_all_reach_the_handler) {
  assert_recorder_t asserts;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < 25; ++i) {
        report("concurrent");
      }
    });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(asserts.count("concurrent"), 100u);
}

}  // namespace
