#!/usr/bin/env bash
# Installs the Debian packages that building, testing and running tamsel3 need, where they
# are missing. Safe to run again: it installs nothing when everything is there.
set -euo pipefail

packages=(
  build-essential clang libclang-rt-14-dev cmake ninja-build ccache pkg-config gettext clang-format clang-tidy
  libwxgtk3.2-dev libboost-dev libboost-thread-dev libboost-regex-dev
  liblog4cplus-dev libpugixml-dev libglib2.0-dev
  libgtest-dev libgmock-dev libbenchmark-dev libsigc++-3.0-dev
  libgtk-3-dev libx11-dev xvfb xauth shared-mime-info doxygen
  libatk1.0-dev dbus at-spi2-core libatk-adaptor python3-pyatspi gir1.2-atspi-2.0
  weston libweston-10-dev
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$package")
done

if ((${#missing[@]} == 0)); then
  echo "setup: all ${#packages[@]} packages are installed"
  exit 0
fi

echo "setup: installing ${missing[*]}"
sudo_cmd=()
((EUID == 0)) || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
