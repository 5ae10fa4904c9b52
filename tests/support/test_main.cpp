// Test runner: an assertion report that nobody expected fails the running test.
#include "assert_recorder.h"
#include "fixtures.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  test_support::fail_on_unexpected_reports();
  test_support::use_english_texts();
  return RUN_ALL_TESTS();
}
