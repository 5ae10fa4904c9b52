#include "own_process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace test_support {

int run_test_in_own_process(const std::string& full_name, const environment_t& environment) {
  const pid_t child = ::fork();
  if (child == 0) {
    for (const auto& [name, value] : environment) {
      if (value) {
        ::setenv(name.c_str(), value->c_str(), 1);
      } else {
        ::unsetenv(name.c_str());
      }
    }
    const std::string filter = "--gtest_filter=" + full_name;
    const char* const argv[] = {"test-child", filter.c_str(), "--gtest_also_run_disabled_tests", nullptr};
    ::execv("/proc/self/exe", const_cast<char* const*>(argv));
    std::_Exit(127);
  }
  if (child < 0) {
    return -1;
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child) {
    return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace test_support
