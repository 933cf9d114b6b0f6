#!/usr/bin/env bash
# Plays scenarios twice, on the simulated machine and against the DLL over COM under Wine, and
# compares the transcripts line by line. What is marked native only is left out, and so are times.
#
#   scripts/windows-proof.sh [SCENARIO...]     by default all of samples/
#
# BUILD_NATIVE and BUILD_WINDOWS name the two build folders, PROOF_FOLDER the one for prefix and
# transcripts, PROOF_JOBS how many scenarios are played at once, each on a machine of its own,
# PROOF_CLIENT the program beside outlook-standin.exe that is the telephony client.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck disable=SC1091
. "$root/scripts/windows-machine.sh"
native=${BUILD_NATIVE:-$root/build/release}/demo/velnor-sim
folder=${PROOF_FOLDER:-$root/build/proof}
jobs=${PROOF_JOBS:-6}
client=${PROOF_CLIENT:-velnor-standin.exe}
mailbox=$root/samples/mailbox.json

cxol_built || exit 2
if [ ! -e "$native" ]; then
  echo "missing: $native" >&2
  exit 2
fi

# The transcript without what may differ: each "native only" with the command that it belongs to and
# what that prints, times, and the count of the expectations.
comparable() {
  awk '
    /^> native only:/ { skipping = 1; commands = 0; next }
    skipping && /^> / { if (++commands == 2) skipping = 0 }
    skipping && (/^$/ || /^#/) { skipping = 0 }
    skipping { next }
    /^[0-9]+ expectations? held/ { exit }
    { gsub(/[0-9][0-9]:[0-9][0-9]:[0-9][0-9]\.[0-9][0-9][0-9]/, "TIME"); print }
  ' "$1"
}

# Names the first line in which two texts differ; fails when there is one.
same() {
  awk -v name="$3" '
    function tell(line, native, windows) {
      print name ": line " line " differs"
      print "  native:  " native
      print "  windows: " windows
      differs = 1
      exit
    }
    NR == FNR { expected[FNR] = $0; count = FNR; next }
    FNR > count { tell(FNR, "(end)", $0) }
    $0 != expected[FNR] { tell(FNR, expected[FNR], $0) }
    { seen = FNR }
    END {
      if (!differs && seen < count) tell(seen + 1, expected[seen + 1], "(end)")
      exit differs
    }
  ' "$1" "$2"
}

# Plays one scenario on the simulated machine; prints how many seconds it takes by the clock there,
# but for leaps, and its path.
play_native() {
  local name
  name=$(basename "$1" .scn)
  local transcripts=$folder/transcripts/$name
  "$native" --mailbox "$mailbox" --trace --play "$1" >"$transcripts.native" 2>&1 ||
    touch "$transcripts.fails"
  comparable "$transcripts.native" >"$transcripts.native.compared"
  awk -v path="$1" '
    match($0, /~ [0-9][0-9]:[0-9][0-9]:[0-9][0-9]\./) {
      split(substr($0, RSTART + 2, 8), part, ":")
      now = part[1] * 3600 + part[2] * 60 + part[3]
      if (now > before && now - before < 100) seconds += now - before
      before = now
    }
    END { print seconds + 0, path }
  ' "$transcripts.native"
}

# Plays one scenario on machine number $1.
play() {
  local machine=$folder/machine-$1 scenario=$2 name played=0
  name=$(basename "$scenario" .scn)
  local transcripts=$folder/transcripts/$name
  if [ -e "$transcripts.fails" ]; then
    echo "$name: fails on the simulated machine"
    return 1
  fi
  (cd "$machine/bin" && exec timeout 300 wine ./outlook-standin.exe --mailbox "$mailbox" --trace \
    --client "$client" --libraries libraries --play "$scenario") \
    >"$transcripts.windows" 2>&1 </dev/null || played=$?
  comparable "$transcripts.windows" >"$transcripts.windows.compared"
  same "$transcripts.native.compared" "$transcripts.windows.compared" "$name" || return 1
  if [ "$played" -ne 0 ]; then
    echo "$name: exit status $played"
    grep -E '^(\?\?|!!)' "$transcripts.windows" | head -3
    return 1
  fi
  touch "$transcripts.agrees"
  echo "$name: agrees, $(wc -l <"$transcripts.windows.compared") lines"
}

# Over COM the clock is the real one: on a busy computer a moment may come late. Such a scenario gets
# a second chance, and that is said.
prove() {
  local said
  if said=$(play "$@"); then echo "$said"; return; fi
  printf '%s\n%s\n' "$said" "  played once more:"
  play "$@"
}

# Sets up a machine and plays scenarios that no other has taken, until there is none left.
run_machine() {
  local number=$1 scenario
  shift
  rm -rf "$folder/machine-$number"
  mkdir -p "$folder/machine-$number"
  # Wine writes its registry files anew and replaces them: the first prefix stays as it is.
  cp -al "$folder/prefix" "$folder/machine-$number/prefix"
  cxol_machine "$folder/machine-$number" || return
  for scenario in "$@"; do
    if mkdir "$folder/transcripts/$(basename "$scenario" .scn).taken" 2>/dev/null; then
      prove "$number" "$scenario"
    fi
  done
}

scenarios=("$@")
[ ${#scenarios[@]} -gt 0 ] || scenarios=("$root"/samples/*.scn)
for ((i = 0; i < ${#scenarios[@]}; ++i)); do scenarios[i]=$(realpath "${scenarios[i]}"); done
[ "$jobs" -le ${#scenarios[@]} ] || jobs=${#scenarios[@]}

rm -rf "$folder/transcripts"
mkdir -p "$folder/transcripts"
# The longest first: nobody is to wait for it in the end.
mapfile -t scenarios < <(for scenario in "${scenarios[@]}"; do play_native "$scenario"; done |
  sort -rn | cut -d ' ' -f 2-)
"$root/scripts/wine-prefix.sh" "$folder/prefix" || { echo "no Wine prefix can be made" >&2; exit 1; }
for ((number = 0; number < jobs; ++number)); do
  run_machine "$number" "${scenarios[@]}" &
done
wait
agreed=$(find "$folder/transcripts" -name '*.agrees' | wc -l)
echo "proof over COM: $agreed of ${#scenarios[@]} scenarios agree"
[ "$agreed" -eq ${#scenarios[@]} ]
