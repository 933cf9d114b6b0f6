#!/usr/bin/env bash
# Holds the import table of a DLL or a program against the functions that Windows 2000 has, its size
# and a DLL's exports against what is promised.
#   check_imports.sh DLL LIST OBJDUMP
# LIST: "library function" a line, # begins a comment.
set -euo pipefail
dll=$1 list=$2 objdump=$3
limit=700000
failed=0

known=$(sed 's/#.*//' "$list" | awk 'NF == 2 {print tolower($1), $2}' | sort -u)
imported=$("$objdump" -p "$dll" | awk '
  /DLL Name:/ {library = tolower($3)}
  library && NF == 3 && $1 ~ /^[0-9a-f]+$/ && $2 ~ /^[0-9]+$/ {print library, $3}' |
  sort -u)
count=$(printf '%s\n' "$imported" | grep -c . || true)
if [ "$count" -lt 50 ]; then
  echo "Only $count imports were found: the table was not understood."
  failed=1
fi
unknown=$(comm -13 <(printf '%s\n' "$known") <(printf '%s\n' "$imported"))
if [ -n "$unknown" ]; then
  echo "Not known to be in Windows 2000:"
  printf '%s\n' "$unknown"
  failed=1
fi

size=$(stat -c %s "$dll")
if [ "$size" -gt "$limit" ]; then
  echo "$size bytes are more than $limit."
  failed=1
fi

version=$("$objdump" -p "$dll" | awk '/MajorSubsystemVersion/ {print $2}')
if [ "$version" -gt 5 ]; then
  echo "Made for Windows $version."
  failed=1
fi

exports=$("$objdump" -p "$dll" | sed -n '/Ordinal\/Name Pointer/,/^$/p' | awk 'NF > 2 {print $NF}' |
  { grep '^Dll' || true; } | sort | tr '\n' ' ')
if [[ $dll == *.dll ]] && [ "$exports" != "DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer " ]; then
  echo "Exports: $exports"
  failed=1
fi

[ "$failed" -eq 0 ] && echo "$count imports, $size bytes"
exit "$failed"
