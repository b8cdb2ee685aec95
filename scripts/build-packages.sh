#!/usr/bin/env bash
# Builds the Debian packages (libgenapi3, libgenapi-dev, libtavrinbase1, libparametercollection1,
# libparametercollection-dev, parametercollection-tools and their -dbgsym packages) into build-deb/ with
# Debian's hardening flags, installed under /usr with multiarch library folders and no run path, then
# checks each with lintian, which must find no error.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build="${PACKAGE_BUILD_DIR:-$here/build-deb}"
need=()
for tool in lintian dpkg-buildflags; do
    command -v "$tool" >/dev/null || need+=("$tool")
done
if [ ${#need[@]} -gt 0 ]; then
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends lintian dpkg-dev >/dev/null
fi
# Debian's own compiler and linker flags (stack protector, fortify, relro, now), as its packages get.
CPPFLAGS=$(dpkg-buildflags --get CPPFLAGS)
CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $CPPFLAGS"
CFLAGS="$(dpkg-buildflags --get CFLAGS) $CPPFLAGS"
LDFLAGS=$(DEB_BUILD_MAINT_OPTIONS=hardening=+bindnow dpkg-buildflags --get LDFLAGS)
export CXXFLAGS CFLAGS LDFLAGS
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_SKIP_INSTALL_RPATH=ON -DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON >/dev/null
cmake --build "$build" -j2 --target ParameterCollection camera-parameters camera-parameters-viewer \
    parameter-names man-pages
rm -f "$build"/*.deb "$build"/*.ddeb
(cd "$build" && cpack -G DEB >/dev/null)

# CPack's debug symbol packages need three repairs to be what Debian makes: md5sums with paths inside the
# package, not in the build tree; the documentation folder as a link to that of the package they belong
# to; and symbol files that are not executable.
repair_dbgsym() {
    local ddeb=$1 tree package target
    tree=$(mktemp -d)
    chmod 0755 "$tree"
    dpkg-deb -R "$ddeb" "$tree"
    package=$(dpkg-deb -f "$ddeb" Package)
    target=${package%-dbgsym}
    find "$tree/usr/lib/debug" -type f -exec chmod 0644 {} +
    mkdir -p "$tree/usr/share/doc"
    ln -sfn "$target" "$tree/usr/share/doc/$package"
    (cd "$tree" && find usr -type f -print0 | sort -z | xargs -0 md5sum >DEBIAN/md5sums)
    dpkg-deb --root-owner-group -b "$tree" "$ddeb" >/dev/null
    rm -rf "$tree"
}
for ddeb in "$build"/*.ddeb; do
    repair_dbgsym "$ddeb"
done
echo "Packages:"
(cd "$build" && ls -1 ./*.deb ./*.ddeb 2>/dev/null | sed 's|^\./|  |')
# Every package, debug symbols included; warnings are listed, errors fail.
lintian --fail-on error --tag-display-limit 0 "$build"/*.deb "$build"/*.ddeb
