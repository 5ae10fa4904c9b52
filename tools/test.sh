#!/usr/bin/env bash
# The whole test run: set-up, format check, the release build with every test, the
# AddressSanitizer+UBSan build with every test, and the ThreadSanitizer build of the
# cross-thread tests.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/setup-debian.sh
tools/check-format.sh

jobs=$(nproc)
run_preset() {
  local preset=$1 targets=$2
  echo "== $preset: configure and build"
  cmake --preset "$preset" >/dev/null
  # shellcheck disable=SC2086
  cmake --build --preset "$preset" -j "$jobs" ${targets:+--target $targets}
  echo "== $preset: test"
  ctest --preset "$preset" -j "$jobs"
}

run_preset ci ""
run_preset asan ""
run_preset tsan "korvat2_stress_tests"
echo "== all test runs passed"
