#!/usr/bin/env bash
# Reads the package's tables, for what wixl would lose without a word and Wine would not miss.
#
#   packaging/msi/tests/tables_test.sh PACKAGE FILE...
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=packaging/msi/lib.sh
. "$here/../lib.sh"
package=$1
shift
failed=0

# The rows of a table, fields in order, without its three head lines.
rows() { msiinfo export "$package" "$1" 2>/dev/null | tr -d '\r' | tail -n +4; }
# expect WHAT EXPECTED FOUND
expect() {
  [ "$2" != "$3" ] || return 0
  failed=1
  printf '%s\n  expected: %s\n  found:    %s\n' "$1" "$2" "$3"
}
column() { awk -F'\t' -v n="$1" '{print $n}'; }

version=$(file_version "$1")
expect "ProductVersion" "${version%.*}" "$(rows Property | awk -F'\t' '$1 == "ProductVersion" {print $2}')"
for file in "$@"; do
  expect "version, language and hashes of $(basename "$file")" "$(file_version "$file") 1033 0" \
    "$(rows File | grep -E "(\||	)$(basename "$file")	" | while IFS=$'\t' read -r id _ _ _ version language _; do
      printf '%s %s %s' "$version" "$language" "$(rows MsiFileHash | grep -c "^$id	")"
    done)"
done
expect "files" "$#" "$(rows File | wc -l)"

expect "custom actions" "" "$(rows CustomAction)"
expect "searches without a row" "" \
  "$(LC_ALL=C comm -3 <(rows AppSearch | column 2 | LC_ALL=C sort) <(rows RegLocator | column 1 | LC_ALL=C sort))"
expect "searches" 2 "$(rows AppSearch | wc -l)"
expect "conditions" "NOT WIX_DOWNGRADE_DETECTED;OUTLOOK OR Installed;" \
  "$(rows LaunchCondition | column 1 | tr '\n' ';')"
expect "roots" "1 2 " "$(rows Registry | column 2 | sort -u | tr '\n' ' ')"
expect "keys that end in a backslash" "" "$(rows Registry | column 3 | grep '\\$')"
expect "registry rows" "$(($(wc -l <"$here/../registration.txt") + 3))" "$(rows Registry | wc -l)"
expect "components without a feature" "" \
  "$(LC_ALL=C comm -3 <(rows Component | column 1 | LC_ALL=C sort) <(rows FeatureComponents | column 2 | LC_ALL=C sort))"
expect "Outlook's entry in the user's part and in the machine's, the choice to load kept (128)" \
  "MachineEntry 4 2 FriendlyName;MachineLoad 132 2 LoadBehavior;UserEntry 4 1 FriendlyName;UserLoad 132 1 LoadBehavior;" \
  "$(rows Component | awk -F'\t' '$4 ~ /^(4|132)$/ {print $1, $4, $6}' | LC_ALL=C sort |
      while read -r component attributes key; do
        printf '%s %s %s;' "$component" "$attributes" \
          "$(rows Registry | awk -F'\t' -v k="$key" '$1 == k {print $2, $4}')"
      done)"
expect "features and their levels" "Main 1;ForUser 1;ForAll 100;" \
  "$(rows Feature | awk -F'\t' '{printf "%s %s;", $1, $6}')"
sequence() { rows InstallExecuteSequence | awk -F'\t' -v a="$1" '$1 == a {print $3}'; }
if [ "$(sequence RemoveExistingProducts)" -le "$(sequence InstallFinalize)" ]; then
  failed=1
  echo "The old version would be removed before the new one stands."
fi

# The same files give the same bytes.
again=$(mktemp -d)
trap 'rm -rf "$again"' EXIT
for one in 1 2; do "$here/../msi.sh" "$again/$one.msi" "$@" || failed=1; done
cmp "$again/1.msi" "$again/2.msi" || failed=1
exit "$failed"
