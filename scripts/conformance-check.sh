#!/usr/bin/env bash
# Runs the GenApi conformance kit beside the checkout and fails when the engine agrees on fewer feature
# nodes than it already did, or when any node both sides have lists other properties than GenApi does.
# Exits 77 (skipped) when the kit is not there.
#   scripts/conformance-check.sh BUILD_DIR MINIMUM_PERCENT
set -uo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=$1
minimum=$2
kit="$here/../shared/conformance/run.sh"
if [ ! -x "$kit" ] && [ ! -f "$kit" ]; then
    echo "conformance kit not found beside the checkout: skipped"
    exit 77
fi
output=$(cd "$here" && bash "$kit" "$build" 2>&1)
status=$?
echo "$output" | head -n 12
line=$(echo "$output" | grep -E '^conformance: [0-9.]+% ' | tail -n 1)
echo "$line"
if [ $status -ne 0 ] || [ -z "$line" ]; then
    echo "the conformance kit did not finish (exit $status)"
    echo "$output" | tail -n 20
    exit 1
fi
figure=$(echo "$line" | sed -E 's/^conformance: ([0-9.]+)%.*/\1/')
if awk -v f="$figure" -v m="$minimum" 'BEGIN { exit !(f + 0 < m + 0) }'; then
    echo "conformance fell to $figure% (at least $minimum% expected)"
    exit 1
fi
echo "conformance $figure% (at least $minimum%)"
# Rows of the properties comparison end in "| agreeing/compared |".
props="$build/conformance/COMPARE-props.md"
if [ ! -f "$props" ]; then
    echo "the conformance kit wrote no properties comparison"
    exit 1
fi
disagreeing=$(grep -E '[0-9]+/[0-9]+ \|$' "$props" | awk -F'|' '{ split($(NF-1), n, "/"); if (n[1] + 0 != n[2] + 0) print $2 ":" $(NF-1) }')
if [ -n "$disagreeing" ]; then
    echo "properties differ from GenApi's on some nodes:"
    echo "$disagreeing"
    exit 1
fi
echo "properties agree on every node of $(grep -cE '[0-9]+/[0-9]+ \|$' "$props") descriptions"
