#pragma once
// What the start-up helpers tell bench_startup: one line per milestone on standard output,
// "<milestone> <VmRSS kB> <VmHWM kB>", flushed at once so that the reader's clock stops
// at the milestone itself.
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bench_support {

// A "<field>:   1234 kB" line of /proc/self/status; 0 when it isn't there.
inline long status_kb(const char* field) {
  std::FILE* status = std::fopen("/proc/self/status", "r");
  if (!status) {
    return 0;
  }
  char line[256];
  long value = 0;
  const std::size_t length = std::strlen(field);
  while (std::fgets(line, sizeof line, status)) {
    if (std::strncmp(line, field, length) == 0 && line[length] == ':') {
      value = std::strtol(line + length + 1, nullptr, 10);
      break;
    }
  }
  std::fclose(status);
  return value;
}

inline void report_milestone(const char* milestone) {
  std::printf("%s %ld %ld\n", milestone, status_kb("VmRSS"), status_kb("VmHWM"));
  std::fflush(stdout);
}

}  // namespace bench_support
