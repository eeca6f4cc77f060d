#!/usr/bin/env bash
# Runs the native driver on the real program in a throwaway prefix, and the first story once more as a
# rehearsal. Ends with 'native: N passed, N failed'.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"

throwaway_prefix
# The temp folder is emptied by the story: it begins as one that only the story fills.
find "$WINEPREFIX/drive_c/windows/temp" -mindepth 1 -delete
cp "$ROOT/build/windows/native_driver.exe" "$WINEPREFIX/drive_c/"
[ ! -e "$WINEPREFIX/dosdevices/z:" ] || { say "There is a drive Z:"; exit 1; }

log=$WORK/driver.log
(cd "$WINEPREFIX/drive_c" && timeout 240 xvfb-run -a -s '-screen 0 1280x900x24' wine 'C:\native_driver.exe') >"$log" 2>&1 || true
tr -d '\r' <"$log"
closing=$(tr -d '\r' <"$log" | grep -E '^driver: [0-9]+ passed, [0-9]+ failed' | tail -n 1)
if [ -z "$closing" ]; then
  echo "The driver did not come to its end."
  echo "native: 0 passed, 1 failed"
  exit 1
fi
read -r _ passed _ failed _ <<<"$closing"

build host quillbarrow-rehearse
"$ROOT/build/host/quillbarrow-rehearse" "$WORK/machine" "$ROOT/tests/native/story.rehearsal" >"$WORK/rehearsal.txt"
if diff "$WORK/rehearsal.txt" <(tr -d '\r' <"$WINEPREFIX/drive_c/native-log.txt"); then
  echo "ok   the rehearsal of the same story writes the same log and count"
  passed=$((passed + 1))
else
  echo "FAIL the rehearsal of the same story writes another log or count"
  failed=$((failed + 1))
fi
echo "native: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
