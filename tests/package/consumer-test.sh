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
# pkg-config leaves the language standard to the consumer, and -fPIC too, as Qt 5's own pkg-config files do
# on Debian (whose rules keep code generation flags out of them); Qt's headers ask for it.
if pkg-config --cflags parametercollection | grep -q -e '-std=' -e '-fPI'; then
    echo "pkg-config forces a language standard or code generation flags" >&2
    exit 1
fi
g++ -std=c++20 -fPIC "$here/consumer/main.cpp" -o "$work/pkgconfig-consumer" $(pkg-config --cflags --libs parametercollection)
LD_LIBRARY_PATH="$work/prefix/lib" "$work/pkgconfig-consumer"
# Every installed header of the library and the SDK services compiles with what is installed beside it.
{
    echo '#include <GenApi/GenApi.h>'
    (cd "$work/prefix/include" && find parametercollection tavrin -name '*.h' | sort | sed 's/.*/#include <&>/')
} >"$work/all-headers.cpp"
# shellcheck disable=SC2046
g++ -std=c++17 -fPIC -fsyntax-only "$work/all-headers.cpp" $(pkg-config --cflags parametercollection)
"$work/prefix/bin/camera-parameters" get Width >/dev/null
