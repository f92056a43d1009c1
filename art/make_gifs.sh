#!/bin/sh
# Draws site/images/*.gif and site/favicon.ico from the SVG files of this folder.
# Needs Debian's librsvg2-bin and imagemagick. Usage: art/make_gifs.sh
#
# A GIF's pixel is either there or not. Each picture is therefore drawn four times as large as
# the style sheets show it, without half-transparent edges: scaling it down in the browser
# smooths the edge against whatever colour lies behind it.
set -eu

art=$(cd "$(dirname "$0")" && pwd)
site=$art/../site
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

draw() { # name, pixels
  rsvg-convert -w "$2" -h "$2" "$art/$1.svg" -o "$scratch/$1.png"
  convert "$scratch/$1.png" -channel A -threshold 50% +channel \
    +dither -colors 48 -strip "$site/images/$1.gif"
}

mkdir -p "$site/images"
for source in "$art"/*.svg; do
  name=$(basename "$source" .svg)
  case $name in
    favicon) ;;
    type_* | cal_redind) draw "$name" 64 ;;
    *) draw "$name" 96 ;;
  esac
done

for size in 16 32 48; do
  rsvg-convert -w $size -h $size "$art/favicon.svg" -o "$scratch/favicon$size.png"
done
convert "$scratch/favicon16.png" "$scratch/favicon32.png" "$scratch/favicon48.png" "$site/favicon.ico"
