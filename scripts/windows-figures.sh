#!/usr/bin/env bash
# Prints what the add-in costs over COM under Wine: what it adds to the start of Outlook, and what it
# holds after hundreds of loads, inspectors and calls. BUILD_WINDOWS names the build folder.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_WINDOWS:-$root/build/windows}
# shellcheck disable=SC1091
. "$root/scripts/wine-prefix.sh" "$root/build/wine" || exit 1
trap 'wineserver -k' EXIT
log=$(mktemp)
timeout 300 wine "$build/bin/standin_proof_tests.exe" \
  --gtest_filter='StartUpCost.*:Endurance.*' </dev/null >"$log" 2>/dev/null
status=$?
tr -d '\r' <"$log" | grep -Ev '^(\[|Note:|$)'
rm -f "$log"
exit "$status"
