#!/usr/bin/env bash
# Names the source lines of an address in cxolcom.dll, the inlined callers below it.
#
#   packaging/symbols/resolve.sh DEBUG_FILE ADDRESS
#
# ADDRESS: hexadecimal, from the beginning of the DLL ("Offset" in the system's reports of crashes).
set -euo pipefail
prefix=i686-w64-mingw32-
base=$("${prefix}objdump" -p "$1" | awk '/^ImageBase/ {print $2}')
# Paths begin where the compiler was started, in the build folder.
"${prefix}addr2line" -i -f -C -e "$1" "$(printf '0x%x' $((0x$base + 0x${2#0x})))" |
  sed -E 's#^build/(\.\./\.\./)?##'
