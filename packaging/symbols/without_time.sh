#!/usr/bin/env bash
# Takes the time of its making out of a .pdb; the linker has no option for it. Debuggers go by the
# identifier that follows. The stream of information begins with its version, 20000404, the time and
# the age, 1.
#
#   packaging/symbols/without_time.sh PDB
set -euo pipefail
perl -0777 -i -pe 's/(\x94\x2E\x31\x01).{4}(\x01\0\0\0)/$1\0\0\0\0$2/s
  or die "No stream of information was found.\n"' "$1"
