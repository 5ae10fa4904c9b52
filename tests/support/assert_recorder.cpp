#include "assert_recorder.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace test_support {

void fail_on_unexpected_reports() {
  ZANDOR_2_16::debug::set_assert_handler(
      [](const char* expression, const char* file, unsigned line, const char*) {
        ADD_FAILURE_AT(file, static_cast<int>(line)) << "unexpected assertion report: " << expression;
      });
}

assert_recorder_t::assert_recorder_t() {
  m_previous = ZANDOR_2_16::debug::set_assert_handler(
      [this](const char* expression, const char*, unsigned, const char*) {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_texts.emplace_back(expression);
      });
}

assert_recorder_t::~assert_recorder_t() { ZANDOR_2_16::debug::set_assert_handler(m_previous); }

std::vector<std::string> assert_recorder_t::texts() const {
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_texts;
}

std::size_t assert_recorder_t::count() const {
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_texts.size();
}

std::size_t assert_recorder_t::count(const std::string& text) const {
  std::lock_guard<std::mutex> lock(m_mutex);
  return static_cast<std::size_t>(std::count(m_texts.begin(), m_texts.end(), text));
}

void assert_recorder_t::clear() {
  std::lock_guard<std::mutex> lock(m_mutex);
  m_texts.clear();
}

}  // namespace test_support
