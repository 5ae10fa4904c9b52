// Test runner: an assertion report that nobody expected fails the running test.
#include <zandor/debug.h>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  ZANDOR_2_16::debug::set_assert_handler(
      [](const char* expression, const char* file, unsigned line, const char*) {
        ADD_FAILURE_AT(file, static_cast<int>(line)) << "unexpected assertion report: " << expression;
      });
  return RUN_ALL_TESTS();
}
