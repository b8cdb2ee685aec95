#!/usr/bin/env bash
# Installs the build tree into a temporary prefix, then builds and runs a consumer program against that
# prefix only: once through find_package(ParameterCollection), once through pkg-config.
set -euo pipefail
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# A vendor's GenICam SDK in the same prefix keeps its files: the engine's headers live in a folder of
# their own.
mkdir -p "$work/prefix/include/GenApi" "$work/prefix/include/Base"
echo '#error "the vendor SDK header was used"' > "$work/prefix/include/GenApi/GenApi.h"
cp "$work/prefix/include/GenApi/GenApi.h" "$work/vendor-GenApi.h"
cmake --install "$build" --prefix "$work/prefix" >/dev/null
if ! cmp -s "$work/prefix/include/GenApi/GenApi.h" "$work/vendor-GenApi.h" ||
    [ -n "$(ls -A "$work/prefix/include/Base")" ] || [ -e "$work/prefix/include/GenICam.h" ]; then
    echo "installing wrote over or beside the vendor SDK's headers" >&2
    exit 1
fi
# Nothing of the source or build tree may leak into what the consumer sees.
if grep -rqs -e "$build" -e "$(cd "$here/../.." && pwd)/" "$work/prefix/lib/cmake" "$work/prefix/lib/pkgconfig"; then
    echo "the installed package refers to the build or source tree" >&2
    exit 1
fi
cmake -S "$here/consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/consumer" >/dev/null
LD_LIBRARY_PATH="$work/prefix/lib" "$work/consumer/consumer"

export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
# shellcheck disable=SC2046
# pkg-config brings what Qt needs of its users (-fPIC) and leaves the language standard to the consumer.
if pkg-config --cflags parametercollection | grep -q -e '-std='; then
    echo "pkg-config forces a language standard" >&2
    exit 1
fi
g++ -std=c++20 "$here/consumer/main.cpp" -o "$work/pkgconfig-consumer" $(pkg-config --cflags --libs parametercollection)
LD_LIBRARY_PATH="$work/prefix/lib" "$work/pkgconfig-consumer"
"$work/prefix/bin/camera-parameters" get Width >/dev/null
