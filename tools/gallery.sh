#!/usr/bin/env bash
# Builds everything and shows what there is to run. The gallery of windows joins here
# once the library has windows.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/setup-debian.sh
cmake --preset dev >/dev/null
cmake --build --preset dev -j "$(nproc)"

echo
echo "Built libraries:"
ls -1 build/dev/lib/*.so | sed 's|^|  |'
echo "Resource directory: build/dev/share/tamsel3"
find build/dev/share/tamsel3 -type f | sed 's|^|  |'
echo "Programs:"
ls -1 build/dev/bin | sed 's|^|  build/dev/bin/|'
echo
echo "Signal benchmark (korvat2 beside libsigc++ and boost::signals2):"
build/dev/bin/bench_signals --benchmark_min_time=0.05 2>/dev/null | sed -n '/^Ratios/,$p'
