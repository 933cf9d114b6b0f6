#!/usr/bin/env bash
# Plays a first call with real windows on a virtual screen, under Wine, and leaves pictures of it: an
# explorer with its toolbar, an inspector with its toolbar, an open menu of numbers under its button,
# a window with the ribbon.
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
colour() {
  wine reg add 'HKCU\Control Panel\Colors' /v "$1" /d "$2" /f </dev/null >/dev/null 2>&1
}
colour ButtonFace "$face"
colour Window "$window"
colour ButtonText "$text"
colour WindowText "$text"

# A comment "picture NAME" asks for a picture during the wait that follows it.
scenario() {
  cat <<SCENARIO
language $1
client running
outlook 11.0
wait 21 s
folder "Contacts"
select "Meier"
wait 400 ms
# picture explorer
wait 2 s
click dial
# picture explorer-menu
wait 2 s
escape
open "Meier, Hans"
wait 1 s
# picture inspector
wait 2 s
click actions
# picture inspector-menu
wait 2 s
escape
quit
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
echo "pictures in $pictures:"
ls "$pictures"
