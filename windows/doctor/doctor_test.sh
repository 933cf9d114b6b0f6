#!/usr/bin/env bash
# Breaks an installation in every way, under Wine in the running prefix, and holds the report
# against what was broken. An installation on which all is well gives no complaint.
#
#   windows/doctor/doctor_test.sh DOCTOR DLL SCRIPTED
#
# SCRIPTED is a program that does what a script beside it says: here it plays clients and Outlook.
set -uo pipefail
# shellcheck disable=SC1091
. "$(dirname "$0")/../../scripts/windows-machine.sh"
dll_file=$(realpath "$2")
work=$(mktemp -d)
dll=$(winepath -w "$dll_file" 2>/dev/null)
report_file=$(winepath -w "$work/report" 2>/dev/null)
drive=$WINEPREFIX/drive_c/doctor
failed=0

entry='HKCU\Software\Microsoft\Office\Outlook\Addins\VelnorOutlookCOMAddIn.Connect'
entry_id='CLSID\{873C647F-502B-4863-9F93-A83F43C0E12B}\InprocServer32'
class="HKCR\\$entry_id"
client_id='{4B7D2A91-3C5E-11D4-9F21-00A0C9E4B7D3}'
client="HKCR\\CLSID\\$client_id\\LocalServer32"
outlook='HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\OUTLOOK.EXE'
settings='HKCU\Software\K9T\CXComAddIn'
all_settings=('HKCU\Software\K9T' 'HKLM\Software\K9T')
disabled() { printf '%s' "HKCU\\Software\\Microsoft\\Office\\$1\\Outlook\\Resiliency\\DisabledItems"; }
folder_of() {
  local path
  path=$(wine reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders' \
    /v "$1" 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_SZ *//p')
  winepath -u "$path" 2>/dev/null
}
trace=$(folder_of 'Local AppData')/VelnorLog/Log_cxolcom.txt
logger="$WINEPREFIX/drive_c/Program Files/Common Files/K9T/K9tLogVB.dll"

run() { wine "$@" </dev/null >/dev/null 2>&1; }
set_value() { run reg add "$1" /v "$2" /d "$3" /f "${@:4}"; }
set_default() { run reg add "$1" /ve /d "$2" /f; }
unset_key() { run reg delete "$1" /f; }

# A program with a version.
program() { cxol_program "$1" "$2" "$doctor"; }

healthy() {
  run regsvr32 /s "$dll"
  unset_key "${entry/HKCU/HKLM}"
  unset_key "HKCU\\Software\\Classes\\$entry_id"
  program "$drive/OUTLOOK.EXE" 11
  program "$drive/client.exe" 3
  cp "$dll_file" "$drive/cxmapihlp.dll"
  rm -f "$logger"
  set_default "$outlook" 'C:\doctor\OUTLOOK.EXE'
  set_default "$client" '"C:\doctor\client.exe" -Embedding'
  for key in "${all_settings[@]}"; do unset_key "$key"; done
  for version in 10.0 11.0 12.0; do unset_key "$(disabled $version)"; done
  set_value "$entry" LoadBehavior 3 /t REG_DWORD
  # The language of the report: that of all the maker's products.
  set_value 'HKCU\Software\K9T\Localization\LangID' LangID 1033 /t REG_DWORD
  rm -rf "$(dirname "$trace")"
}

fail() {
  failed=1
  printf '%s\n' "$*"
}

# report: the complaints, a line each; sets `status`.
report() {
  status=0
  run "$doctor" /report "$report_file" || status=$?
  complaints=$(tr -d '\r' <"$work/report" | grep -E '^(odd|failed)')
}

# expect WHAT STATUS PATTERN: one complaint, or none for an empty pattern.
expect() {
  report
  if [ "$status" = "$2" ] && { [ -z "$3" ] && [ -z "$complaints" ] ||
    { [ -n "$3" ] && [ "$(wc -l <<<"$complaints")" = 1 ] && grep -qF "$3" <<<"$complaints"; }; }; then
    return
  fi
  fail "$1: status $status, expected $2 \"$3\", found:"$'\n'"$complaints"
}

# complains WHAT PATTERN: among other complaints.
complains() {
  report
  grep -qF "$2" <<<"$complaints" || fail "$1: expected \"$2\", found:"$'\n'"$complaints"
}

