#include "log_capture.h"

#include <ylvane/log.h>

#include <log4cplus/spi/loggingevent.h>

namespace test_support {

class log_capture_t::appender_t : public log4cplus::Appender {
 public:
  ~appender_t() override { destructorImpl(); }
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

log_capture_t::log_capture_t() : m_impl(new appender_t) {
  m_appender = log4cplus::SharedAppenderPtr(m_impl);
  ylvane_1::log::libraryLogger().addAppender(m_appender);
}

log_capture_t::~log_capture_t() { ylvane_1::log::libraryLogger().removeAppender(m_appender); }

std::vector<log_line_t> log_capture_t::lines() const { return m_impl->lines(); }

}  // namespace test_support
