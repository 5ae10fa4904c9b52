#!/usr/bin/env bash
# Fuzzes every fuzz target for a bounded time, where Clang is present: a Clang build of its
# own (build/fuzz) instruments every library for libFuzzer and AddressSanitizer+UBSan and
# builds only the fuzzing programs; they run as many at a time as there are cores, each
# from its seed corpus. A crash or a failed check fails the run and keeps the input in
# build/fuzz/artifacts. FUZZ_SECONDS sets the time per target (default 60).
set -euo pipefail
cd "$(dirname "$0")/.."

if ! command -v clang++ >/dev/null; then
  echo "== fuzz: no clang++, skipped"
  exit 0
fi
seconds=${FUZZ_SECONDS:-60}
dir=build/fuzz
echo "== fuzz: configure and build"
cmake -S . -B "$dir" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAMSEL3_SANITIZE=address -DTAMSEL3_FUZZ_COVERAGE=ON \
  -DTAMSEL3_BUILD_BENCH=OFF -DTAMSEL3_BUILD_GALLERY=OFF >/dev/null
cmake --build "$dir" -j "$(nproc)" --target tamsel3_fuzzers tamsel3_resources

export TAMSEL3_RESOURCE_DIR=$PWD/$dir/share/tamsel3
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export LSAN_OPTIONS=suppressions=$PWD/tests/asan/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
rm -rf "$dir/artifacts" "$dir/logs"
mkdir -p "$dir/logs"

# One target: new inputs go to a scratch folder, the seeds in the tree stay as they are.
fuzz_one() {
  local name=$1 corpus=$2 scratch
  scratch=$(mktemp -d)
  mkdir -p "$dir/artifacts/$name"
  if "$dir/bin/${name}_libfuzzer" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 \
    -artifact_prefix="$dir/artifacts/$name/" "$scratch" "$corpus" >"$dir/logs/$name.log" 2>&1; then
    echo "   $name: $(grep -Eo 'Done [0-9]+ runs.*' "$dir/logs/$name.log" | tail -1)"
    rm -rf "$scratch"
  else
    echo "   $name: FAILED, see $dir/logs/$name.log and $dir/artifacts/$name"
    tail -30 "$dir/logs/$name.log"
    rm -rf "$scratch"
    return 1
  fi
}

echo "== fuzz: ${seconds}s per target"
failed=0
running=0
while read -r name corpus; do
  [[ -n $name ]] || continue
  fuzz_one "$name" "$corpus" &
  running=$((running + 1))
  if ((running >= $(nproc))); then
    wait -n || failed=1
    running=$((running - 1))
  fi
done <"$dir/tests/fuzz/fuzz_targets.txt"
while ((running > 0)); do
  wait -n || failed=1
  running=$((running - 1))
done
if ((failed)); then
  echo "== fuzz: a target failed"
  exit 1
fi
echo "== fuzz: no target failed"
