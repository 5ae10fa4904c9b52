// What the library adds to a host's start. Each iteration starts a helper in a fresh
// process and times, from the fork, the lines it prints: "ready" when what the first window
// needs is at hand, "painted" at the first paint of the frame dialog. The library's helper
// is compared with a host that shows the same layout with wx alone. Counters: "main_ms"
// (fork to the helper's main: loading), and the resident memory at the milestone. Needs a
// display: run under `xvfb-run -a -s '-screen 0 1600x1200x24'` where there is none.
#include "ratio_reporter.h"

#include <tamsel3/resource.h>

#include <benchmark/benchmark.h>

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using clock_type = std::chrono::steady_clock;

// One milestone of a helper's run.
struct milestone_t {
  double seconds = 0;  // since the fork
  long rss_kb = 0;
  long hwm_kb = 0;
};

using run_t = std::map<std::string, milestone_t>;

std::string helper_path(const std::string& name) {
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name).string();
}

// Reads the helper's lines as they come, each stamped when it arrives.
run_t read_milestones(int fd, clock_type::time_point start) {
  run_t run;
  std::FILE* in = fdopen(fd, "r");
  char line[256];
  while (in && std::fgets(line, sizeof line, in)) {
    const double seconds = std::chrono::duration<double>(clock_type::now() - start).count();
    std::istringstream fields(line);
    std::string name;
    milestone_t milestone{seconds, 0, 0};
    fields >> name >> milestone.rss_kb >> milestone.hwm_kb;
    run.emplace(name, milestone);
  }
  if (in) {
    std::fclose(in);
  }
  return run;
}

// Starts `program` with `args` and collects its milestones; empty when it didn't start.
run_t run_helper(const std::string& program, const std::vector<std::string>& args) {
  int pipe_fds[2];
  if (pipe(pipe_fds) != 0) {
    return {};
  }
  std::vector<char*> argv{const_cast<char*>(program.c_str())};
  for (const std::string& arg : args) {
    argv.push_back(const_cast<char*>(arg.c_str()));
  }
  argv.push_back(nullptr);
  const clock_type::time_point start = clock_type::now();
  const pid_t child = fork();
  if (child == 0) {
    dup2(pipe_fds[1], STDOUT_FILENO);
    close(pipe_fds[0]);
    close(pipe_fds[1]);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  close(pipe_fds[1]);
  run_t run = child > 0 ? read_milestones(pipe_fds[0], start) : run_t{};
  if (child <= 0) {
    close(pipe_fds[0]);
  }
  int status = 0;
  if (child > 0) {
    waitpid(child, &status, 0);
  }
  return run;
}

// Resident memory by side and milestone, from the last run, for the table at the end.
std::map<std::string, std::map<std::string, milestone_t>>& memory_seen() {
  static std::map<std::string, std::map<std::string, milestone_t>> seen;
  return seen;
}

void measure(benchmark::State& state, const std::string& side, const std::string& program,
             const std::vector<std::string>& args, const std::string& milestone) {
  double main_total = 0;
  for (auto _ : state) {
    const run_t run = run_helper(program, args);
    const auto reached = run.find(milestone);
    const auto started = run.find("main");
    if (reached == run.end() || started == run.end()) {
      state.SkipWithError((program + " did not report " + milestone).c_str());
      return;
    }
    state.SetIterationTime(reached->second.seconds);
    main_total += started->second.seconds;
    memory_seen()[side][milestone] = reached->second;
    state.counters["rss_kB"] = static_cast<double>(reached->second.rss_kb);
    state.counters["hwm_kB"] = static_cast<double>(reached->second.hwm_kb);
  }
  state.counters["main_ms"] = benchmark::Counter(main_total * 1e3, benchmark::Counter::kAvgIterations);
}

void register_side(const std::string& side, const std::string& program,
                   const std::vector<std::string>& args) {
  for (const char* milestone : {"ready", "painted"}) {
    const std::string name = std::string(milestone) + "/" + side;
    benchmark::RegisterBenchmark(
        name.c_str(), [=](benchmark::State& state) { measure(state, side, program, args, milestone); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(10);
  }
}

void print_memory() {
  std::printf("\nResident memory at each milestone, kB (VmRSS, VmHWM)\n");
  std::printf("%-10s %12s %12s %12s %12s %8s\n", "milestone", "tamsel3 rss", "wx rss", "added", "tamsel3 hwm",
              "ratio");
  for (const char* milestone : {"ready", "painted"}) {
    const milestone_t own = memory_seen()["tamsel3"][milestone];
    const milestone_t peer = memory_seen()["wx"][milestone];
    std::printf("%-10s %12ld %12ld %12ld %12ld %8.2f\n", milestone, own.rss_kb, peer.rss_kb,
                own.rss_kb - peer.rss_kb, own.hwm_kb,
                peer.rss_kb > 0 ? static_cast<double>(own.rss_kb) / static_cast<double>(peer.rss_kb) : 0.0);
  }
}

}  // namespace

int main(int argc, char** argv) {
  register_side("tamsel3", helper_path("bench_startup_library_host"), {});
  register_side("wx", helper_path("bench_startup_plain_host"),
                {tamsel3::create_resource_filename("tamsel3.dat", "tamsel.xrc")});
  const int code =
      bench_support::run_with_ratios(argc, argv, "tamsel3", {"wx"}, bench_support::time_basis_t::wall);
  print_memory();
  return code;
}
