#include <korvat2/error.h>

#include "assert_recorder.h"
#include "error_handling.h"
#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace {

using korvat2::error_code_t;
using test_support::assert_recorder_t;
using test_support::log_capture_t;
using test_support::log_line_t;
using test_support::scoped_env_t;
using test_support::scoped_error_handling_t;

namespace error = korvat2::error;

constexpr int error_log_level = 40000;
const char* const handling_variable = "TAMSEL_ERROR_HANDLING";

// The lines logged at error level.
std::vector<std::string> error_lines(const log_capture_t& log) {
  std::vector<std::string> texts;
  for (const log_line_t& line : log.lines()) {
    if (line.level == error_log_level) {
      texts.push_back(line.text);
    }
  }
  return texts;
}

bool starts_with(const std::string& text, const std::string& prefix) {
  return text.compare(0, prefix.size(), prefix) == 0;
}

// ---------------------------------------------------------------- success and failure

TEST(error_test, default_code_is_success) {
  const error_code_t code;
  EXPECT_EQ(code.value(), 0u);
  EXPECT_TRUE(code.succeeded());
  EXPECT_FALSE(code.failed());
  EXPECT_EQ(code, error_code_t(error::Success));
}

TEST(error_test, codes_without_the_failure_bit_succeed) {
  for (error::value_t value : {0u, 1u, 2u, 0x7FFFu, 0x3FFFFFFFu, 0x80000000u, 0xBFFFFFFFu}) {
    const error_code_t code(value);
    EXPECT_TRUE(code.succeeded()) << std::hex << value;
    EXPECT_FALSE(code.failed()) << std::hex << value;
  }
  EXPECT_TRUE(error_code_t(error::False).succeeded());
  EXPECT_EQ(error_code_t(error::False).value(), 1u);
}

TEST(error_test, codes_with_the_failure_bit_fail) {
  for (error::value_t value : {0x40000000u, 0x40000001u, 0x4FFFFFFFu, 0xC0000000u, 0xFFFFFFFFu}) {
    const error_code_t code(value);
    EXPECT_TRUE(code.failed()) << std::hex << value;
    EXPECT_FALSE(code.succeeded()) << std::hex << value;
  }
  for (const error::code_t& named :
       {error::Failed, error::IsNotValidValue, error::IsNotValidParameter, error::FileNotFound,
        error::FileRead, error::FileWrite, error::FileFormat, error::NotSupported}) {
    EXPECT_TRUE(error_code_t(named).failed()) << named.name;
  }
}

TEST(error_test, named_codes_are_all_different) {
  const std::vector<error::code_t> codes{error::Success,
                                         error::False,
                                         error::Failed,
                                         error::IsNotValidValue,
                                         error::IsNotValidParameter,
                                         error::FileNotFound,
                                         error::FileRead,
                                         error::FileWrite,
                                         error::FileFormat,
                                         error::NotSupported};
  for (std::size_t i = 0; i < codes.size(); ++i) {
    for (std::size_t j = i + 1; j < codes.size(); ++j) {
      EXPECT_NE(codes[i].value, codes[j].value) << codes[i].name << " and " << codes[j].name;
    }
  }
}

TEST(error_test, equality_compares_values) {
  EXPECT_EQ(error_code_t(error::FileRead), error_code_t(error::FileRead.value));
  EXPECT_NE(error_code_t(error::FileRead), error_code_t(error::FileWrite));
}

// ---------------------------------------------------------------- texts

TEST(error_test, as_string_names_known_codes) {
  EXPECT_EQ(error_code_t(error::IsNotValidValue).as_string(error_code_t::name_only),
            "kv2::error::IsNot.Valid.Value");
  EXPECT_EQ(error_code_t(error::IsNotValidParameter).as_string(error_code_t::name_only),
            "kv2::error::IsNot.Valid.Parameter");
  EXPECT_EQ(error_code_t(error::Success).as_string(0), "kv2::error::Success");
  EXPECT_EQ(error_code_t(error::False).as_string(0), "kv2::error::False");
}

TEST(error_test, as_string_gives_hex_for_unknown_codes) {
  EXPECT_EQ(error_code_t(0x40001234u).as_string(error_code_t::name_only), "0x40001234");
  EXPECT_EQ(error_code_t(0x2Au).as_string(error_code_t::name_only), "0x0000002A");
  EXPECT_EQ(error_code_t(0xFFFFFFFFu).as_string(error_code_t::with_value), "0xFFFFFFFF");
}

