#!/usr/bin/env bash
# Builds the fuzzers and lets each run its seeds and then so many inputs of its own (20,000 without
# an argument). What makes one fail is left in build/fuzz/found; it belongs among the seeds.
# Without an argument it takes two minutes on two cores, most of them for the build.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
runs=${1:-20000}
cd "$root"
scripts/build.sh fuzz velnor-fuzzers

found=build/fuzz/found
mkdir -p "$found"
failed=0
for seeds in fuzz/seeds/*/; do
  target=$(basename "$seeds")
  corpus=$(mktemp -d)
  log=$(mktemp)
  # The first directory is the one that new inputs go to.
  if "build/fuzz/fuzz/velnor-fuzz-$target" -runs="$runs" -seed=1 -max_len=4096 -timeout=10 \
    -rss_limit_mb=1024 -artifact_prefix="$found/$target-" "$corpus" "$seeds" >"$log" 2>&1; then
    echo "$target: $(find "$seeds" -type f | wc -l) seeds and $runs runs"
  else
    failed=1
    tail -40 "$log"
    echo "FAILED: $target"
  fi
  rm -rf "$corpus" "$log"
done
exit "$failed"
