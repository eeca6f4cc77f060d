#!/usr/bin/env bash
# Makes the pictures of this folder anew: the real program under Wine, in a throwaway prefix.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"
need_windows
need xdotool fonts-wine:/usr/share/wine/fonts/marlett.ttf
build windows all

throwaway_prefix
# The marks on the buttons of a caption.
cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
cp "$ROOT/build/windows/native_driver.exe" "$WINEPREFIX/drive_c/"
export DOCS=$ROOT/docs

# pictures DPI WIDTH HEIGHT SUFFIX makes all of them on a screen of that size.
pictures() {
  cat >"$WINEPREFIX/drive_c/looks.reg" <<REG
REGEDIT4

[HKEY_CURRENT_USER\Control Panel\Desktop]
"FontSmoothing"="2"
"FontSmoothingType"=dword:00000002
"LogPixels"=dword:$(printf %08x "$1")

[HKEY_CURRENT_USER\Control Panel\Colors]
"Background"="58 110 165"
REG
  SCREEN=$2x$3 SUFFIX=$4 xvfb-run -a -s "-screen 0 $2x$3x24" bash "$ROOT/docs/take_pictures.sh"
  wineserver -k || true
  wineserver -w
}
pictures 96 1100 700 ''
pictures 192 2200 1300 -200
