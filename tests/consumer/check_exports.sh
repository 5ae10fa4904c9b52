#!/usr/bin/env bash
# Fails when the shared library exports anything but its API: every exported symbol must
# belong to the tamsel3 namespace (no instantiation of another library's template), and
# its first name there must be one that the public headers declare (no internal helper).
# Usage: check_exports.sh LIBRARY PUBLIC_INCLUDE_DIR
set -euo pipefail
library=$1 include_dir=$2

symbols=$(nm -D --defined-only -C "$library" | cut -d' ' -f3-)
if ! grep -q '^tamsel3::translate_message(' <<<"$symbols"; then
  echo "exports: $library does not export tamsel3::translate_message" >&2
  exit 1
fi

prefix='((typeinfo (name )?for|vtable for|VTT for|construction vtable for .*-in-|(non-)?virtual thunk to|guard variable for) )?(bool )?'
foreign=$(grep -v -E "^${prefix}tamsel3::" <<<"$symbols" || true)
if [[ -n $foreign ]]; then
  echo "exports: symbols outside the tamsel3 namespace ($(wc -l <<<"$foreign")):" >&2
  head -n 40 <<<"$foreign" >&2
  exit 1
fi

names=$(sed -E "s/^${prefix}tamsel3::([A-Za-z0-9_]+).*/\5/" <<<"$symbols" | sort -u)
status=0
for name in $names; do
  if ! grep -r -q -w -- "$name" "$include_dir"; then
    echo "exports: tamsel3::$name is exported but no public header declares it" >&2
    status=1
  fi
done
exit $status
