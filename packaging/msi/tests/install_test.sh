#!/usr/bin/env bash
# Installs, breaks, repairs, upgrades and removes the package under Wine, in the running prefix, and
# holds the registry against regsvr32's and against the one before.
#
#   packaging/msi/tests/install_test.sh PACKAGE DLL FILE...
#
# FILE...: what else the package holds.
#
# Wine cuts msiexec's exit codes to eight bits: 67 is 1603, 194 is 3010.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=packaging/msi/lib.sh
. "$here/../lib.sh"
work=$(mktemp -d)
drive=$WINEPREFIX/drive_c
folder="$drive/Program Files/Velnor Outlook AddIn"
outlook='HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\OUTLOOK.EXE'
entry='Software\Microsoft\Office\Outlook\Addins\VelnorOutlookCOMAddIn.Connect'
failed=0

windows_path() { winepath -w "$1" 2>/dev/null; }
run() { wine "$@" </dev/null >/dev/null 2>&1; }
set_value() { run reg add "$1" /v "$2" /d "$3" /f "${@:4}"; }

# expect WHAT EXPECTED FOUND
expect() {
  if [ "$2" = "$3" ]; then return; fi
  failed=1
  echo "$1:"
  diff <(printf '%s\n' "$2") <(printf '%s\n' "$3") | head -20
}

# msi WHAT CODE ARGUMENT...: runs the installer, silently.
msi() {
  local code=0
  run msiexec "${@:3}" /qn /norestart || code=$?
  expect "$1: exit code" "$2" "$code"
}

# What has come since the test began, but for the installer's own book-keeping; sets `added`. A folder
# ends in a backslash in a package's rows, and not in regsvr32's.
look() {
  registry_lines >"$work/now"
  added=$(registry_news "$work/before" "$work/now" | sed 's/\\$//' |
    grep -vE '\\(CurrentVersion|Classes)\\(Installer|Uninstall)\\|App Paths\\OUTLOOK')
}

# expected ROOT FOLDER: what the package is to write, for a DLL in a folder.
expected() {
  sed "s/^HKEY_CURRENT_USER/$1/" "$here/../registration.txt" | FOLDER=$2 perl -pe '
    s/\{dll\}/$ENV{FOLDER}\\cxolcom.dll/; s/\{folder\}/$ENV{FOLDER}/;' | LC_ALL=C sort
}
installed_folder='C:\Program Files\Velnor Outlook AddIn'

# The version of the installed DLL.
installed() { file_version "$folder/cxolcom.dll" 2>/dev/null; }

finish() {
  rm -f "$work/hold"
  run msiexec /x "$current" /qn
  run msiexec /x "$older" /qn
  run reg delete "$outlook" /f
  rm -rf "$work"
}

# The same DLL, but older.
mkdir "$work/older"
perl -0777 -pe 's/(\xBD\x04\xEF\xFE.{4}).{8}/$1 . pack("v4", 9, 0, 0, 1)/se' "$2" >"$work/older/cxolcom.dll"
"$here/../msi.sh" "$work/older.msi" "$work/older/cxolcom.dll" "${@:3}" || exit 1
current=$(windows_path "$1")
older=$(windows_path "$work/older.msi")
version=$(file_version "$2")
trap finish EXIT
run reg delete "$outlook" /f
# Where Outlook is, its list of add-ins is; Wine's installer leaves it there when it is empty.
run reg add 'HKLM\Software\Microsoft\Office\Outlook\Addins' /f
# Wine's script host enters itself at its first use.
: >"$work/empty.vbs"
run wscript "$(windows_path "$work/empty.vbs")"
dll=$(windows_path "$2")
run regsvr32 /u /s "$dll"
registry_lines >"$work/before"

run regsvr32 /s "$dll"
look
run regsvr32 /u /s "$dll"
expect "what regsvr32 writes is not what the package does (see registration.sh)" \
  "$(expected HKEY_CURRENT_USER "${dll%\\*}")" "$added"

msi "without Outlook" 67 /i "$current"
expect "without Outlook, installed" "" "$(installed)"
set_value "$outlook" Path 'C:\Office\'

msi "for the user" 0 /i "$current"
look
expect "for the user" "$(expected HKEY_CURRENT_USER "$installed_folder")" "$added"
expect "installed files" "$(for file in "${@:2}"; do basename "$file"; done | LC_ALL=C sort)" \
  "$(LC_ALL=C ls "$folder")"
rm "$folder/cxolcom.dll"
run reg delete 'HKLM\Software\Classes\VelnorOutlookCOMAddIn.Connect' /f
run reg delete "HKCU\\$entry" /v FriendlyName /f
msi "repair" 0 /i "$current" REINSTALL=ALL REINSTALLMODE=amus
look
expect "repaired" "$(expected HKEY_CURRENT_USER "$installed_folder")" "$added"
expect "repaired file" "$version" "$(installed)"
msi "downgrade" 67 /i "$older"
expect "file after a refused downgrade" "$version" "$(installed)"
msi "removal" 0 /x "$current"

msi "older version" 0 /i "$older"
expect "older file" 0.9.1.0 "$(installed)"
msi "upgrade" 0 /i "$current"
look
expect "upgraded" "$(expected HKEY_CURRENT_USER "$installed_folder")" "$added"
expect "upgraded file" "$version" "$(installed)"
msi "removal of the upgraded" 0 /x "$current"

msi "older version for all" 0 /i "$older" ADDLOCAL=Main,ForAll
touch "$work/hold"
wine cscript //nologo "$(windows_path "$here/hold.js")" "$(windows_path "$work/hold")" \
  </dev/null >"$work/held" 2>/dev/null &
holder=$!
for ((i = 0; i < 200; i++)); do
  grep -q held "$work/held" 2>/dev/null && break
  sleep 0.1
done
msi "upgrade while the DLL is in use" 194 /i "$current" ADDLOCAL=Main,ForAll
rm "$work/hold"
wait $holder
expect "the held object" "held let go" "$(tr -d "\r" <"$work/held" | xargs)"
# The restart that was asked for.
run wineboot
look
expect "upgraded for all" "$(expected HKEY_LOCAL_MACHINE "$installed_folder")" "$added"
expect "file after the restart" "$version" "$(installed)"
msi "last removal" 0 /x "$current"

run reg delete "$outlook" /f
registry_lines >"$work/now"
# The installer keeps empty keys of its own from its first package on.
expect "registry as before" "" \
  "$(diff "$work/before" "$work/now" | grep -E '^[<>]' | grep -vE '\\Installer(\\[^|]*)?\|\|$')"
expect "files as before" "" "$(find "$folder" 2>/dev/null)"
exit "$failed"
