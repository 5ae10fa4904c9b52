#include <zandor/debug.h>

#include <ylvane/log.h>

#include <log4cplus/loggingmacros.h>

#include <mutex>

namespace ZANDOR_2_16::debug {
namespace {

std::mutex& handler_mutex() {
  static std::mutex mutex;
  return mutex;
}

assert_handler_t& installed_handler() {
  static assert_handler_t handler;
  return handler;
}

}  // namespace

assert_handler_t set_assert_handler(assert_handler_t handler) {
  std::lock_guard<std::mutex> lock(handler_mutex());
  installed_handler().swap(handler);
  return handler;
}

namespace _private {

void ____________________ASSERT____________________(const char* expression, const char* file, unsigned line,
                                                    const char* function) {
  LOG4CPLUS_ERROR(ylvane_1::log::areaLogger(ylvane_1::log::area::asserts),
                  "assertion failed: " << expression << ", at " << file << "(" << line << "): " << function);
  assert_handler_t handler;
  {
    std::lock_guard<std::mutex> lock(handler_mutex());
    handler = installed_handler();
  }
  // Called outside the lock: a handler may install another one or assert again.
  if (handler) {
    handler(expression, file, line, function);
  }
}

}  // namespace _private
}  // namespace ZANDOR_2_16::debug
