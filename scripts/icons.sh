#!/usr/bin/env bash
# Draws the .ico files in resources/icons/ anew from the SVG files beside them. The .ico files are
# kept under version control, so only somebody who changes a drawing needs this and its tools.
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
for name in dial drop velnor action transfer blank; do
  images=()
  for size in 16 32; do
    drawn=$work/$name-$size.png
    rsvg-convert "$name-$size.svg" -o "$drawn"
    convert "$drawn" -channel A -threshold 50% +channel -background black -alpha background \
      +dither -colors 255 "PNG32:$work/classic-$size.png"
    convert "$drawn" -channel RGB -fx 'a>0.5 ? u : 0' "PNG32:$work/smooth-$size.png"
    images+=(-b 8 "$work/classic-$size.png" -b 32 "$work/smooth-$size.png")
  done
  icotool -c -o "$name.ico" "${images[@]}"
done