# tells PATTERN...: in the last report, be it well or not.
tells() {
  local pattern
  for pattern; do grep -qF "$pattern" "$work/report" || fail "not told: $pattern"; done
}

# playing SCRIPT COMMAND...: the command while a program does what the script says.
playing() {
  local process
  mkdir -p "$drive/played"
  cp "$scripted" "$drive/played/played.exe"
  printf '%s\n' "$1" >"$drive/played/played.js"
  wine "$drive/played/played.exe" </dev/null >/dev/null 2>&1 &
  process=$!
  sleep 1
  "${@:2}"
  kill "$process"
  wait "$process" 2>/dev/null
}

finish() {
  run regsvr32 /u /s "$dll"
  for key in "$outlook" "HKCR\\CLSID\\$client_id" 'HKCR\velnor.application' \
    "HKCU\\Software\\Classes\\$entry_id" "${entry/HKCU/HKLM}" "${all_settings[@]}" \
    "$(disabled 10.0)" "$(disabled 11.0)" "$(disabled 12.0)"; do
    unset_key "$key"
  done
  rm -rf "$work" "$drive" "$(dirname "$trace")" "$logger"
}
trap finish EXIT

# In a folder of its own: the system looks for libraries in a program's folder and in the current one.
mkdir -p "$drive/program"
cp "$1" "$drive/program/"
doctor=$drive/program/$(basename "$1")
scripted=$(realpath "$3")
cd "$drive/program" || exit 1

healthy
expect "healthy" 0 ""
tells "Windows " "Outlook 11.0.5608.0: C:\\doctor\\OUTLOOK.EXE" "$dll, version 1." \
  "(LoadBehavior 3, HKEY_CURRENT_USER)" "not among Outlook's disabled items" \
  'client is installed: C:\doctor\client.exe' "client does not run" \
  'MAPI helper library is there: C:\doctor\cxmapihlp.dll' "Log_cxolcom.txt" "switched off"

# The add-in and its loading.
set_default "$class" 'C:\gone\cxolcom.dll'
complains "missing DLL" 'This file is missing: C:\gone\cxolcom.dll'
echo MZ >"$drive/cxolcom.dll"
set_default "$class" 'C:\doctor\cxolcom.dll'
complains "DLL for other processors" 'no 32-bit program: C:\doctor\cxolcom.dll'
complains "rest of an older registration" 'Left over from another installation: HKEY_CLASSES_ROOT\TypeLib'
unset_key "$class"
expect "no class" 1 "The add-in is not registered"
healthy
set_default "HKCU\\Software\\Classes\\$entry_id" 'D:\old\cxolcom.dll'
complains "a user's registration" 'D:\old\cxolcom.dll'
healthy
set_value "$entry" LoadBehavior 2 /t REG_DWORD
expect "switched off" 1 "it is switched off (LoadBehavior 2, HKEY_CURRENT_USER)"
tells 'Unless that is wanted: choose "Put right"'
set_value "$entry" LoadBehavior 9 /t REG_DWORD
expect "on demand" 2 "at its start, as it should (LoadBehavior 9, HKEY_CURRENT_USER)"
unset_key "$entry"
expect "no entry" 1 "Outlook does not know the add-in"
set_value "${entry/HKCU/HKLM}" LoadBehavior 2 /t REG_DWORD
expect "switched off for all" 1 "it is switched off (LoadBehavior 2, HKEY_LOCAL_MACHINE)"
tells "Only an administrator"
set_value "$entry" LoadBehavior 3 /t REG_DWORD
expect "switched on by the user" 0 ""
healthy
path='c:\doctor\cxolcom.dll'
for version in 10.0 11.0 12.0; do
  run reg add "$(disabled $version)" /v 1A2B /t REG_BINARY /f /d \
    "01000000$(printf '%02x' $((${#path} * 2)))00000000000000$(printf '%s' "$path" | iconv -t UTF-16LE | od -An -v -tx1 | tr -d ' \n')"
  expect "disabled in $version" 1 "among the disabled items of Outlook $version"
  unset_key "$(disabled $version)"
