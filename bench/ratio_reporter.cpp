#include "ratio_reporter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <utility>

namespace bench_support {
namespace {

// "<case>/<library>[/<arg>]" split into the case with its argument, and the library.
std::pair<std::string, std::string> split_name(const std::string& name) {
  const std::size_t first = name.find('/');
  if (first == std::string::npos) {
    return {name, ""};
  }
  const std::size_t second = name.find('/', first + 1);
  const std::string library =
      name.substr(first + 1, second == std::string::npos ? std::string::npos : second - first - 1);
  const std::string argument = second == std::string::npos ? "" : name.substr(second);
  return {name.substr(0, first) + argument, library};
}

class collecting_reporter_t : public benchmark::ConsoleReporter {
 public:
  explicit collecting_reporter_t(time_basis_t basis) : m_basis(basis) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      // With repetitions, the median of the repetitions stands for the case: one slow
      // repetition (the display server busy elsewhere) doesn't move it.
      const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if ((run.run_type != Run::RT_Iteration && !median) || run.error_occurred) {
        continue;
      }
      const std::string& args = run.run_name.args;
      const auto [test_case, library] =
          split_name(run.run_name.function_name + (args.empty() ? "" : "/" + args));
      if (median || m_medians[test_case].count(library) == 0) {
        m_times[test_case][library] =
            m_basis == time_basis_t::wall ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
      }
      if (median) {
        m_medians[test_case].insert(library);
      }
      if (std::find(m_order.begin(), m_order.end(), test_case) == m_order.end()) {
        m_order.push_back(test_case);
      }
    }
  }

  void print_ratios(const std::string& subject, const std::vector<std::string>& peers) const {
    const char* basis = m_basis == time_basis_t::wall ? "wall" : "CPU";
    std::printf("\nRatios of %s's %s time to each peer's (below 1 is faster)\n", subject.c_str(), basis);
    std::printf("%-34s %12s", "case", (subject + " " + basis).c_str());
    for (const std::string& peer : peers) {
      std::printf(" %14s", ("/" + peer).c_str());
    }
    std::printf("\n");
    for (const std::string& test_case : m_order) {
      const auto& times = m_times.at(test_case);
      const auto own = times.find(subject);
      if (own == times.end()) {
        continue;
      }
      std::printf("%-34s %12.1f", test_case.c_str(), own->second);
      for (const std::string& peer : peers) {
        const auto other = times.find(peer);
        if (other == times.end() || other->second <= 0) {
          std::printf(" %14s", "-");
        } else {
          std::printf(" %14.2f", own->second / other->second);
        }
      }
      std::printf("\n");
    }
  }

 private:
  time_basis_t m_basis;
  std::map<std::string, std::map<std::string, double>> m_times;
  std::map<std::string, std::set<std::string>> m_medians;
  std::vector<std::string> m_order;
};

}  // namespace

int run_with_ratios(int argc, char** argv, const std::string& subject, const std::vector<std::string>& peers,
                    time_basis_t basis) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  collecting_reporter_t reporter(basis);
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.print_ratios(subject, peers);
  benchmark::Shutdown();
  return 0;
}

}  // namespace bench_support
