#!/usr/bin/env bash
# Prints what regsvr32 writes for a DLL, under Wine, as the package is to write it: the DLL is {dll},
# its folder {folder}. The prefix must run (scripts/wine-prefix.sh).
#
#   packaging/msi/registration.sh DLL > packaging/msi/registration.txt
set -euo pipefail
# shellcheck source=packaging/msi/lib.sh
. "$(dirname "$0")/lib.sh"
dll=$(winepath -w "$1" 2>/dev/null)
wine regsvr32 /u /s "$dll" || true
before=$(registry_lines)
wine regsvr32 /s "$dll"
after=$(registry_lines)
wine regsvr32 /u /s "$dll"
# A key without values counts only where nothing stands below it.
LC_ALL=C comm -13 <(printf '%s\n' "$before") <(printf '%s\n' "$after") |
  DLL=$dll FOLDER=${dll%\\*} perl -e '
    my @lines = <>;
    for my $line (@lines) {
      my ($key) = $line =~ /^([^|]*)/;
      next if $line =~ /\|\|$/ && 1 < grep { /^\Q$key\E[|\\]/ } @lines;
      $line =~ s/\|\Q$ENV{DLL}\E$/|{dll}/i;
      $line =~ s/\|\Q$ENV{FOLDER}\E\\?$/|{folder}/i;
      print $line;
    }'
