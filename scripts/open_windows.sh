#!/usr/bin/env bash
# Called by ./run --windows: opens the real program under Wine in a throwaway prefix, which is gone
# afterwards. Without a display it runs on a hidden one for a few seconds and leaves a picture.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
source "$ROOT/scripts/wine_prefix.sh"
need_windows
build windows Quillbarrow

say "Making a Wine prefix for this run …"
throwaway_prefix
[ ! -e "$WINEPREFIX/dosdevices/z:" ] || { say "There is a drive Z:"; exit 1; }
cd "$PROGRAM_FOLDER"
if [ -n "${DISPLAY:-}" ]; then
  say "Close the window twice to end the program: the first time only hides it."
  wine Quillbarrow.exe
else
  picture=$ROOT/build/windows/screenshot.png
  export picture
  xvfb-run -a -s '-screen 0 1100x800x24' bash -c 'wine Quillbarrow.exe & sleep 8; import -window root "$picture"; wineserver -k' || true
  say "There is no display; a picture of the program is in build/windows/screenshot.png"
fi
