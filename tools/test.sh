#!/usr/bin/env bash
# The whole test run: set-up, format check, the release build with every test and
# clang-tidy's checks over its compile commands, the AddressSanitizer+UBSan build with
# every test, a bounded run of every fuzz target under libFuzzer, and the ThreadSanitizer
# build of the cross-thread tests. The accessibility tests (label a11y) run apart, in the
# release build: each starts its own session bus with the AT-SPI bus beside the X server,
# and their programs load GTK's bridge to it, which every other GUI test keeps off
# (NO_AT_BRIDGE).
set -euo pipefail
cd "$(dirname "$0")/.."

tools/setup-debian.sh
tools/check-format.sh

jobs=$(nproc)
# A run with GUI tests gets one X server for all of them; they find it through DISPLAY.
run_preset() {
  local preset=$1 targets=$2 display=${3:-}
  echo "== $preset: configure and build"
  cmake --preset "$preset" >/dev/null
  # shellcheck disable=SC2086
  cmake --build --preset "$preset" -j "$jobs" ${targets:+--target $targets}
  echo "== $preset: test"
  if [[ $display == display ]]; then
    NO_AT_BRIDGE=1 xvfb-run -a -s '-screen 0 1600x1200x24' ctest --preset "$preset" -j "$jobs" -LE a11y
  else
    ctest --preset "$preset" -j "$jobs"
  fi
}

run_preset ci "" display
# The API reference: a new warning, such as an undocumented public member, fails the run.
echo "== ci: docs"
cmake --build --preset ci --target docs
echo "== ci: accessibility tests over AT-SPI"
xvfb-run -a -s '-screen 0 1600x1200x24' ctest --preset ci -L a11y
echo "== ci: clang-tidy"
tools/tidy.sh build/ci
run_preset asan "" display
tools/fuzz.sh
run_preset tsan "korvat2_stress_tests tamsel3_stress_tests gui_bridge_stress_tests inplace_say_stress_tests" display
echo "== all test runs passed"
