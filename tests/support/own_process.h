#pragma once
// Runs one test of the running program in a process of its own, for code that reads
// process-wide state once (GIO reads the XDG folders at its first call). The test in the
// child is named DISABLED_..., so that it runs only when a parent asks for it.
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

/// Variables for the child: a value sets one, no value unsets it.
using environment_t = std::vector<std::pair<std::string, std::optional<std::string>>>;

/// Runs the test `full_name` ("suite.DISABLED_name") of this program in a child process
/// with `environment` applied, and gives its exit status: 0 when it passed.
int run_test_in_own_process(const std::string& full_name, const environment_t& environment);

}  // namespace test_support
