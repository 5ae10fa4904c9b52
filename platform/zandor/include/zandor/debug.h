#pragma once
#include <functional>

namespace ZANDOR_2_16::debug {

/// Receives every failed assertion: the condition as written, the source position and
/// the function's signature. Called on the thread that failed.
using assert_handler_t =
    std::function<void(const char* expression, const char* file, unsigned line, const char* function)>;

/// Installs `handler` and returns the one it replaces. An empty handler restores the
/// default, which only logs. Thread-safe.
assert_handler_t set_assert_handler(assert_handler_t handler);

namespace _private {
/// The assertion report: logs the failed condition through the library's logger at error
/// level, then calls the installed handler, and returns. It never aborts: the code behind
/// an assertion goes on and copes.
void ____________________ASSERT____________________(const char* expression, const char* file, unsigned line,
                                                    const char* function);
}  // namespace _private

}  // namespace ZANDOR_2_16::debug

/// Reports `expr` as written when it is false, and goes on.
#define ZANDOR_ASSERT(expr) ZANDOR_ASSERT_TEXT(expr, #expr)

/// Reports `("msg", cond)` when `cond` is false: the message travels in the report's text.
#define ZANDOR_ASSERT_MSG(msg, cond) ZANDOR_ASSERT_TEXT(cond, "(" #msg ", " #cond ")")

/// Reports `text` as a failed assertion and goes on; for a failure that the caller found
/// by a test of its own and reports in the words of the call.
#define ZANDOR_REPORT(text)                                                                                  \
  ::ZANDOR_2_16::debug::_private::____________________ASSERT____________________((text), __FILE__, __LINE__, \
                                                                                 __PRETTY_FUNCTION__)

/// Reports `text` as a failed assertion when `cond` is false, and goes on; for a report
/// that states the invariant in words other than the condition's own.
#define ZANDOR_ASSERT_TEXT(cond, text) ((cond) ? static_cast<void>(0) : ZANDOR_REPORT(text))
