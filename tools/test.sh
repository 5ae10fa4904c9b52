#!/usr/bin/env bash
# The whole test run: set-up, format check, the release build with every test and
# clang-tidy's checks over its compile commands, the AddressSanitizer+UBSan build with
# every test, a bounded run of every fuzz target under libFuzzer, and the ThreadSanitizer
# build of the cross-thread tests. The accessibility tests (label a11y) run apart, in the
# release build: each starts its own session bus with the AT-SPI bus beside the X server,
# and their programs load GTK's bridge to it, which every other GUI test keeps off
# (NO_AT_BRIDGE). The GUI tests then run again as Wayland clients of a private headless
# Weston (tools/wayland-run.sh): with a test seat, at scale 2, and without a seat.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/setup-debian.sh
tools/check-format.sh

jobs=$(nproc)
# A run with GUI tests gets one X server for all of them; they find it through DISPLAY.
# The release build's GUI tests under Wayland. The scale-2 programs get an output of scale 2;
# the gallery's comparison of both displays (label x11) ran in the X11 pass. Without a seat
# there is no pointer: the gallery's pictures and the tooltip and help tests.
wayland_passes() {
  echo "== ci: GUI tests under Wayland"
  tools/wayland-run.sh --seat -- ctest --preset ci -L gui -LE 'a11y|scale2|x11'
  echo "== ci: GUI tests under Wayland at scale 2"
  tools/wayland-run.sh --seat --scale 2 -- ctest --preset ci -L scale2
  echo "== ci: the gallery and pointer-less tests under Wayland without a seat"
  rm -rf build/ci/wayland-screenshots
  tools/wayland-run.sh -- build/ci/bin/tamsel3_gallery --screenshots build/ci/wayland-screenshots
  # Tooltips and the help key learn where the pointer is from their windows' own events, so
  # they hold without one; a pointer resting on a window needs the seat.
  tools/wayland-run.sh -- ctest --preset ci -L gui -R '^(tooltip_test\.|modal_test\..*help)' -E 'a_resting_mouse'
}

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
wayland_passes
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
