#include <pelit2/messenger.h>
#include <pelit2/severity.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using pelit2::ESeverity;
using pelit2::IMessenger;

// Records the lines said to it.
class recording_messenger_t : public IMessenger {
 public:
  explicit recording_messenger_t(bool* destroyed = nullptr) : m_destroyed(destroyed) {}
  ~recording_messenger_t() override {
    if (m_destroyed) {
      *m_destroyed = true;
    }
  }
  void say(ESeverity severity, const char* text) override { m_lines.emplace_back(severity, text); }

  std::vector<std::pair<ESeverity, std::string>> m_lines;

 private:
  bool* m_destroyed;
};

TEST(messenger_test, severity_bits) {
  EXPECT_EQ(static_cast<unsigned>(pelit2::severity_info), 0u);
  EXPECT_EQ(static_cast<unsigned>(pelit2::severity_transient), 1u);
  EXPECT_EQ(static_cast<unsigned>(pelit2::severity_warning), 2u);
  EXPECT_EQ(static_cast<unsigned>(pelit2::severity_error), 4u);
  EXPECT_EQ(static_cast<unsigned>(pelit2::severity_critical), 8u);
  EXPECT_EQ(static_cast<unsigned>(pelit2::severity_debug), 16u);
}

TEST(messenger_test, severity_is_an_unsigned_mask) {
  static_assert(std::is_same_v<std::underlying_type_t<ESeverity>, unsigned>);
  static_assert((pelit2::severity_warning | pelit2::severity_error) == 6);
  static_assert((pelit2::severity_error & pelit2::severity_error) == pelit2::severity_error);
}

TEST(messenger_test, or_combines_bits) {
  const ESeverity mask = pelit2::severity_error | pelit2::severity_transient;
  static_assert(std::is_same_v<decltype(pelit2::severity_error | pelit2::severity_transient), ESeverity>);
  EXPECT_EQ(static_cast<unsigned>(mask), 5u);
  const ESeverity all = pelit2::severity_transient | pelit2::severity_warning | pelit2::severity_error |
                        pelit2::severity_critical | pelit2::severity_debug;
  EXPECT_EQ(static_cast<unsigned>(all), 31u);
  EXPECT_EQ(pelit2::severity_warning | pelit2::severity_warning, pelit2::severity_warning);
  EXPECT_EQ(pelit2::severity_info | pelit2::severity_debug, pelit2::severity_debug);
}

TEST(messenger_test, and_tests_bits) {
  const ESeverity mask = pelit2::severity_critical | pelit2::severity_debug;
  static_assert(std::is_same_v<decltype(mask & pelit2::severity_debug), ESeverity>);
  EXPECT_EQ(mask & pelit2::severity_debug, pelit2::severity_debug);
  EXPECT_EQ(mask & pelit2::severity_critical, pelit2::severity_critical);
  EXPECT_EQ(mask & pelit2::severity_error, pelit2::severity_info);
  EXPECT_EQ(static_cast<unsigned>(mask & pelit2::severity_transient), 0u);
  EXPECT_EQ(pelit2::severity_info & pelit2::severity_info, pelit2::severity_info);
}

TEST(messenger_test, operators_work_in_constant_expressions) {
  constexpr ESeverity mask = pelit2::severity_warning | pelit2::severity_debug;
  constexpr ESeverity warning = mask & pelit2::severity_warning;
  static_assert(warning == pelit2::severity_warning);
  static_assert(static_cast<unsigned>(mask) == 18u);
  SUCCEED();
}

TEST(messenger_test, say_reaches_the_implementation) {
  recording_messenger_t messenger;
  IMessenger& base = messenger;
  base.say(pelit2::severity_info, "started");
  base.say(pelit2::severity_warning | pelit2::severity_debug, "odd but fine");
  ASSERT_EQ(messenger.m_lines.size(), 2u);
  EXPECT_EQ(messenger.m_lines[0].first, pelit2::severity_info);
  EXPECT_EQ(messenger.m_lines[0].second, "started");
  EXPECT_EQ(static_cast<unsigned>(messenger.m_lines[1].first), 18u);
  EXPECT_EQ(messenger.m_lines[1].second, "odd but fine");
}

TEST(messenger_test, deleting_through_the_interface_destroys_the_object) {
  bool destroyed = false;
  std::unique_ptr<IMessenger> messenger(new recording_messenger_t(&destroyed));
  messenger.reset();
  EXPECT_TRUE(destroyed);
}

}  // namespace
