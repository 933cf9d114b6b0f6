#!/usr/bin/env bash
# Builds the fuzzers and lets each run its seeds and then so many inputs of its own (20,000 without
# an argument), several at a time. What makes one fail is left in build/fuzz/found; it belongs among
# the seeds.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
runs=${1:-20000}
cd "$root"
scripts/build.sh sanitize velnor-fuzzers

# Runs one fuzzer, and prints what came of it.
fuzz() {
  local seeds=$1 target corpus log status=0
  target=$(basename "$seeds")
  corpus=$(mktemp -d)
  log=$(mktemp)
  # The first directory is the one that new inputs go to.
  if "build/sanitize/fuzz/velnor-fuzz-$target" -runs="$runs" -seed=1 -max_len=4096 -timeout=10 \
    -rss_limit_mb=1024 -artifact_prefix="build/fuzz/found/$target-" "$corpus" "$seeds" \
    >"$log" 2>&1; then
    echo "$target: $(find "$seeds" -type f | wc -l) seeds and $runs runs"
  else
    status=1
    tail -40 "$log"
    echo "FAILED: $target"
  fi
  rm -rf "$corpus" "$log"
  return "$status"
}
export -f fuzz
export runs

mkdir -p build/fuzz/found
printf '%s\0' fuzz/seeds/*/ | xargs -0 -n 1 -P "$(nproc)" bash -c 'fuzz "$1"' fuzz
