#!/usr/bin/env bash
# Runs a command under a private headless Weston, as a GTK client of it:
#   tools/wayland-run.sh [--seat] [--scale N] [--] command args...
# --seat loads the test seat module (a pointer and a keyboard) from $TAMSEL3_TEST_SEAT, else
# from build/ci or build/dev. Weston gets a fresh runtime folder and socket of its own and goes
# when the command ends; the script exits with the command's status.
set -euo pipefail

seat=0
scale=1
while (($# > 0)); do
  case $1 in
    --seat) seat=1; shift ;;
    --scale) scale=$2; shift 2 ;;
    --) shift; break ;;
    *) break ;;
  esac
done
if (($# == 0)); then
  echo "usage: $0 [--seat] [--scale N] [--] command args..." >&2
  exit 2
fi

root=$(cd "$(dirname "$0")/.." && pwd)
weston_args=(--backend=headless-backend.so --width=1600 --height=1200 --scale="$scale" --idle-time=0)
if ((seat)); then
  module=${TAMSEL3_TEST_SEAT:-}
  for candidate in "$root/build/ci/lib/test_seat.so" "$root/build/dev/lib/test_seat.so"; do
    [[ -n $module ]] && break
    [[ -f $candidate ]] && module=$candidate
  done
  if [[ -z $module || ! -f $module ]]; then
    echo "wayland-run: no test_seat.so: build target tamsel3_test_seat or set TAMSEL3_TEST_SEAT" >&2
    exit 2
  fi
  weston_args+=(--modules="$module")
fi

runtime=$(mktemp -d /tmp/tamsel3-wayland.XXXXXX)
chmod 700 "$runtime"
socket=wayland-tamsel3-$$
weston_pid=
cleanup() {
  if [[ -n $weston_pid ]]; then
    kill "$weston_pid" 2>/dev/null || true
    wait "$weston_pid" 2>/dev/null || true
  fi
  rm -rf "$runtime"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# No panel: a window's place on the output then doesn't depend on the shell's furniture.
cat >"$runtime/weston.ini" <<'INI'
[shell]
panel-position=none
[keyboard]
keymap_layout=us
[input-method]
path=
INI
XDG_RUNTIME_DIR=$runtime weston "${weston_args[@]}" --socket="$socket" --config="$runtime/weston.ini" \
  >"$runtime/weston.log" 2>&1 &
weston_pid=$!

# Weston creates the socket once it listens; give up after about ten seconds.
for ((tries = 0; tries < 1000; tries++)); do
  [[ -S $runtime/$socket ]] && break
  if ! kill -0 "$weston_pid" 2>/dev/null; then
    break
  fi
  sleep 0.01
done
if [[ ! -S $runtime/$socket ]]; then
  echo "wayland-run: weston did not start:" >&2
  cat "$runtime/weston.log" >&2
  exit 1
fi

# The fonts of the X11 runs, which have no settings daemon: GTK's default Sans 10. Under
# Wayland GTK reads GSettings first, so the private configuration sets both.
config=$runtime/config
mkdir -p "$config/gtk-3.0" "$config/glib-2.0/settings"
printf '[Settings]\ngtk-font-name=Sans 10\n' >"$config/gtk-3.0/settings.ini"
printf "[org/gnome/desktop/interface]\nfont-name='Sans 10'\n" >"$config/glib-2.0/settings/keyfile"

status=0
env -u DISPLAY XDG_RUNTIME_DIR="$runtime" WAYLAND_DISPLAY="$socket" GDK_BACKEND=wayland NO_AT_BRIDGE=1 \
  XDG_CONFIG_HOME="$config" GSETTINGS_BACKEND=keyfile TAMSEL3_GUI_BACKEND=wayland "$@" || status=$?
exit "$status"