TEST(error_test, as_string_with_value_adds_the_value_to_the_name) {
  EXPECT_EQ(error_code_t(error::IsNotValidParameter).as_string(error_code_t::with_value),
            "kv2::error::IsNot.Valid.Parameter (0x40000003)");
  EXPECT_EQ(error_code_t(error::Success).as_string(error_code_t::with_value),
            "kv2::error::Success (0x00000000)");
}

TEST(error_test, name_of_knows_the_named_codes_only) {
  EXPECT_STREQ(error::name_of(error::FileNotFound.value), "kv2::error::File.NotFound");
  EXPECT_STREQ(error::name_of(error::BagTooDeep.value), "kv2::error::Bag.TooDeep");
  EXPECT_TRUE(error_code_t(error::BagTooDeep).failed());
  EXPECT_EQ(error::name_of(0x40000FFFu), nullptr);
}

// ---------------------------------------------------------------- raise

TEST(error_test, raise_sets_the_code_and_logs_condition_name_and_position) {
  scoped_error_handling_t handling(std::string("log"));
  log_capture_t log;
  error_code_t result;
  result.raise(error::IsNotValidValue, "count > 0", "widget.cpp", 77, "void widget_t::f()");
  EXPECT_EQ(result, error_code_t(error::IsNotValidValue));
  EXPECT_TRUE(result.failed());
  const std::vector<std::string> lines = error_lines(log);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0],
            "count > 0 'kv2::error::IsNot.Valid.Value'\nwidget.cpp(77): void widget_t::f()\n"
            ", at file: widget.cpp:77");
}

TEST(error_test, raise_through_the_macro_logs_this_file_and_line) {
  scoped_error_handling_t handling(std::nullopt);
  log_capture_t log;
  error_code_t result;
  const int value = -1;
  const unsigned line = __LINE__ + 1;
  KV2_CHECK_RAISE(result, error::IsNotValidParameter, value >= 0);
  EXPECT_EQ(result, error_code_t(error::IsNotValidParameter));
  const std::vector<std::string> lines = error_lines(log);
  ASSERT_EQ(lines.size(), 1u);
  const std::string position = std::string(__FILE__) + "(" + std::to_string(line) + "): ";
  EXPECT_TRUE(starts_with(lines[0], "value >= 0 'kv2::error::IsNot.Valid.Parameter'\n" + position))
      << lines[0];
  EXPECT_NE(lines[0].find(", at file: " + std::string(__FILE__)), std::string::npos) << lines[0];
}

TEST(error_test, check_raise_of_a_true_condition_does_nothing) {
  log_capture_t log;
  error_code_t result(error::False);
  KV2_CHECK_RAISE(result, error::Failed, 1 + 1 == 2);
  EXPECT_EQ(result, error_code_t(error::False));
  EXPECT_TRUE(error_lines(log).empty());
}

// ---------------------------------------------------------------- checked failure

TEST(error_test, checked_failure_composes_condition_text_and_position) {
  scoped_error_handling_t handling(std::nullopt);
  log_capture_t log;
  error::checked_failure("ptr != nullptr", "no window", "frame.cpp", 12, "bool frame_t::show()");
  const std::vector<std::string> lines = error_lines(log);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0],
            "ptr != nullptr 'no window'\nframe.cpp(12): bool frame_t::show()\n, at file: frame.cpp:12");
}

TEST(error_test, checked_failure_without_error_text_has_no_quotes) {
  scoped_error_handling_t handling(std::nullopt);
  log_capture_t log;
  error::checked_failure("a == b", nullptr, "x.cpp", 3, "f");
  error::checked_failure("c == d", "", "y.cpp", 4, nullptr);
  EXPECT_EQ(error_lines(log), (std::vector<std::string>{"a == b\nx.cpp(3): f\n, at file: x.cpp:3",
                                                        "c == d\ny.cpp(4): \n, at file: y.cpp:4"}));
}

TEST(error_test, checked_failure_with_handling_assert_logs_and_reports) {
  scoped_error_handling_t handling(std::string("assert"));
  assert_recorder_t asserts;
  log_capture_t log;
  error::checked_failure("ready", "not ready yet", "task.cpp", 40, "void task_t::run()");
  const std::string composed = "ready 'not ready yet'\ntask.cpp(40): void task_t::run()\n";
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{composed});
  const std::vector<std::string> lines = error_lines(log);
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines[0], composed + ", at file: task.cpp:40");
}

