#!/usr/bin/env bash
# Builds one preset, all of it or the named targets. Silent unless something fails.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
preset=$1
shift
targets=()
for target in "$@"; do targets+=(--target "$target"); done

log=$(mktemp)
trap 'rm -f "$log"' EXIT
cd "$root"
if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "${targets[@]}"; } >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
