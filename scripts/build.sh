#!/usr/bin/env bash
# Builds one preset, all of it or the named targets. A person at a terminal sees the progress;
# otherwise it is silent unless something fails.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd -P)
preset=$1
shift
targets=()
for target in "$@"; do targets+=(--target "$target"); done

log=$(mktemp)
trap 'rm -f "$log"' EXIT
cd "$root"

# A build tree knows where it was made: that of a moved or copied checkout is made anew.
cache=build/$preset/CMakeCache.txt
if [ -e "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
  rm -rf "build/$preset"
fi

quietly() {
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
  fi
}

quietly cmake --preset "$preset"
if [ -t 2 ]; then
  cmake --build --preset "$preset" "${targets[@]}" >&2
else
  quietly cmake --build --preset "$preset" "${targets[@]}"
fi
