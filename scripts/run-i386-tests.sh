#!/usr/bin/env bash
# Builds the project as 32-bit x86 in a Debian i386 root (made once by scripts/debian-root.sh) into
# build-i386/, and runs the engine, library, tool, viewer and conformance tests there.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
bash "$here/scripts/debian-root.sh" i386 run \
    "cmake -S . -B build-i386 -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null &&
     cmake --build build-i386 -j2 >/dev/null &&
     ctest --test-dir build-i386 -L 'engine|library|tool|viewer|conformance' -j2 --output-on-failure"
