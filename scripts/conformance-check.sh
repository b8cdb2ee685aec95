#!/usr/bin/env bash
# Runs one of the GenApi conformance kits beside the checkout and fails when the engine agrees less than
# it already did. The node-by-node kit (the default) also fails when any node both sides have lists other
# properties than GenApi does. Exits 77 (skipped) when the kit is not there.
# The node-by-node kit runs every description (--all) and, given a floors file, fails when one description
# falls below its own floor.
#   scripts/conformance-check.sh BUILD_DIR MINIMUM_PERCENT [nodes|dynamic|cache|chunks] [FLOORS_FILE]
set -uo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=$1
minimum=$2
kind=${3:-nodes}
floors=${4:-}
options=()
case "$kind" in
    nodes) kit="$here/../shared/conformance/run.sh" prefix="conformance" options=(--all) ;;
    dynamic) kit="$here/../shared/conformance/dynamic/run.sh" prefix="dynamic conformance" ;;
    cache) kit="$here/../shared/conformance/cache/run.sh" prefix="cache conformance" ;;
    chunks) kit="$here/../shared/conformance/chunks/run.sh" prefix="chunk and event conformance" ;;
    *) echo "unknown kit $kind"; exit 2 ;;
esac
if [ ! -f "$kit" ]; then
    echo "conformance kit not found beside the checkout: skipped"
    exit 77
fi
output=$(cd "$here" && bash "$kit" "$build" "${options[@]}" 2>&1)
status=$?
echo "$output" | head -n 12
line=$(echo "$output" | grep -E "^$prefix: [0-9.]+% " | tail -n 1)
echo "$line"
if [ $status -ne 0 ] || [ -z "$line" ]; then
    echo "the conformance kit did not finish (exit $status)"
    echo "$output" | tail -n 20
    exit 1
fi
figure=$(echo "$line" | sed -E "s/^$prefix: ([0-9.]+)%.*/\1/")
if awk -v f="$figure" -v m="$minimum" 'BEGIN { exit !(f + 0 < m + 0) }'; then
    echo "$prefix fell to $figure% (at least $minimum% expected)"
    exit 1
fi
echo "$prefix $figure% (at least $minimum%)"
[ "$kind" = nodes ] || exit 0
# Rows of the comparison: | description | ... | features agree | percent | ...
if [ -n "$floors" ]; then
    fallen=$(grep -E '^\| [A-Za-z0-9_.-]+ \|' "$build/conformance/COMPARE.md" | awk -F'|' -v floors="$floors" '
        BEGIN { while ((getline line < floors) > 0) if (line !~ /^#/) { split(line, f, " "); floor[f[1]] = f[2] } }
        { name = $2; gsub(/ /, "", name); pct = $9; gsub(/ /, "", pct)
          if ((name in floor) && (pct == "n/a" || pct + 0 < floor[name] + 0)) print name ": " pct "% (floor " floor[name] "%)" }')
    if [ -n "$fallen" ]; then
        echo "descriptions below their floors:"
        echo "$fallen"
        exit 1
    fi
    echo "every description at or above its floor ($(grep -cv '^#' "$floors") floors)"
fi
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
