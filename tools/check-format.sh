#!/usr/bin/env bash
# Fails when a tracked C++ file differs from what clang-format makes of it, or when an
# event table holds a line other than one row.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files '*.h' '*.cpp')
clang-format --dry-run -Werror "${files[@]}"

# clang-format keeps a table's rows apart only where they were written apart: two rows
# on one line would stay joined, so each line inside a table must be exactly one row.
bad_rows=$(awk '
  /^(wx)?BEGIN_EVENT_TABLE/ { in_table = 1; next }
  /^(wx)?END_EVENT_TABLE/ { in_table = 0; next }
  in_table && !/^  [A-Z_0-9]+\(.*\)$/ { print FILENAME ":" FNR ": " $0 }
  in_table && /\) +[A-Za-z_]+\(/ { print FILENAME ":" FNR ": " $0 }
' "${files[@]}")
if [[ -n $bad_rows ]]; then
  echo "format: event table rows must stand one per line:" >&2
  echo "$bad_rows" >&2
  exit 1
fi
echo "format: ${#files[@]} files are formatted"
