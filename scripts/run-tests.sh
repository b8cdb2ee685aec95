#!/usr/bin/env bash
# Sets the project up, builds it and runs every registered test.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
"$here/scripts/setup.sh"
ctest --test-dir "${BUILD_DIR:-$here/build}" --output-on-failure -j2 "$@"