done
program "$drive/OUTLOOK.EXE" 14
expect "later Outlook" 2 "Outlook 14.0.5608.0 is none of"
perl -0777 -i -pe 's/PE\0\0\x4C\x01/PE\0\0\x64\x86/' "$drive/OUTLOOK.EXE"
expect "64-bit Outlook" 1 'no 32-bit program: C:\doctor\OUTLOOK.EXE'
unset_key "$outlook"
complains "no Outlook" "Outlook is not installed"

# The client.
healthy
rm "$drive/client.exe"
expect "no client file" 1 'This file is missing: C:\doctor\client.exe'
unset_key "$client"
expect "no client" 1 "The telephony client is not installed"
healthy
set_default 'HKCR\velnor.application\CLSID' "$client_id"
window='host.makeWindow("SfFrameOrView", "client");'
object='host.offerRunning("velnor.application", new Object());'
playing "$window $object" expect "client runs" 0 ""
tells "The telephony client runs."
playing "$window" expect "window without object" 1 "client runs but can't be reached"
playing "$object" expect "object without window" 1 "client runs but can't be reached"
playing "$window $object for (;;);" expect "hung client" 1 "client runs but can't be reached"
playing 'host.makeWindow("rctrl_renwnd32", "Outlook");' \
  expect "Outlook without client" 2 "The telephony client does not run"

# The libraries.
rm "$drive/cxmapihlp.dll"
expect "no MAPI helper" 2 "The MAPI helper library cxmapihlp.dll is missing"
set_value "$settings" UseMapi 0
expect "no MAPI helper wanted" 0 ""
echo MZ >"$drive/cxmapihlp.dll"
expect "bad MAPI helper" 1 'no 32-bit program: C:\doctor\cxmapihlp.dll'
healthy
program "$logger" 1
expect "logging library" 0 ""
tells "The trace goes to the maker's logging library"
echo MZ >"$logger"
expect "bad logging library" 1 "no 32-bit program"

# Each setting that the report tells, with a value that can't be read.
healthy
report
mapfile -t places < <(tr -d '\r' <"$work/report" | sed -n 's/^well *HKEY_\(.*\) (not set): .*/\1/p')
[ ${#places[@]} -ge 10 ] || fail "few settings are told: ${places[*]}"
for place in "${places[@]}"; do
  key=${place%\\*}
  key=${key/CURRENT_USER/HKCU}
  set_value "${key/LOCAL_MACHINE/HKLM}" "${place##*\\}" maybe
  expect "bad text" 2 "HKEY_$place = \"maybe\" can't be read; what holds: "
  run reg delete "${key/LOCAL_MACHINE/HKLM}" /v "${place##*\\}" /f
done
set_value "$settings" DialRemote 1
expect "a value" 0 ""
tells 'DialRemote = "1": on'
set_value "$settings" DialRemot 1
expect "misspelt" 2 'DialRemot has no effect'

# The trace.
healthy
run "$doctor" /trace on || fail "/trace on"
expect "trace on" 0 ""
tells 'The trace file is switched on'
touch "$(dirname "$trace")"
expect "a file for a folder" 1 "The folder of the trace file can't be written to"
rm "$(dirname "$trace")"
mkdir -p "$trace"
expect "a folder for a file" 1 "The trace file can't be written to"
run "$doctor" /trace clean
[ $? = 3 ] || fail "what can't be emptied is said to be empty"
rmdir "$trace"
printf '07.03.2008 14:05:09.042 Debug:   CxDial (0711 4711)\r\n' >"$trace"
expect "a trace" 0 ""
run "$doctor" /trace show "$(winepath -w "$work/shown" 2>/dev/null)"
grep -q 'this number is dialled' "$work/shown" || fail "meaning is missing"
run "$doctor" /support "$(winepath -w "$work/support" 2>/dev/null)"
grep -q 'CxDial (#### ####)' "$work/support" || fail "number is not masked"
run "$doctor" /trace clean
[ ! -s "$trace" ] || fail "trace was not emptied"
head -c 11000000 /dev/zero >"$trace"
expect "big trace" 2 "The trace file holds 10 MB"
run "$doctor" /trace off
report
tells 'The trace file is switched off'

# What can't be done is told by the exit status.
for words in '/trace nonsense' '/trace' '/report' '/nonsense' '/report Z:\none\report' \
  '/support Z:\none\support'; do
  # shellcheck disable=SC2086
  run "$doctor" $words
  [ $? = 3 ] || fail "$words: exit status $?"
done
exit "$failed"
