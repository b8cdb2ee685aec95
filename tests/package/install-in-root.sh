#!/usr/bin/env bash
# Runs inside a fresh Debian root (scripts/test-packages.sh makes it): installs the packages in DEBS with
# apt, which must find every dependency; builds and runs the consumer with CMake and with pkg-config;
# upgrades to the same packages under a higher version; removes them and checks that nothing is left.
set -euo pipefail
debs=$1
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
fail() { echo "package test: $*" >&2; exit 1; }

# A vendor's GenICam SDK installed in the system's include folder, which the packages must leave alone.
mkdir -p /usr/include/GenApi /usr/include/Base
echo '#error "the vendor SDK header was used"' >/usr/include/GenApi/GenApi.h
echo '#error "the vendor SDK header was used"' >/usr/include/Base/GCBase.h
cp /usr/include/GenApi/GenApi.h "$work/vendor-GenApi.h"
vendor_untouched() {
    cmp -s /usr/include/GenApi/GenApi.h "$work/vendor-GenApi.h" ||
        fail "a package wrote over the vendor SDK's GenApi/GenApi.h"
    [ "$(ls /usr/include/GenApi)" = "GenApi.h" ] || fail "a package wrote into the vendor SDK's folder"
}

apt-get update -qq
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$debs"/*.deb >/dev/null
vendor_untouched
packages=$(for d in "$debs"/*.deb; do dpkg-deb -f "$d" Package; done)
echo "installed: $(echo $packages)"

consumers() {
    cmake -S "$here/consumer" -B "$work/consumer" >/dev/null
    cmake --build "$work/consumer" >/dev/null
    [ "$("$work/consumer/consumer")" = "Width 1024" ] || fail "the CMake consumer did not print Width 1024"
    # shellcheck disable=SC2046
    g++ -std=c++20 -fPIC "$here/consumer/main.cpp" -o "$work/pkgconfig-consumer" \
        $(pkg-config --cflags --libs parametercollection)
    [ "$("$work/pkgconfig-consumer")" = "Width 1024" ] || fail "the pkg-config consumer did not print Width 1024"
    camera-parameters get Width >/dev/null || fail "camera-parameters failed"
    [ -f /usr/share/man/man1/camera-parameters.1.gz ] || fail "no manual page"
    rm -rf "$work/consumer"
}
consumers
echo "consumers built and ran (CMake, pkg-config with -std=c++20), camera-parameters ran"

# An upgrade: the same packages under the next Debian revision replace the installed ones in place.
mkdir -p "$work/next" "$work/unpacked"
for d in "$debs"/*.deb; do
    rm -rf "$work/unpacked"
    dpkg-deb -R "$d" "$work/unpacked"
    sed -i 's/1\.0\.0-1/1.0.0-2/g' "$work/unpacked/DEBIAN/control"
    dpkg-deb -b "$work/unpacked" "$work/next/$(basename "$d" | sed 's/1\.0\.0-1/1.0.0-2/')" >/dev/null
done
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$work/next"/*.deb >/dev/null
for p in $packages; do
    [ "$(dpkg-query -W -f '${Version}' "$p")" = "1.0.0-2" ] || fail "$p was not upgraded"
done
vendor_untouched
consumers
echo "upgraded to 1.0.0-2, consumers built and ran again"

# Removal leaves none of the packages' files behind.
files=$(for p in $packages; do dpkg -L "$p"; done | sort -u)
# shellcheck disable=SC2086
DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq $packages >/dev/null
left=$(echo "$files" | while read -r f; do [ -f "$f" ] && echo "$f"; done || true)
[ -z "$left" ] || fail "files left after purge: $left"
vendor_untouched
echo "purged: no file left, the vendor SDK's headers untouched"
