#include "log_capture.h"

#include <ylvane/log.h>

#include <log4cplus/appender.h>
#include <log4cplus/spi/loggingevent.h>

#include <mutex>

namespace test_support {
namespace {

class recording_appender_t : public log4cplus::Appender {
 public:
  ~recording_appender_t() override { destructorImpl(); }
  void close() override {}

  std::vector<log_line_t> lines() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_lines;
  }

 protected:
  void append(const log4cplus::spi::InternalLoggingEvent& event) override {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_lines.push_back({event.getLogLevel(), event.getMessage()});
  }

 private:
  mutable std::mutex m_mutex;
  std::vector<log_line_t> m_lines;
};

}  // namespace

struct log_capture_t::impl_t {
  recording_appender_t* appender = new recording_appender_t;
  log4cplus::SharedAppenderPtr shared{appender};
};

log_capture_t::log_capture_t() : m_impl(std::make_unique<impl_t>()) {
  ylvane_1::log::libraryLogger().addAppender(m_impl->shared);
}

log_capture_t::~log_capture_t() { ylvane_1::log::libraryLogger().removeAppender(m_impl->shared); }

std::vector<log_line_t> log_capture_t::lines() const { return m_impl->appender->lines(); }

std::size_t log_capture_t::count(int level, const std::string& part) const {
  std::size_t found = 0;
  for (const log_line_t& line : lines()) {
    found += line.level == level && line.text.find(part) != std::string::npos ? 1 : 0;
  }
  return found;
}

}  // namespace test_support