TEST(error_test, check_macro_with_handling_assert_reports_the_composed_text) {
  scoped_error_handling_t handling(std::string("assert"));
  assert_recorder_t asserts;
  log_capture_t log;
  const int size = 0;
  const unsigned line = __LINE__ + 1;
  KV2_CHECK(size > 0, "empty list");
  ASSERT_EQ(asserts.count(), 1u);
  const std::string text = asserts.texts()[0];
  EXPECT_TRUE(starts_with(
      text, "size > 0 'empty list'\n" + std::string(__FILE__) + "(" + std::to_string(line) + "): "))
      << text;
  EXPECT_EQ(text.back(), '\n');
  EXPECT_FALSE(error_lines(log).empty());
}

TEST(error_test, raise_with_handling_assert_reports_the_code_name) {
  scoped_error_handling_t handling(std::string("assert"));
  assert_recorder_t asserts;
  error_code_t result;
  result.raise(error::IsNotValidParameter, "index < size", "list.cpp", 9, "int list_t::at(int)");
  EXPECT_EQ(asserts.texts(),
            std::vector<std::string>{
                "index < size 'kv2::error::IsNot.Valid.Parameter'\nlist.cpp(9): int list_t::at(int)\n"});
  EXPECT_TRUE(result.failed());
}

TEST(error_test, checked_failure_with_any_other_handling_only_logs) {
  for (const std::optional<std::string>& value :
       {std::optional<std::string>(), std::optional<std::string>("log"), std::optional<std::string>(""),
        std::optional<std::string>("asserts"), std::optional<std::string>("no")}) {
    scoped_error_handling_t handling(value);
    assert_recorder_t asserts;
    log_capture_t log;
    error::checked_failure("ok", "text", "file.cpp", 1, "f");
    EXPECT_EQ(asserts.count(), 0u) << value.value_or("<unset>");
    EXPECT_EQ(error_lines(log).size(), 1u) << value.value_or("<unset>");
  }
}

TEST(error_test, handling_is_read_again_only_on_reload) {
  scoped_error_handling_t handling(std::string("log"));
  scoped_env_t changed(handling_variable, std::string("assert"));
  assert_recorder_t asserts;
  error::checked_failure("first", nullptr, "f.cpp", 1, "f");
  EXPECT_EQ(asserts.count(), 0u);  // the variable is read once, not on every failure
  error::reload_error_handling();
  error::checked_failure("second", nullptr, "f.cpp", 2, "f");
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"second\nf.cpp(2): f\n"});
}

TEST(error_test, check_of_a_true_condition_does_nothing) {
  scoped_error_handling_t handling(std::string("assert"));
  assert_recorder_t asserts;
  log_capture_t log;
  KV2_CHECK(2 > 1, "never");
  EXPECT_EQ(asserts.count(), 0u);
  EXPECT_TRUE(log.lines().empty());
}

int checked_index(int index) {
  KV2_CHECK_MSG(index >= 0, "position is not negative", -1);
  return index;
}

void checked_step(bool go, int& steps) {
  KV2_CHECK_MSG(go, "go");
  ++steps;
}

TEST(error_test, check_msg_reports_its_text_for_the_caller_and_returns_the_value) {
  scoped_error_handling_t handling(std::string("assert"));
  assert_recorder_t asserts;
  log_capture_t log;
  EXPECT_EQ(checked_index(-3), -1);
  ASSERT_EQ(asserts.count(), 1u);
  const std::string text = asserts.texts()[0];
  EXPECT_TRUE(starts_with(text, "position is not negative\n" + std::string(__FILE__) + "(")) << text;
  // GCC and Clang name the anonymous namespace differently.
  EXPECT_TRUE(std::regex_search(
      text, std::regex(R"(\): int (\{anonymous\}|\(anonymous namespace\))::checked_index\(int\)\n)")))
      << text;
  EXPECT_FALSE(error_lines(log).empty());
}

TEST(error_test, check_msg_of_a_true_condition_goes_on) {
  scoped_error_handling_t handling(std::string("assert"));
  assert_recorder_t asserts;
  int steps = 0;
  EXPECT_EQ(checked_index(4), 4);
  checked_step(true, steps);
  EXPECT_EQ(steps, 1);
  EXPECT_EQ(asserts.count(), 0u);
}

TEST(error_test, check_msg_in_a_void_function_returns_early) {
  scoped_error_handling_t handling(std::string("assert"));
  assert_recorder_t asserts;
  int steps = 0;
  checked_step(false, steps);
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(asserts.count(), 1u);
}

}  // namespace
