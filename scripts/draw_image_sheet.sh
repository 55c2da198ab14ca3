#!/usr/bin/env bash
# Draws all images of the interface and the icon in one picture, at both scales on both grounds, to
# look at them together.
#   scripts/draw_image_sheet.sh [build/src/images [docs/drawing/interface-images.png]]
set -euo pipefail
cd "$(dirname "$0")/.."
images=${1:-build/src/images}
target=${2:-docs/drawing/interface-images.png}
sheet=$images/sheet.svg
width=1060
body=''
top=0

# Size in pixels of a rendered image at scale 1: prints "WIDTH HEIGHT". $1: folder/name
size_of () {
    case $1 in
        icon/*) local pixels=${1##*-}; echo "$pixels $pixels" ;;
        *) sed -nE '/<svg/{s/.* width="([0-9]+)" height="([0-9]+)".*/\1 \2/p;q}' "$images/$1.svg" ;;
    esac
}

# Places images one behind the other. $1: their scale, $2: "-dark" or nothing, others: folder/name
row () {
    local scale=$1 dark=$2 x=12 tallest=0 image w h file
    shift 2
    for image in "$@"; do
        read -r w h < <(size_of "$image")
        w=$((w * scale)); h=$((h * scale))
        file=$image$dark
        [ -e "$images/$file.png" ] || file=$image      # the same on both grounds
        [ "$scale" = 2 ] && file=$file@2x
        if [ $((x + w + 12)) -gt $width ]; then x=12; top=$((top + tallest + 10)); tallest=0; fi
        body+="<image x=\"$x\" y=\"$top\" width=\"$w\" height=\"$h\" href=\"$file.png\"/>"
        x=$((x + w + 10))
        [ $h -gt $tallest ] && tallest=$h
    done
    top=$((top + tallest + 14))
}

mapfile -t small < <(sed -n '/ about$/d; s/^interface /interface\//p' assets/images.txt)
mapfile -t icon < <(sed -n 's/^icon /icon\//p' assets/images.txt)
# $1: colour of the ground, $2: "-dark" or nothing
band () {
    local from=$top before=$body
    body=''
    top=$((top + 12))
    row 1 "$2" "${small[@]}"
    row 2 "$2" "${small[@]}"
    row 1 "$2" interface/about "${icon[@]}"
    row 2 "$2" interface/about
    body="$before<rect y=\"$from\" width=\"$width\" height=\"$((top - from))\" fill=\"$1\"/>$body"
}
band '#c0c0c0' ''
band '#30343b' -dark
printf '<svg xmlns="http://www.w3.org/2000/svg" width="%s" height="%s">%s</svg>\n' \
       "$width" "$top" "$body" >"$sheet"
rsvg-convert --output "$target" "$sheet"
rm "$sheet"
