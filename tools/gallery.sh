#!/usr/bin/env bash
# Builds the library and runs the gallery of its windows. With a display the gallery
# opens as a window; without one it runs under Xvfb and writes a PNG of every window into
# build/gallery-screenshots (or the folder given as the first argument).
set -euo pipefail
cd "$(dirname "$0")/.."

tools/setup-debian.sh
cmake --preset dev >/dev/null
cmake --build --preset dev -j "$(nproc)" --target tamsel3_gallery

gallery=build/dev/bin/tamsel3_gallery
if [[ -n "${DISPLAY:-}" && $# -eq 0 ]]; then
  exec "$gallery"
fi
folder=${1:-build/gallery-screenshots}
mkdir -p "$folder"
NO_AT_BRIDGE=1 GDK_BACKEND=x11 xvfb-run -a -s '-screen 0 1600x1200x24' "$gallery" --screenshots "$folder"
echo "Screenshots in $folder:"
ls -1 "$folder"
