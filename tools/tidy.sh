#!/usr/bin/env bash
# Runs clang-tidy's checks of .clang-tidy (bug-prone code, performance, missing override)
# over the library sources of src/ and platform/, with the compile commands of the ci
# build tree. Prints the findings of each file that has any and fails then.
# Usage: tools/tidy.sh [build folder [source files...]]; by default build/ci and every
# library source.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/ci}
if [[ ! -f $build/compile_commands.json ]]; then
  cmake --preset ci >/dev/null
fi
if (($# > 1)); then
  files=("${@:2}")
else
  mapfile -t files < <(git ls-files 'src/*.cpp' 'platform/*.cpp')
fi

# The compile commands are GCC's; clang doesn't know all of its warning options.
tidy_one() {
  local output
  if ! output=$(clang-tidy -p "$1" --quiet --warnings-as-errors='*' --extra-arg=-Wno-unknown-warning-option \
    "$2" 2>&1); then
    printf '%s\n' "$output" | grep -v ' warnings\? generated\.$' >&2
    return 1
  fi
}
export -f tidy_one

if printf '%s\0' "${files[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c 'tidy_one "$0" "$1"' "$build" {}; then
  echo "tidy: ${#files[@]} files are clean"
else
  echo "tidy: findings above" >&2
  exit 1
fi
