#!/usr/bin/env bash
# Every engine header compiles on its own, as a vendor's GenApi headers do, except GenApi/Filestream.h,
# which like the vendor's needs GenApi/GenApi.h first; with it first, it compiles.
set -uo pipefail
compiler="$1"
include="$2"
cd "$include"
check() {
    local header="$1"
    if ! printf '#include <%s>\n' "$header" | "$compiler" -std=c++17 -fsyntax-only -I"$include" -x c++ - 2>/dev/null; then
        [ "$header" = GenApi/Filestream.h ] && exit 0
        echo "FAIL: <$header> does not compile on its own"
        exit 1
    fi
    if [ "$header" = GenApi/Filestream.h ]; then
        echo "FAIL: <GenApi/Filestream.h> compiles without GenApi/GenApi.h before it"
        exit 1
    fi
}
export -f check
export compiler include
ls GenICam*.h Base/*.h GenApi/*.h | xargs -P2 -I{} bash -c 'check {}' || exit 1
printf '#include <GenApi/GenApi.h>\n#include <GenApi/Filestream.h>\n' |
    "$compiler" -std=c++17 -fsyntax-only -I"$include" -x c++ - || { echo "FAIL: GenApi.h, then Filestream.h"; exit 1; }
echo "every header as a vendor's GenApi lays it out"
