#include <korvat2/system.h>

#include "fixtures.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <filesystem>
#include <optional>
#include <string>

namespace {

using korvat2::error_code_t;
using korvat2::path_t;
using test_support::scoped_cwd_t;
using test_support::scoped_env_t;
using test_support::temp_dir_t;
namespace error = korvat2::error;
namespace stdpaths = korvat2::stdpaths;

const std::optional<std::string> unset;

std::string text_of(const path_t& path) { return path.as_string(false); }

// ---------------------------------------------------------------- environment

TEST(system_test, get_environ_value_reads_a_set_variable) {
  scoped_env_t env("KORVAT2_TEST_VARIABLE", std::string("some value = \xC3\xBC"));
  EXPECT_EQ(korvat2::get_environ_value("KORVAT2_TEST_VARIABLE"), "some value = \xC3\xBC");
}

TEST(system_test, get_environ_value_of_an_unset_or_empty_variable_is_empty) {
  {
    scoped_env_t env("KORVAT2_TEST_VARIABLE", unset);
    EXPECT_EQ(korvat2::get_environ_value("KORVAT2_TEST_VARIABLE"), "");
  }
  {
    scoped_env_t env("KORVAT2_TEST_VARIABLE", std::string());
    EXPECT_EQ(korvat2::get_environ_value("KORVAT2_TEST_VARIABLE"), "");
  }
  EXPECT_EQ(korvat2::get_environ_value(""), "");
}

TEST(system_test, get_environ_value_follows_changes) {
  scoped_env_t env("KORVAT2_TEST_VARIABLE", std::string("one"));
  EXPECT_EQ(korvat2::get_environ_value("KORVAT2_TEST_VARIABLE"), "one");
  ::setenv("KORVAT2_TEST_VARIABLE", "two", 1);
  EXPECT_EQ(korvat2::get_environ_value("KORVAT2_TEST_VARIABLE"), "two");
}

// ---------------------------------------------------------------- remove_file

TEST(system_test, remove_file_deletes_an_existing_file) {
  temp_dir_t dir;
  test_support::write_bytes(dir.file("doomed.txt"), "bye");
  const error_code_t result = korvat2::remove_file(path_t(dir.file("doomed.txt")));
  EXPECT_EQ(result, error_code_t(error::Success));
  EXPECT_FALSE(path_t::exists(dir.file("doomed.txt")));
  EXPECT_TRUE(dir.names().empty());
}

TEST(system_test, remove_file_of_a_missing_file_is_file_not_found) {
  temp_dir_t dir;
  const error_code_t result = korvat2::remove_file(path_t(dir.file("missing.txt")));
  EXPECT_TRUE(result.failed());
  EXPECT_EQ(result, error_code_t(error::FileNotFound));
}

TEST(system_test, remove_file_of_the_empty_path_is_an_invalid_parameter) {
  const error_code_t result = korvat2::remove_file(path_t());
  EXPECT_TRUE(result.failed());
  EXPECT_EQ(result, error_code_t(error::IsNotValidParameter));
  EXPECT_EQ(korvat2::remove_file(path_t("*")), error_code_t(error::IsNotValidParameter));
}

TEST(system_test, remove_file_that_cannot_be_removed_is_a_write_error) {
  temp_dir_t dir;
  test_support::write_bytes(dir.file("kept.txt"), "x");
  ASSERT_EQ(::mkdir(dir.file("full").c_str(), 0755), 0);
  test_support::write_bytes(dir.file("full/inside.txt"), "x");
  EXPECT_EQ(korvat2::remove_file(path_t(dir.file("full"))), error_code_t(error::FileWrite));
  EXPECT_EQ(korvat2::remove_file(path_t(dir.file("kept.txt/child"))), error_code_t(error::FileWrite));
  EXPECT_TRUE(path_t::exists(dir.file("full/inside.txt")));
  EXPECT_TRUE(path_t::exists(dir.file("kept.txt")));
}

// ---------------------------------------------------------------- standard paths

TEST(system_test, temp_dir_is_tmpdir_when_it_names_a_directory) {
  temp_dir_t dir;
  scoped_env_t env("TMPDIR", dir.path());
  EXPECT_EQ(text_of(stdpaths::get_temp_dir()), dir.path());
}

TEST(system_test, temp_dir_is_tmp_without_a_usable_tmpdir) {
  temp_dir_t dir;
  test_support::write_bytes(dir.file("plain_file"), "x");
  for (const std::optional<std::string>& value :
       {unset, std::optional<std::string>(""), std::optional<std::string>(dir.file("missing")),
        std::optional<std::string>(dir.file("plain_file"))}) {
    scoped_env_t env("TMPDIR", value);
    EXPECT_EQ(text_of(stdpaths::get_temp_dir()), "/tmp") << value.value_or("<unset>");
  }
}

TEST(system_test, working_dir_is_the_current_directory) {
  char buffer[PATH_MAX];
  ASSERT_NE(::getcwd(buffer, sizeof buffer), nullptr);
  EXPECT_EQ(text_of(stdpaths::get_working_dir()), buffer);
}

TEST(system_test, working_dir_follows_a_change_of_directory) {
  temp_dir_t dir;
  scoped_cwd_t cwd(dir.path());
  char resolved[PATH_MAX];
  ASSERT_NE(::getcwd(resolved, sizeof resolved), nullptr);
  EXPECT_EQ(text_of(stdpaths::get_working_dir()), resolved);
  EXPECT_EQ(text_of(stdpaths::get_working_dir()), std::filesystem::canonical(dir.path()).string());
}

TEST(system_test, user_config_dir_is_an_absolute_xdg_config_home) {
  scoped_env_t env("XDG_CONFIG_HOME", std::string("/custom/config"));
  EXPECT_EQ(text_of(stdpaths::get_user_config_dir()), "/custom/config");
}

TEST(system_test, user_config_dir_falls_back_to_home) {
  scoped_env_t home("HOME", std::string("/home/tester"));
  for (const std::optional<std::string>& value :
       {unset, std::optional<std::string>(""), std::optional<std::string>("relative/config")}) {
    scoped_env_t env("XDG_CONFIG_HOME", value);
    EXPECT_EQ(text_of(stdpaths::get_user_config_dir()), "/home/tester/.config") << value.value_or("<unset>");
  }
}

TEST(system_test, user_config_dir_without_home_uses_the_password_entry) {
  scoped_env_t home("HOME", unset);
  scoped_env_t env("XDG_CONFIG_HOME", unset);
  const passwd* entry = ::getpwuid(::getuid());
  ASSERT_NE(entry, nullptr);
  path_t expected(entry->pw_dir && *entry->pw_dir ? entry->pw_dir : "/");
  expected.append(path_t(".config"));
  EXPECT_EQ(text_of(stdpaths::get_user_config_dir()), text_of(expected));
}

TEST(system_test, user_data_dir_follows_xdg_data_home_or_home) {
  scoped_env_t home("HOME", std::string("/home/tester/"));
  {
    scoped_env_t env("XDG_DATA_HOME", std::string("/data/home"));
    EXPECT_EQ(text_of(stdpaths::get_user_data_dir()), "/data/home");
  }
  {
    scoped_env_t env("XDG_DATA_HOME", unset);
    EXPECT_EQ(text_of(stdpaths::get_user_data_dir()), "/home/tester/.local/share");
  }
}

}  // namespace
