#!/usr/bin/env bash
# Runs the native driver on the real program in a throwaway prefix, and five of its stories once more as
# rehearsals. `run.sh STORY` plays that story alone. Ends with 'native: N passed, N failed'.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"
story=${1:-}
passed=0
failed=0

build host quillbarrow-rehearse
throwaway_prefix
# The temp folder is emptied by the story: it begins as one that only the story fills.
find "$WINEPREFIX/drive_c/windows/temp" -mindepth 1 -delete
cp "$ROOT/build/windows/native_driver.exe" "$ROOT/build/windows/native_helper.exe" \
  "$ROOT/build/windows/native_seam.exe" "$ROOT/build/windows/program_of_bytes.exe" "$ROOT"/tests/native/*.rehearsal "$WINEPREFIX/drive_c/"
cp "$ROOT/build/windows/Quillbarrow.exe" "$WINEPREFIX/drive_c/program_of_unicode.exe"

# registry_export: a machine made with an export of the whole registry knows the user's keys and those of the computer.
registry_export() {
  local keys='HKCU\Software\Machine test'
  wine reg add "$keys" /v 'of "two\lines' /d $'Grüße,\nÖ' /f >/dev/null 2>&1
  wine regedit /E 'C:\all.reg' >/dev/null 2>&1
  bash "$ROOT/scripts/own_machine.sh" "$WORK/machine-own" "$WINEPREFIX/drive_c/all.reg" || true
  if printf 'expect reg show "%s" has "of ""two\lines sz Grüße," Ö\nexpect reg show "HKLM\\Software\\Microsoft\\Windows NT\\CurrentVersion" has SystemRoot' "$keys" |
    "$ROOT/build/host/quillbarrow-rehearse" "$WORK/machine-own"; then
    echo "ok   a machine opens with an export of the whole registry"
    passed=$((passed + 1))
  else
    echo "FAIL a machine with an export of the whole registry"
    failed=$((failed + 1))
  fi
}

plays() { [ -z "$story" ] || [ "$story" = "$1" ]; }
if plays thumbs; then
  need python3
  python3 "$ROOT/tests/native/make_caches.py" "$WORK/audit"
  cp -r "$WORK/audit/." "$WINEPREFIX/drive_c/"
fi

# drive PROGRAM [STORY] lets a driver play and adds its numbers up.
drive() {
  local log=$WORK/driver.log closing good bad driver=$1
  shift
  [ ! -e "$WINEPREFIX/dosdevices/z:" ] || { say "There is a drive Z:"; exit 1; }
  (cd "$WINEPREFIX/drive_c" && timeout 900 xvfb-run -a -s '-screen 0 1280x900x24' wine "C:\\$driver" "$@") \
    >"$log" 2>&1 || true
  tr -d '\r' <"$log"
  closing=$(tr -d '\r' <"$log" | grep -E '^driver: [0-9]+ passed, [0-9]+ failed' | tail -n 1) || true
  if [ -z "$closing" ]; then
    echo "The driver did not come to its end."
    failed=$((failed + 1))
    return
  fi
  read -r _ good _ bad _ <<<"$closing"
  passed=$((passed + good))
  failed=$((failed + bad))
}

# compare SCRIPT LOG: the rehearsal must write what the driver left in its log.
compare() {
  local said=$WORK/$1.txt
  (cd "$WORK" && "$ROOT/build/host/quillbarrow-rehearse" "machine-$1" "$ROOT/tests/native/$1.rehearsal") >"$said" || true
  if diff "$said" <(tr -d '\r' <"$WINEPREFIX/drive_c/$2"); then
    echo "ok   the rehearsal $1 writes the same log and count"
    passed=$((passed + 1))
  else
    echo "FAIL the rehearsal $1 writes another log or count"
    failed=$((failed + 1))
  fi
}

# imports: the exe asks for no function by name that a Windows 7 without updates lacks, or it would not start there.
imports() {
  local imports late
  imports=$(x86_64-w64-mingw32-objdump -p "$ROOT/build/windows/Quillbarrow.exe" | sed -n '/The Import Tables/,$p')
  late=$(grep -wE "$LATER_THAN_WINDOWS_7" <<<"$imports") || true
  if [ -z "$late" ] && grep -q 'DLL Name: KERNEL32.dll' <<<"$imports"; then
    echo "ok   the exe imports nothing that Windows 7 lacks"
    passed=$((passed + 1))
  else
    printf 'FAIL the exe imports what Windows 7 lacks\n%s\n' "$late"
    failed=$((failed + 1))
  fi
}
LATER_THAN_WINDOWS_7='SetDefaultDllDirectories|AddDllDirectory|GetDpiForWindow|GetDpiForSystem|GetSystemMetricsForDpi|AdjustWindowRectExForDpi'
LATER_THAN_WINDOWS_7+='|SystemParametersInfoForDpi|SetProcessDpiAwareness(Context)?|GetSystemTimePreciseAsFileTime|CreateFile2|SetThreadDescription|api-ms-win[-a-z0-9.]*'

if plays seam; then
  imports
  drive native_seam.exe
fi
[[ "$story" =~ ^(seam|export)$ ]] || drive native_driver.exe ${story:+"$story"}
if plays internet; then
  # All ends with the session; the next program that starts in the prefix makes Windows boot first.
  wineserver -k || true
  wineserver -w
  drive native_driver.exe after-boot
fi
if plays kill; then compare story native-log.txt; fi
if plays browsers; then compare browsers browsers-log.txt; fi
if plays internet; then compare internet internet-log.txt; fi
if plays resident; then compare resident resident-log.txt; fi
if plays export; then registry_export; fi
if plays thumbs; then compare thumbs thumbs-log.txt; fi
echo "native: $passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
