#pragma once
// Runs the registered benchmarks and prints, after the usual table, each case's time as a
// ratio to the peers measured in the same run. Benchmarks are named "<case>/<library>" or
// "<case>/<library>/<argument>".
#include <string>
#include <vector>

namespace bench_support {

/// Which time the ratios compare: CPU time (work done) or wall time (throughput).
enum class time_basis_t { cpu, wall };

/// Runs everything with the console output and then the table of ratios of `subject` to
/// each of `peers`. Returns the process exit code.
int run_with_ratios(int argc, char** argv, const std::string& subject, const std::vector<std::string>& peers,
                    time_basis_t basis = time_basis_t::cpu);

}  // namespace bench_support
