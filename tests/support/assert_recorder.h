#pragma once
// Records the texts of assertion reports for the life of the recorder.
#include <zandor/debug.h>

#include <mutex>
#include <string>
#include <vector>

namespace test_support {

/// Makes every assertion report that no recorder expects fail the running test.
void fail_on_unexpected_reports();

class assert_recorder_t {
 public:
  assert_recorder_t();
  ~assert_recorder_t();
  assert_recorder_t(const assert_recorder_t&) = delete;
  assert_recorder_t& operator=(const assert_recorder_t&) = delete;

  std::vector<std::string> texts() const;
  std::size_t count() const;
  /// How many reports had exactly this text.
  std::size_t count(const std::string& text) const;
  void clear();

 private:
  mutable std::mutex m_mutex;
  std::vector<std::string> m_texts;
  ZANDOR_2_16::debug::assert_handler_t m_previous;
};

}  // namespace test_support
