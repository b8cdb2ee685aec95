#!/usr/bin/env bash
# Sets the project up, builds it and runs the command-line tool on the simulated camera.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
"$here/scripts/setup.sh"
"${BUILD_DIR:-$here/build}/tools/genapi-demo" "$@"
