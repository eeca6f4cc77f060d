#!/usr/bin/env bash
# Makes the pictures of this folder anew: the real program under Wine, in a throwaway prefix.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"
need_windows
need xdotool fonts-wine:/usr/share/wine/fonts/marlett.ttf
build windows all

throwaway_prefix
cat >"$WORK/looks.reg" <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Control Panel\Desktop]
"FontSmoothing"="2"
"FontSmoothingType"=dword:00000002

[HKEY_CURRENT_USER\Control Panel\Colors]
"Background"="58 110 165"
REG
cp "$WORK/looks.reg" "$ROOT/build/windows/native_driver.exe" "$WINEPREFIX/drive_c/"
export DOCS=$ROOT/docs
xvfb-run -a -s '-screen 0 1100x800x24' bash "$ROOT/docs/take_pictures.sh"
