#!/usr/bin/env bash
# Draws the .ico files in resources/icons/, and the stand-in Outlook's, anew from the SVG files beside
# them. The .ico files are kept under version control, so only somebody who changes a drawing needs this and its tools.
set -euo pipefail
cd "$(dirname "$0")/../resources/icons"

missing=()
command -v rsvg-convert >/dev/null || missing+=(librsvg2-bin)
command -v icotool >/dev/null || missing+=(icoutils)
command -v convert >/dev/null || missing+=(imagemagick)
if [ ${#missing[@]} -gt 0 ]; then
  echo "The icons need: apt-get install ${missing[*]}" >&2
  exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Windows 2000 ignores the alpha channel, takes pixels of less than half alpha as transparent and
# inverts the background under those whose colour is not black. So the faint pixels of the smooth
# image turn black, and the classic image has none.
#
# Toolbars show 16 pixels; the ribbon has the system's small icons, which are larger on finer screens,
# so its three icons also come larger, 24 and 48 pixels being made of the drawing for 32. Every system
# that has a ribbon knows smooth images.
for name in dial drop velnor action transfer blank ../../standin/outlook/outlook-standin; do
  case $name in
    dial | drop | action) sizes=(16 24 32 48) ;;
    velnor | */outlook-standin) sizes=(16 32) ;;
    *) sizes=(16) ;;
  esac
  images=()
  for size in "${sizes[@]}"; do
    drawn=$work/${name##*/}-$size.png
    drawing=$name-32.svg
    [ "$size" != 16 ] || drawing=$name-16.svg
    rsvg-convert -w "$size" -h "$size" "$drawing" -o "$drawn"
    if [ "$size" = 16 ]; then
      convert "$drawn" -channel A -threshold 50% +channel -background black -alpha background \
        +dither -colors 255 "PNG32:$work/classic.png"
      images+=(-b 8 "$work/classic.png")
    fi
    convert "$drawn" -channel RGB -fx 'a>0.5 ? u : 0' "PNG32:$work/smooth-$size.png"
    images+=(-b 32 "$work/smooth-$size.png")
  done
  icotool -c -o "$name.ico" "${images[@]}"
done
