#!/usr/bin/env bash
# Plays a first call with real windows on a virtual screen, under Wine, and leaves pictures of it: an
# explorer with its toolbar, an inspector with its toolbar, open menus under their buttons, a call that
# comes in, a window with the ribbon, velnor-doctor. Those in docs/pictures are made of the English ones:
# the pictures explorer, inspector, incoming-call, ribbon and doctor in FOLDER/docs, cut to what matters,
# to be looked at and copied.
#
#   scripts/windows-screenshots.sh [FOLDER]      by default build/screenshots
#
# BUILD_WINDOWS names the build folder, LANGUAGES the languages: de en fr it es pt, SCHEME the colours:
# grey (Windows 2000's, unless told otherwise), blue (Outlook 2003's) or black (high contrast).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck disable=SC1091
. "$root/scripts/windows-machine.sh"
pictures=${1:-$root/build/screenshots}
languages=${LANGUAGES:-en de}
scheme=${SCHEME:-grey}
cxol_built

if [ -z "${CXOL_SCREEN:-}" ]; then
  export CXOL_SCREEN=1
  exec xvfb-run -a -s "-screen 0 728x468x24" "$0" "$@"
fi

mkdir -p "$pictures"
pictures=$(cd "$pictures" && pwd)
work=$root/build/screen
export CXOL_WINE_GRAPHICS=x11
cxol_machine "$work"
cd "$work/bin"

case $scheme in
  grey) face="212 208 200" window="255 255 255" text="0 0 0" ;;
  blue) face="158 190 245" window="255 255 255" text="0 0 0" ;;
  black) face="0 0 0" window="0 0 0" text="255 255 255" ;;
  *)
    echo "SCHEME is grey, blue or black, not $scheme" >&2
    exit 1
    ;;
esac
reg() {
  wine reg "$1" "$2" "${@:3}" /f </dev/null >/dev/null 2>&1
}
colour() {
  reg add 'HKCU\Control Panel\Colors' /v "$1" /d "$2"
}
colour ButtonFace "$face"
colour Window "$window"
colour ButtonText "$text"
colour WindowText "$text"

# A comment "picture NAME" asks for a picture during the wait that follows it.
scenario() {
  cat <<SCENARIO
language $1
client hidden
outlook 11.0
wait 21 s
folder "Contacts"
type "030 23125 231"
connect
# picture dial-box
wait 2 s
end call
select "Meier"
wait 400 ms
# picture explorer
wait 2 s
click dial
# picture explorer-menu
wait 2 s
escape
client running
ring "0711 5550199"
# picture incoming-call
wait 2 s
end call
client hidden
open "Meier, Hans"
wait 1 s
# picture inspector
wait 2 s
click actions
# picture inspector-menu
wait 2 s
escape
quit
wait 1 s
outlook 12.0
open "Meier, Hans"
# picture ribbon
wait 2 s
click dial
# picture ribbon-menu
wait 2 s
escape
quit
SCENARIO
}

for language in $languages; do
  scenario "$language" >"$work/$language.scn"
  timeout 300 wine ./outlook-standin.exe --show --mailbox "$root/samples/mailbox.json" \
    --client velnor-standin.exe --libraries libraries --play "$work/$language.scn" </dev/null |
    while IFS= read -r line; do
      case $line in
        '# picture '*)
          sleep 1.2
          import -window root "$pictures/$language-${line#\# picture }.png"
          ;;
        '??'* | '!!'*) echo "$language: $line" >&2 ;;
      esac
    done
done

# An installation as the package makes it, but for the add-in that is switched off.
program_files="$WINEPREFIX/drive_c/Program Files"
addin=$program_files/"Velnor Outlook AddIn"
doctor=$_cxol_windows/windows/velnor-doctor.exe
mkdir -p "$addin" "$program_files/Velnor"
cp cxolcom.dll "$doctor" "$addin"
cp velnor-standin.exe "$program_files/Velnor/Velnor.exe"
cp libraries/cxmapihlp.dll "$WINEPREFIX/drive_c/windows/system32/"
cxol_program "$program_files/Microsoft Office/OFFICE11/OUTLOOK.EXE" 11 "$doctor"
wine regsvr32 /s 'C:\Program Files\Velnor Outlook AddIn\cxolcom.dll' </dev/null >/dev/null 2>&1
reg add 'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\OUTLOOK.EXE' \
  /ve /d 'C:\Program Files\Microsoft Office\OFFICE11\OUTLOOK.EXE'
client='HKCR\CLSID\{4B7D2A91-3C5E-11D4-9F21-00A0C9E4B7D3}\LocalServer32'
reg add "$client" /ve /d 'C:\Program Files\Velnor\Velnor.exe'
reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders' /v 'Local AppData' \
  /d 'C:\Documents and Settings\Anna\Local Settings\Application Data'
entry='HKCU\Software\Microsoft\Office\Outlook\Addins\VelnorOutlookCOMAddIn.Connect'
reg add "$entry" /v LoadBehavior /t REG_DWORD /d 2
reg add 'HKCU\Software\Wine\AppDefaults\velnor-doctor.exe' /v Version /d winxp
declare -A language_ids=([de]=1031 [en]=1033 [fr]=1036 [it]=1040 [es]=1034 [pt]=1046)
for language in $languages; do
  reg add 'HKCU\Software\K9T\Localization\LangID' /v LangID /t REG_DWORD /d "${language_ids[$language]}"
  wine "$addin/velnor-doctor.exe" </dev/null >/dev/null 2>&1 &
  sleep 3
  import -window root "$pictures/$language-doctor.png"
  kill $!
done
# As the next run wants to find it.
reg add "$entry" /v LoadBehavior /t REG_DWORD /d 3
reg delete "$client"
rm "$WINEPREFIX/drive_c/windows/system32/cxmapihlp.dll"

# What the documents show: from the title bar to below the open menu.
cut() {
  [ ! -e "$pictures/en-$1.png" ] || convert "$pictures/en-$1.png" -crop "$3" +repage "$pictures/docs/$2.png"
}
mkdir -p "$pictures/docs"
cut explorer-menu explorer 680x280+20+20
cut incoming-call incoming-call 708x420+20+20
cut inspector-menu inspector 680x250+48+48
cut ribbon ribbon 680x220+48+48
[ ! -e "$pictures/en-doctor.png" ] || convert "$pictures/en-doctor.png" -trim +repage "$pictures/docs/doctor.png"
echo "pictures in $pictures:"
ls "$pictures"
