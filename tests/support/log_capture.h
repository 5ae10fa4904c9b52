#pragma once
// Captures what the library's logger writes, for the life of the capture. Free of
// log4cplus's headers, so that tests which include the windowing toolkit can use it.
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace test_support {

struct log_line_t {
  int level;  ///< log4cplus level: 40000 is ERROR, 30000 WARN
  std::string text;
};

class log_capture_t {
 public:
  log_capture_t();
  ~log_capture_t();
  log_capture_t(const log_capture_t&) = delete;
  log_capture_t& operator=(const log_capture_t&) = delete;

  std::vector<log_line_t> lines() const;
  /// How many lines of `level` hold `part`.
  std::size_t count(int level, const std::string& part) const;

 private:
  struct impl_t;
  std::unique_ptr<impl_t> m_impl;
};

}  // namespace test_support
