#!/usr/bin/env bash
# Plays a first call with real windows on a virtual screen, under Wine, and leaves pictures of it: an
# explorer with its toolbar, an inspector with its toolbar, an open menu of numbers under its button,
# a window with the ribbon.
#
#   scripts/windows-screenshots.sh [FOLDER]      by default build/screenshots
#
# BUILD_WINDOWS names the build folder, LANGUAGES the languages: de en fr it es pt.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
windows=${BUILD_WINDOWS:-$root/build/windows}
pictures=${1:-$root/build/screenshots}
languages=${LANGUAGES:-en de}

if [ -z "${CXOL_SCREEN:-}" ]; then
  export CXOL_SCREEN=1
  exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

mkdir -p "$pictures"
pictures=$(cd "$pictures" && pwd)
work=$pictures/.machine
mkdir -p "$work"
export CXOL_WINE_GRAPHICS=x11
# shellcheck disable=SC1091
. "$root/scripts/wine-prefix.sh" "$work/prefix"
trap 'wineserver -k || true' EXIT
rm -rf "$work/bin"
cp -r "$windows/bin" "$work/bin"
cp "$windows/windows/cxolcom.dll" "$work/bin/"
cd "$work/bin"
wine regsvr32 /s cxolcom.dll </dev/null >/dev/null 2>&1

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
# picture menu
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
  wine ./outlook-standin.exe --show --mailbox "$root/samples/mailbox.json" \
    --client velnor-standin.exe --libraries libraries --play "$work/$language.scn" </dev/null |
    while IFS= read -r line; do
      case $line in
        '# picture '*)
          sleep 1.2
          import -window root "$pictures/${line#\# picture }-$language.png"
          ;;
        '??'* | '!!'*) echo "$language: $line" >&2 ;;
      esac
    done
done
echo "pictures in $pictures:"
ls "$pictures"
