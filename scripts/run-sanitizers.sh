#!/usr/bin/env bash
# Builds the project with ThreadSanitizer and with AddressSanitizer plus UndefinedBehaviorSanitizer,
# and runs the tests of the given CTest label (default: every label) under each.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
label="${1:-.}"
"$here/scripts/setup.sh" >/dev/null
# The engine tries a large allocation before it lets Aravis make it: a sanitizer must answer null then,
# as malloc does, instead of stopping the program.
export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 allocator_may_return_null=1 suppressions=$here/scripts/tsan.supp"
export ASAN_OPTIONS="detect_leaks=1 halt_on_error=1 allocator_may_return_null=1"
export LSAN_OPTIONS="suppressions=$here/scripts/lsan.supp"
export UBSAN_OPTIONS="print_stacktrace=1 halt_on_error=1"
for sanitizer in thread "address,undefined"; do
    build="$here/build-${sanitizer//,/-}"
    # GLib's slice allocator hands blocks between threads under locks ThreadSanitizer cannot see (GLib is
    # not instrumented); with plain malloc it can, and a list Aravis makes in one map's thread from a block
    # another's had used is not taken for a race. LeakSanitizer keeps the slices: with plain malloc it
    # would report what Aravis' formula parser leaves behind on a failed evaluation.
    if [ "$sanitizer" = thread ]; then export G_SLICE=always-malloc; else unset G_SLICE; fi
    echo "== $sanitizer: $build"
    cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DPC_SANITIZE="$sanitizer" >/dev/null
    cmake --build "$build" -j2
    # The conformance kit and the package test build uninstrumented programs against the project: not here.
    ctest --test-dir "$build" -L "$label" -LE "conformance|package|kits" --output-on-failure -j2
done
