#!/usr/bin/env bash
# Plays a first call with real windows on a virtual screen, under Wine, and leaves pictures of it: an
# explorer with its toolbar, an inspector with its toolbar, open menus under their buttons, a call that
# comes in, a window with the ribbon. Those in docs/pictures are made of the English ones: the pictures
# explorer, inspector, incoming-call and ribbon in FOLDER/docs, cut to what matters, to be looked at and
# copied.
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

# What the documents show: from the title bar to below the open menu.
cut() {
  [ ! -e "$pictures/en-$1.png" ] || convert "$pictures/en-$1.png" -crop "$3" +repage "$pictures/docs/$2.png"
}
mkdir -p "$pictures/docs"
cut explorer-menu explorer 680x280+20+20
cut incoming-call incoming-call 708x420+20+20
cut inspector-menu inspector 680x250+48+48
cut ribbon ribbon 680x220+48+48
echo "pictures in $pictures:"
ls "$pictures"
