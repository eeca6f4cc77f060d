#!/usr/bin/env bash
# Draws quillbarrow.ico and logo.gif anew with ImageMagick, and the two pictures of the setup program. All are kept, so a
# build does not need it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

# A white quill that writes its line across a burial mound, on a 256 x 256 field of deep blue.
field='roundrectangle 8,8 248,248 48,48'
mound='path "M 24,208 C 60,150 104,140 132,140 C 172,140 208,160 232,208 L 232,212 Q 230,240 204,240 L 52,240 Q 26,240 24,212 Z"'
feather='path "M 92,190 C 88,120 128,48 208,28 C 216,84 190,150 124,168 L 108,176 Z"'
notch='path "M 170,126 L 150,124 M 190,92 L 166,92"'
shaft='path "M 72,220 C 96,168 132,112 186,58"'

draw() {
  convert -size 256x256 xc:none \
    -fill '#1d3f72' -draw "$field" \
    -fill '#3f9c6b' -draw "$mound" \
    -fill '#f7f4ea' -draw "$feather" \
    -fill none -stroke '#1d3f72' -strokewidth 7 -draw "$shaft" \
    -strokewidth 6 -draw "$notch" \
    "$1"
}

work=$(mktemp -d)
draw "$work/256.png"
sizes=(16 24 32 48)
for size in "${sizes[@]}"; do
  convert "$work/256.png" -filter Lanczos -resize "${size}x${size}" "$work/$size.png"
done
convert "$work/16.png" "$work/24.png" "$work/32.png" "$work/48.png" "$work/256.png" quillbarrow.ico
convert -size 300x80 xc:white \
  \( "$work/256.png" -resize 72x72 \) -geometry +4+4 -composite \
  -font DejaVu-Sans-Bold -pointsize 27 -fill '#1d3f72' -annotate +86+44 'Quillbarrow' \
  -font DejaVu-Sans -pointsize 12 -fill '#3f9c6b' -annotate +88+64 'your traces, gone' \
  +dither -colors 64 logo.gif
# Beside the texts of the last page, and over those of the others.
packaging=../../../packaging
convert -size 164x314 gradient:'#1d3f72-#16305a' \
  \( "$work/256.png" -resize 112x112 \) -geometry +26+48 -composite \
  -font DejaVu-Sans-Bold -pointsize 18 -fill '#f7f4ea' -gravity north -annotate +0+180 'Quillbarrow' \
  -font DejaVu-Sans -pointsize 11 -fill '#8fd3ac' -annotate +0+206 'your traces, gone' \
  +dither -colors 128 -type Palette "BMP3:$packaging/side.bmp"
convert -size 150x57 xc:white \( logo.gif -resize 150x \) -geometry +0+8 -composite \
  +dither -colors 64 -type Palette "BMP3:$packaging/header.bmp"
rm -r "$work"
