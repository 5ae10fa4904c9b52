// An entry's kept lines without a log: what a long log costs per line.
#include <tamsel3/event_entry.h>

#include "heap_use.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using test_support::heap_in_use;

// The entry's own keeping, without anything shown.
class keeping_entry_t : public tamsel3::event_entry_t {
 public:
  keeping_entry_t() : event_entry_t(nullptr) {}
  void hide() override {}
  korvat2::error_code_t update_message(const korvat2::intrusive_pointer_t<tamsel3::message_t>& /*msg*/,
                                       const korvat2::signal_t<int>* /*callback*/) override {
    return korvat2::error::Success;
  }
  std::string get_type() override { return "keeping"; }
  pelit2::IProgress* get_progress() override { return nullptr; }
  void hide_buttons() override {}
};

TEST(event_entry_test, a_kept_line_of_sixty_characters_costs_under_a_hundred_heap_bytes) {
  constexpr int count = 100000;
  std::string text(60, 'x');
  korvat2::intrusive_pointer_t<keeping_entry_t> entry(new keeping_entry_t);
  const std::size_t before = heap_in_use();
  for (int line = 0; line < count; ++line) {
    text.replace(0, 8, std::to_string(10000000 + line));
    entry->say(pelit2::severity_info, text.c_str());
  }
  const std::size_t after = heap_in_use();
  if (after == before) {
    GTEST_SKIP() << "the allocator in use doesn't report its use (a sanitizer's)";
  }
  ASSERT_EQ(entry->m_messages.size(), static_cast<std::size_t>(count));
  EXPECT_LT(static_cast<double>(after - before) / count, 100.0);
  EXPECT_EQ(entry->m_messages[count - 1].m_text, std::to_string(10000000 + count - 1) + std::string(52, 'x'));
}

}  // namespace
