#!/usr/bin/env bash
# Opens the stand-in Outlook with the add-in on this display, under Wine, in a prefix of its own that
# is kept. All arguments go to the stand-in: --outlook 12.0 for the ribbon, --mailbox FILE, see --help.
#
#   scripts/windows-outlook.sh [ARGUMENT...]
#
# BUILD_WINDOWS names the build folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck disable=SC1091
. "$root/scripts/windows-machine.sh"
cxol_built

mailbox=(--mailbox "$root/samples/mailbox.json")
for argument in "$@"; do
  case $argument in --mailbox | --mailbox=*) mailbox=() ;; esac
done
export CXOL_WINE_GRAPHICS=x11
cxol_machine "$root/build/outlook"
wine "$root/build/outlook/bin/outlook-standin.exe" "${mailbox[@]}" \
  --client "$root/build/outlook/bin/velnor-standin.exe" \
  --libraries "$root/build/outlook/bin/libraries" "$@" </dev/null
