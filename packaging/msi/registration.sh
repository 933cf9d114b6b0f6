#!/usr/bin/env bash
# Prints what regsvr32 writes for a DLL, under Wine, as the package is to write it: the DLL is {dll},
# its folder {folder}. The prefix must run (scripts/wine-prefix.sh).
#
#   packaging/msi/registration.sh DLL > packaging/msi/registration.txt
set -euo pipefail
# shellcheck source=packaging/msi/lib.sh
. "$(dirname "$0")/lib.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
dll=$(winepath -w "$1" 2>/dev/null)
wine regsvr32 /u /s "$dll" || true
registry_lines >"$work/before"
wine regsvr32 /s "$dll"
registry_lines >"$work/after"
wine regsvr32 /u /s "$dll"
registry_news "$work/before" "$work/after" | DLL=$dll FOLDER=${dll%\\*} perl -pe '
  s/\|\Q$ENV{DLL}\E$/|{dll}/i; s/\|\Q$ENV{FOLDER}\E\\?$/|{folder}/i;'
