#!/usr/bin/env bash
# Sets the project up, builds it and runs the command-line tool; without arguments it lists the
# simulated camera's features with their values (see --help for the other commands).
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
"$here/scripts/setup.sh"
"${BUILD_DIR:-$here/build}/tools/camera-parameters" "$@"
