#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (in build-fuzz/) and runs each for the given seconds (default
# 60) from its starting corpus; any crash, leak or timeout fails the script and leaves its input in build-fuzz/.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
seconds="${1:-60}"
"$here/scripts/setup.sh" >/dev/null
command -v clang++ >/dev/null || { sudo=""; [ "$(id -u)" -eq 0 ] || sudo="sudo";
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends clang >/dev/null; }
build="$here/build-fuzz"
CC=clang CXX=clang++ cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DPC_SANITIZE=fuzzer-no-link,address -DPC_FUZZ=ON >/dev/null
cmake --build "$build" -j2 --target FullNameFuzzer FeatureStreamFuzzer DescriptionFuzzer FileAccessFuzzer ChunkAndEventFuzzer \
    DescriptionCacheFuzzer
export ASAN_OPTIONS="detect_leaks=1"
run() {
    local target=$1 corpus=$2
    local work="$build/fuzz/corpus-$target"
    mkdir -p "$work"
    echo "== $target"
    local log="$build/fuzz/$target.log" status=0
    (cd "$build/fuzz" && "./$target" "$work" "$here/fuzz/corpus/$corpus" -max_total_time="$seconds" \
        -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 >"$log" 2>&1) || status=$?
    grep -E "stat::number_of_executed_units|ERROR|SUMMARY|Done" "$log" || true
    # A finding is shown with what led to it: the stack, the message of an abort, the input's file.
    if [ "$status" -ne 0 ]; then
        tail -n 80 "$log"
        exit "$status"
    fi
}
run FullNameFuzzer names
run FeatureStreamFuzzer streams
# The simulated camera's own description seeds the description fuzzer, as it stands today.
mkdir -p "$build/fuzz/corpus-DescriptionFuzzer"
cp "$here/simcamera/SimulatedCamera.xml" "$build/fuzz/corpus-DescriptionFuzzer/simulated-camera.xml"
run DescriptionFuzzer descriptions
run FileAccessFuzzer files
run ChunkAndEventFuzzer payloads
# The payload of the simulated camera's cache entry seeds the cache fuzzer.
mkdir -p "$build/fuzz/corpus-DescriptionCacheFuzzer"
(cd "$build/fuzz" && FUZZ_WRITE_PAYLOAD="$build/fuzz/corpus-DescriptionCacheFuzzer/simulated-camera.payload" \
    ./DescriptionCacheFuzzer)
run DescriptionCacheFuzzer cache
