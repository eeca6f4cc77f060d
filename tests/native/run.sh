#!/usr/bin/env bash
# Runs the native tests: the real Quillbarrow.exe, worked by native_driver.exe, in a Wine prefix that is made
# for them and removed afterwards. Ends with "native: N passed, N failed". Build the preset `windows` first.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"

for built in Quillbarrow.exe logo.gif native_driver.exe; do
  [ -f "$ROOT/build/windows/$built" ] || { say "build/windows/$built is missing."; exit 2; }
done

PREFIX=$(mktemp -d "${TMPDIR:-/tmp}/quillbarrow-native.XXXXXXXX")
remove_prefix() {
  WINEPREFIX=$PREFIX wineserver -k 2>/dev/null || true
  WINEPREFIX=$PREFIX wineserver -w 2>/dev/null || true
  case "$PREFIX" in
    */quillbarrow-native.????????) rm -rf "$PREFIX" ;;
  esac
}
trap remove_prefix EXIT

make_prefix "$PREFIX"
install_program
mkdir "$PREFIX/drive_c/native-tests"
cp "$ROOT/build/windows/native_driver.exe" "$PREFIX/drive_c/native-tests/"

cd "$PREFIX/drive_c/native-tests"
LOG=$ROOT/build/native-driver.log
status=0
# A desktop of its own: windows then have frames, and one window at a time has the keyboard.
timeout 900 xvfb-run -a -s '-screen 0 1280x900x24' \
  wine 'C:\native-tests\native_driver.exe' >"$LOG" 2>&1 || status=$?
tr -d '\r' <"$LOG"
# A driver that died before its last line has failed, whatever it said until then.
grep -q '^native: [0-9]* passed, [0-9]* failed' "$LOG" || { echo "native: 0 passed, 1 failed"; exit 1; }
exit "$status"
