#pragma once
// Captures what the library's logger writes, for the life of the capture.
#include <log4cplus/appender.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace test_support {

struct log_line_t {
  int level;
  std::string text;
};

class log_capture_t {
 public:
  log_capture_t();
  ~log_capture_t();
  log_capture_t(const log_capture_t&) = delete;
  log_capture_t& operator=(const log_capture_t&) = delete;

  std::vector<log_line_t> lines() const;

 private:
  class appender_t;
  log4cplus::SharedAppenderPtr m_appender;
  appender_t* m_impl;
};

}  // namespace test_support
