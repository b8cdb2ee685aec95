#!/usr/bin/env bash
# Installs the Debian packages the project needs (when missing) and builds it into build/.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
packages=(cmake g++ make pkg-config qtbase5-dev libaravis-dev libusb-1.0-0-dev libxml2-dev
          googletest libgtest-dev libgmock-dev libbenchmark-dev aravis-tools-cli clang-format valgrind
          libreadline-dev libxml2-utils tmux aravis-tools xvfb xauth fonts-dejavu-core)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
build="${BUILD_DIR:-$here/build}"
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}" ${CMAKE_EXTRA_ARGS:-} >/dev/null
cmake --build "$build" -j2
