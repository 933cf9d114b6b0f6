#!/usr/bin/env bash
# Prints what the last `ctest --preset windows` has measured: what the add-in adds to the start of
# Outlook, and what it holds after hundreds of loads, inspectors and calls. BUILD_WINDOWS names the
# build folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
tr -d '\r' <"${BUILD_WINDOWS:-$root/build/windows}/Testing/Temporary/LastTest.log" | awk '
  /^[0-9]+\/[0-9]+ Test: / { measured = /Test: (Endurance|StartUpCost)\./; output = 0; next }
  /^Test (Passed|Failed)\.|^<end of output>/ { measured = 0 }
  measured && output && !/^(\[|Note:|Running|$)/ { print }
  /^-----/ { output = 1 }
'
