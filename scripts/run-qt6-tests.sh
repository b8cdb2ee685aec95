#!/usr/bin/env bash
# Builds the project against Qt 6 (in build-qt6/) and runs its tests there; the conformance kit, which
# does not depend on Qt, runs in the Qt 5 build.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
if ! dpkg-query -W -f='${Status}' qt6-base-dev 2>/dev/null | grep -q "install ok installed"; then
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends qt6-base-dev >/dev/null
fi
BUILD_DIR="$here/build-qt6" CMAKE_EXTRA_ARGS="-DPC_QT_MAJOR=6" "$here/scripts/run-tests.sh" -LE "conformance|kits" "$@"
