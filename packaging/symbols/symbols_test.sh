#!/usr/bin/env bash
# Crashes the delivered DLL under Wine and finds the line by the symbols that were kept; holds the
# signature in the DLL against the .pdb's.
#
#   packaging/symbols/symbols_test.sh CRASH_PROGRAM DLL DEBUG_FILE PDB
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
address=$(wine "$1" "$(winepath -w "$2" 2>/dev/null)" </dev/null 2>/dev/null | tr -d '\r')
lines=$("$here/resolve.sh" "$3" "$address")
# The statement that writes through the pointer that was given.
line=$(grep -n '\*result = nullptr;' "$here/../../windows/server/exports.cpp" | cut -d: -f1)
failed=0
if ! grep -qx "windows/server/exports.cpp:$line" <<<"$lines"; then
  failed=1
  echo "The crash at $address in line $line was found in: $lines"
fi
# After "RSDS" the DLL names the identifier that the .pdb carries in its stream of information.
signature=$(perl -0777 -ne 'print unpack("H*", $1) if /RSDS(.{16})/s' "$2")
if ! perl -0777 -ne 'exit(index(unpack("H*", $_), "'"${signature:-none}"'") < 0)' "$4"; then
  failed=1
  echo "The .pdb is of another DLL than $signature."
fi
exit "$failed"
