#!/bin/bash
# Renders the pictures of assets/ from their sources in assets/source/.
#
# usage: make_pictures.sh [OUTPUT_FOLDER]      (default: assets/)
#
# Every picture is made twice, at its size and at twice the density ("@2x"). The same
# sources give the same bytes, so a rebuilt picture differs only where its source does.
set -euo pipefail
export LC_ALL=C

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source_folder=$root/assets/source
output_folder=${1:-$root/assets}

# What the pictures stand on: the background of every themed window.
window_colour='rgb(16,16,0)'

# One line a picture: source, width, height, output, colours. A number of colours makes
# a palette picture with at most so many, transparency included; "full" keeps all of
# them and a smooth alpha channel, "opaque" all of them in 24 bits without one. "cut" is
# "full" from a source that is drawn for its own size, cut to the middle of it.
pictures='
logo.svg      32   32  logo.png         64
logo.svg      64   64  logo@2x.png      64
banner.svg   207   23  banner.png       full
banner.svg   414   46  banner@2x.png    full
ornament.svg  21   10  ornament.png     full
ornament.svg  42   20  ornament@2x.png  full
display.svg  200  200  display.png      opaque
display.svg  400  400  display@2x.png   opaque
logo.svg      16   16  icons/16.png     full
logo-small.svg 22  22  icons/22.png     cut
logo-small.svg 24  24  icons/24.png     full
logo.svg      32   32  icons/32.png     full
logo.svg      48   48  icons/48.png     full
logo.svg      64   64  icons/64.png     full
logo.svg     128  128  icons/128.png    full
logo.svg     256  256  icons/256.png    full
'

need() {
    local tool=$1 package=$2
    command -v "$tool" >/dev/null && return
    echo "make_pictures.sh: $tool is missing (on Debian: apt-get install $package)" >&2
    exit 1
}

# A palette has room for one transparent entry only, so the soft edge is mixed with the
# window colour and all that the drawing touches becomes opaque: on the window this looks
# the same as a smooth edge, elsewhere it is a thin dark outline.
to_palette() {
    local rendered=$1 colours=$2 output=$3
    convert "$rendered" -background "$window_colour" -flatten +dither -colors $((colours - 1)) \
        "$work/flat.png"
    convert "$rendered" -alpha extract -threshold 20% "$work/mask.png"
    convert "$work/flat.png" "$work/mask.png" -alpha off -compose CopyOpacity -composite \
        -strip -define png:exclude-chunks=date,time "PNG8:$output"
}

cut_to_middle() {
    local source=$1 width=$2 height=$3 output=$4
    rsvg-convert --output "$work/whole.png" "$source"
    convert "$work/whole.png" -background none -gravity center -extent "${width}x$height" "$work/cut.png"
    to_full_colour "$work/cut.png" "$output"
}

to_full_colour() {
    local rendered=$1 output=$2
    convert "$rendered" -strip -define png:exclude-chunks=date,time \
        -define png:compression-level=9 "PNG32:$output"
}

to_opaque() {
    local rendered=$1 output=$2
    convert "$rendered" -alpha off -strip -define png:exclude-chunks=date,time \
        -define png:compression-level=9 "PNG24:$output"
}

need rsvg-convert librsvg2-bin
need convert imagemagick

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$output_folder/icons"

while read -r source width height output colours; do
    [[ -n $source ]] || continue
    rsvg-convert --width "$width" --height "$height" --output "$work/rendered.png" \
        "$source_folder/$source"
    case $colours in
        full)   to_full_colour "$work/rendered.png" "$output_folder/$output" ;;
        cut)    cut_to_middle "$source_folder/$source" "$width" "$height" "$output_folder/$output" ;;
        opaque) to_opaque "$work/rendered.png" "$output_folder/$output" ;;
        *)      to_palette "$work/rendered.png" "$colours" "$output_folder/$output" ;;
    esac
    echo "$output: $width by $height"
done <<<"$pictures"
