#!/usr/bin/env bash
# Breaks an installation in every way, under Wine in the running prefix, and holds the report
# against what was broken. An installation on which all is well gives no complaint.
#
#   windows/doctor/doctor_test.sh DOCTOR DLL
set -uo pipefail
doctor=$1
work=$(mktemp -d)
dll=$(winepath -w "$2" 2>/dev/null)
drive=$WINEPREFIX/drive_c/doctor
failed=0

entry='HKCU\Software\Microsoft\Office\Outlook\Addins\VelnorOutlookCOMAddIn.Connect'
class='HKCR\CLSID\{873C647F-502B-4863-9F93-A83F43C0E12B}\InprocServer32'
client='HKCR\CLSID\{4B7D2A91-3C5E-11D4-9F21-00A0C9E4B7D3}\LocalServer32'
outlook='HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\OUTLOOK.EXE'
settings='HKCU\Software\K9T\CXComAddIn'
logging='HKCU\Software\K9T\Logging'
disabled='HKCU\Software\Microsoft\Office\11.0\Outlook\Resiliency\DisabledItems'
local=$(wine reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders' \
  /v 'Local AppData' 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_SZ *//p')
trace=$(winepath -u "$local" 2>/dev/null)/VelnorLog/Log_cxolcom.txt

run() { wine "$@" </dev/null >/dev/null 2>&1; }
set_value() { run reg add "$1" /v "$2" /d "$3" /f "${@:4}"; }
set_default() { run reg add "$1" /ve /d "$2" /f; }

# A program with a version, by the doctor's own head.
program() {
  mkdir -p "$(dirname "$1")"
  perl -0777 -pe 's/(\xBD\x04\xEF\xFE.{4}).{8}/$1 . pack("v4", 0, '"$2"', 0, 5608)/se' "$doctor" >"$1"
}

healthy() {
  run regsvr32 /s "$dll"
  program "$drive/OUTLOOK.EXE" 11
  program "$drive/client.exe" 3
  cp "$2" "$drive/cxmapihlp.dll"
  set_default "$outlook" 'C:\doctor\OUTLOOK.EXE'
  set_default "$client" '"C:\doctor\client.exe" -Embedding'
  run reg delete "$settings" /f
  run reg delete "$logging" /f
  run reg delete "$disabled" /f
  set_value "$entry" LoadBehavior 3 /t REG_DWORD
  rm -rf "$(dirname "$trace")"
}

# report: the complaints, a line each; sets `status`.
report() {
  status=0
  run "$doctor" /report "$(winepath -w "$work/report" 2>/dev/null)" || status=$?
  complaints=$(tr -d '\r' <"$work/report" | grep -E '^(odd|failed)')
}

# expect WHAT STATUS PATTERN: one complaint, or none for an empty pattern.
expect() {
  report
  if [ "$status" = "$2" ] && { [ -z "$3" ] && [ -z "$complaints" ] ||
    { [ -n "$3" ] && [ "$(wc -l <<<"$complaints")" = 1 ] && grep -qF "$3" <<<"$complaints"; }; }; then
    return
  fi
  failed=1
  printf '%s: status %s, expected %s "%s", found:\n%s\n' "$1" "$status" "$2" "$3" "$complaints"
}

finish() {
  run regsvr32 /u /s "$dll"
  for key in "$outlook" "$client" "$settings" "$logging" "$disabled"; do run reg delete "$key" /f; done
  rm -rf "$work" "$drive" "$(dirname "$trace")"
}
trap finish EXIT

# In a folder of its own: the system looks for libraries in a program's folder and in the current one.
mkdir -p "$drive/program"
cp "$doctor" "$drive/program/"
doctor=$drive/program/$(basename "$doctor")
set -- "$doctor" "$(realpath "$2")"
cd "$drive/program" || exit 1

healthy "$@"
# The language of the report: that of all the maker's products.
set_value 'HKCU\Software\K9T\Localization\LangID' LangID 1033 /t REG_DWORD
expect "healthy" 0 ""

set_default "$class" 'C:\gone\cxolcom.dll'
report
grep -q 'This file is missing: C:\\gone\\cxolcom.dll' <<<"$complaints" || { failed=1; echo "missing DLL: $complaints"; }
run reg delete "$class" /f
expect "no class" 1 "The add-in is not registered"
run regsvr32 /s "$dll"
set_value "$entry" LoadBehavior 2 /t REG_DWORD
expect "switched off" 1 "it is switched off (LoadBehavior 2, HKEY_CURRENT_USER)"
run reg delete "$entry" /f
expect "no entry" 1 "Outlook does not know the add-in"
healthy "$@"
path='c:\doctor\cxolcom.dll'
run reg add "$disabled" /v 1A2B /t REG_BINARY /f /d \
  "01000000$(printf '%02x' $((${#path} * 2)))00000000000000$(printf '%s' "$path" | iconv -t UTF-16LE | od -An -v -tx1 | tr -d ' \n')"
expect "disabled" 1 "among the disabled items of Outlook 11.0"
run reg delete "$disabled" /f
rm "$drive/client.exe"
expect "no client file" 1 'This file is missing: C:\doctor\client.exe'
run reg delete "$client" /f
expect "no client" 1 "The telephony client is not installed"
healthy "$@"
rm "$drive/cxmapihlp.dll"
expect "no MAPI helper" 2 "The MAPI helper library cxmapihlp.dll is missing"
echo MZ >"$drive/cxmapihlp.dll"
expect "bad MAPI helper" 1 'no 32-bit program: C:\doctor\cxmapihlp.dll'
healthy "$@"
set_value "$settings" DialRemote maybe
expect "bad text" 2 'DialRemote = "maybe"'
run reg delete "$settings" /f
set_value "$settings" DialRemot 1
expect "misspelt" 2 'DialRemot has no effect'
healthy "$@"
program "$drive/OUTLOOK.EXE" 14
expect "later Outlook" 2 "Outlook 14.0.5608.0 is none of"
run reg delete "$outlook" /f
rm "$drive/cxmapihlp.dll"
report
grep -q 'Outlook is not installed' <<<"$complaints" || { failed=1; echo "no Outlook: $complaints"; }

# The trace.
healthy "$@"
run "$doctor" /trace on || { failed=1; echo "/trace on"; }
expect "trace on" 0 ""
grep -q 'The trace file is switched on' "$work/report" || { failed=1; echo "trace on is not told"; }
mkdir -p "$(dirname "$trace")"
printf '07.03.2008 14:05:09.042 Debug:   CxDial (0711 4711)\r\n' >"$trace"
run "$doctor" /trace show "$(winepath -w "$work/shown" 2>/dev/null)"
grep -q 'this number is dialled' "$work/shown" || { failed=1; echo "meaning is missing"; }
run "$doctor" /support "$(winepath -w "$work/support" 2>/dev/null)"
grep -q 'CxDial (#### ####)' "$work/support" || { failed=1; echo "number is not masked"; }
run "$doctor" /trace clean
[ ! -s "$trace" ] || { failed=1; echo "trace was not emptied"; }
head -c 11000000 /dev/zero >"$trace"
expect "big trace" 2 "The trace file holds 10 MB"
run "$doctor" /trace off
run "$doctor" /trace nonsense
[ $? = 3 ] || { failed=1; echo "nonsense is taken"; }
run reg delete 'HKCU\Software\K9T\Localization\LangID' /f
exit "$failed"
