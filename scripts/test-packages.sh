#!/usr/bin/env bash
# Installs the built Debian packages (scripts/build-packages.sh) into a fresh 64-bit Debian root, a copy
# of one made once by scripts/debian-root.sh, and runs tests/package/install-in-root.sh there: install
# with apt, build a program against them, upgrade, purge.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build="${PACKAGE_BUILD_DIR:-$here/build-deb}"
roots="${DEBIAN_ROOTS:-/var/tmp/parametercollection}"
bash "$here/scripts/debian-root.sh" package-test setup
fresh="$roots/package-test-run"
remove_fresh() { ROOT_OVERRIDE="$fresh" bash "$here/scripts/debian-root.sh" package-test remove; }
remove_fresh
cp -a "$roots/package-test" "$fresh"
trap remove_fresh EXIT
mkdir -p "$fresh/debs"
cp "$build"/*.deb "$fresh/debs/"
ROOT_OVERRIDE="$fresh" bash "$here/scripts/debian-root.sh" package-test run \
    bash tests/package/install-in-root.sh /debs
