#include <tamsel3/version.h>

#include <gtest/gtest.h>

#include <string>

TEST(version_test, headers_carry_the_project_version) {
  EXPECT_STREQ(TAMSEL3_VERSION_STRING, TAMSEL3_TEST_PROJECT_VERSION);
  EXPECT_EQ(std::to_string(TAMSEL3_VERSION_MAJOR) + "." + std::to_string(TAMSEL3_VERSION_MINOR) + "." +
                std::to_string(TAMSEL3_VERSION_PATCH),
            TAMSEL3_VERSION_STRING);
}

TEST(version_test, run_time_answer_is_the_headers_version) {
  const tamsel3::version_t loaded = tamsel3::version();
  EXPECT_EQ(loaded.major_number, TAMSEL3_VERSION_MAJOR);
  EXPECT_EQ(loaded.minor_number, TAMSEL3_VERSION_MINOR);
  EXPECT_EQ(loaded.patch_number, TAMSEL3_VERSION_PATCH);
  EXPECT_STREQ(loaded.text, TAMSEL3_VERSION_STRING);
}
