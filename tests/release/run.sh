#!/usr/bin/env bash
# Tries the setup program of ./release in a throwaway prefix: installation, start, an update over the running copy, removal
# with and without settings and data, silently and by their windows, and a day with the program. Ends with 'release: N passed, N failed'. With CI set, or
# as `run.sh twice`, it also makes a second release in another folder and compares the bytes, for which all is built once
# more.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"

if [ "${1:-}" != inside ]; then
  need python3
  ./release >&2
  build windows native_driver
  build windows native_helper
  throwaway_prefix
  rm -r "$PROGRAM_FOLDER"
  cp build/windows/native_driver.exe build/windows/native_helper.exe "$WINEPREFIX/drive_c/"
  cp build/release/quillbarrow-*-setup.exe "$WINEPREFIX/drive_c/setup.exe"
  cp build/release/quillbarrow-*.zip "$WORK/"
  export WORK
  if [ -n "${CI:-}${1:-}" ]; then
    mkdir "$WORK/again"
    git ls-files -z | xargs -0 cp --parents -t "$WORK/again"
    (cd "$WORK/again" && SOURCE_DATE_EPOCH=$(git -C "$ROOT" log -1 --format=%ct) ./release >&2)
  fi
  xvfb-run -a -s '-screen 0 1100x800x24' bash "${BASH_SOURCE[0]}" inside
  exit
fi

passed=0
failed=0
check() {
  local what=$1
  shift
  if "$@" >"$WORK/said" 2>&1; then
    echo "ok   $what"
    passed=$((passed + 1))
  else
    echo "FAIL $what"
    cat "$WORK/said"
    failed=$((failed + 1))
  fi
}
not() { ! "$@"; }
within() { # SECONDS COMMAND …
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    [ "$SECONDS" -lt "$end" ] || return 1
    sleep 0.2
  done
}

VERSION=$(sed -nE 's/^project\(Quillbarrow VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
USER_FOLDER=$WINEPREFIX/drive_c/users/$(id -un)
LOCAL=$USER_FOLDER/AppData/Local
PROGRAM=$LOCAL/Programs/Quillbarrow
LINK="$USER_FOLDER/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Quillbarrow.lnk"
ENTRY='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillbarrow'
RUN='HKCU\Software\Microsoft\Windows\CurrentVersion\Run'
STORE='HKCU\Software\VB and VBA Program Settings\Temp\SystemData'

# value KEY NAME: the data of a text; fails if there is none.
value() { wine reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -nE 's/^ +[^ ]+.* +REG_SZ +(.*)$/\1/p' | grep .; }
is() { [ "$(value "$1" "$2")" = "$3" ]; }
# The processes of the program in this prefix, by their numbers.
running() {
  local process
  for process in /proc/[0-9]*; do
    [[ "$({ tr -d '\0' <"$process/cmdline"; } 2>/dev/null)" == *[\\/]Quillbarrow.exe* ]] || continue
    { tr '\0' '\n' <"$process/environ"; } 2>/dev/null | grep -qxF "WINEPREFIX=$WINEPREFIX" && basename "$process"
  done | grep .
}
# All on the disk but what Windows itself makes once a program asks for its URL cache.
everything() { find "$WINEPREFIX/drive_c" -not -ipath '*/temp/*' -not -path '*/Windows/INet*' -not -path '*/Windows/History/*' | sort; }

if [ -d "$WORK/again" ]; then
  check 'a second release has the same bytes' diff build/release/SHA256SUMS "$WORK/again/build/release/SHA256SUMS"
fi
wine reg query 'HKCU\Software' >/dev/null 2>&1 # whatever the first program makes
everything >"$WORK/before"

check 'a silent installation ends well' wine 'C:\setup.exe' /S
check 'the program, its picture, the read-me and the uninstaller lie in the folder of the user' \
  test "$(find "$PROGRAM" -type f -printf '%f\n' | sort | tr '\n' '|')" = 'Quillbarrow.exe|Read me.txt|Uninstall.exe|logo.gif|'
check 'the exe is the one of the zip' cmp -s "$PROGRAM/Quillbarrow.exe" <(unzip -p "$WORK"/quillbarrow-*.zip Quillbarrow/Quillbarrow.exe)
check 'there is an entry among the installed apps' is "$ENTRY" DisplayVersion "$VERSION"
check 'and one in the Start menu' test -f "$LINK"
check 'nothing starts with Windows before the program was started' not value "$RUN" Quillbarrow

wine "$PROGRAM/Quillbarrow.exe" >/dev/null 2>&1 &
RUN_LINE="\"$(winepath -w "$PROGRAM" 2>/dev/null)\\Quillbarrow.exe\" /STARTUP"
check 'the program starts' within 60 is "$RUN" Quillbarrow "$RUN_LINE"
within 60 is "$STORE" QBBuild "$VERSION" || true
first=$(running)
mkdir -p "$LOCAL/Quillbarrow/thumbs"
printf 'shop.test\r\n' >"$LOCAL/Quillbarrow/qb.dat"
touch "$LOCAL/Quillbarrow/thumbs/1.jpg" "$LOCAL/Quillbarrow/Fernledger_thumbdb.html"
echo old >"$PROGRAM/Read me.txt"
check 'an update over the running copy ends well' wine 'C:\setup.exe' /S
check 'it replaces what lies there' grep -q "Quillbarrow $VERSION" "$PROGRAM/Read me.txt"
check 'the old copy has ended by itself: its count is stored' value "$STORE" HistoryRemoved
check 'the new one runs' within 30 running
check 'and is another process' test "$(running | head -n 1)" != "$(head -n 1 <<<"$first")"
check 'the list of cookies to keep is as it was' grep -q shop.test "$LOCAL/Quillbarrow/qb.dat"
sleep 2

check 'a silent removal of the running program ends well' wine "$PROGRAM/Uninstall.exe" /S
check 'the program has ended, and its folder is gone' within 60 not test -e "$PROGRAM"
check 'no copy runs' within 10 not running
check 'the entries are gone' not value "$ENTRY" DisplayVersion
check 'from the Start menu too' not test -e "$LINK"
check 'and nothing starts with Windows any more' not value "$RUN" Quillbarrow
check 'settings and data stay' test -f "$LOCAL/Quillbarrow/qb.dat" -a -n "$(value "$STORE" QBBuild)"

check 'an installation in a folder of the choice of the user' wine 'C:\setup.exe' /S '/D=C:\Own'
touch "$WINEPREFIX/drive_c/Own/ClearIEcache.cmd"
wine reg add "$RUN" /v Quillbarrow /d 'another copy' /f >/dev/null 2>&1
check 'a removal with settings and data' wine "$WINEPREFIX/drive_c/Own/Uninstall.exe" /S /DATA
within 60 not test -e "$WINEPREFIX/drive_c/Own/Uninstall.exe" || true
within 20 not test -e "$LOCAL/Quillbarrow" || true
check 'what another copy wrote is left' is "$RUN" Quillbarrow 'another copy'
check 'the settings are gone' not wine reg query 'HKCU\Software\VB and VBA Program Settings'
rm "$WINEPREFIX/drive_c/Own/ClearIEcache.cmd" # the user's own file was left, and with it the folder
check 'and nothing but it lay in the folder any more' within 20 rmdir "$WINEPREFIX/drive_c/Own"
sleep 2
everything >"$WORK/after"
check 'and nothing of the program is left on the disk' diff "$WORK/before" "$WORK/after"

# drive PART lets the driver play a part and adds its numbers up.
drive() {
  local good bad
  timeout 900 wine 'C:\native_driver.exe' "$1" 2>/dev/null | tr -d '\r' | tee "$WORK/driver.log" || true
  if ! read -r good bad < <(sed -nE 's/^driver: ([0-9]+) passed, ([0-9]+) failed$/\1 \2/p' "$WORK/driver.log"); then
    echo "FAIL the driver did not come to the end of $1"
    good=0 bad=1
  fi
  passed=$((passed + good))
  failed=$((failed + bad))
}

# The same with windows: every page once, and what each answer leaves.
drive installation

# A day with the program: installed, set up, used, kept over a boot of Windows, and removed.
CACHE="$LOCAL/Microsoft/Windows/Explorer/thumbcache_96.db"
mkdir -p "$(dirname "$CACHE")"
PYTHONPATH=tests/browsers python3 -c "import sys, thumb_caches
sys.stdout.buffer.write(thumb_caches.thumb_cache([b'\xff\xd8\xff\xe0\0\x10JFIF' + bytes(5000)] * 3))" >"$CACHE"
# What is written over the cache before it goes shows under its other name.
ln "$CACHE" "$WORK/cache"
wine reg delete "$RUN" /v Quillbarrow /f >/dev/null 2>&1 || true
drive browse
everything >"$WORK/before"
check 'an installation begins the day' wine 'C:\setup.exe' /S
wine "$PROGRAM/Quillbarrow.exe" >/dev/null 2>&1 &
check 'its program starts for the first time' within 60 is "$RUN" Quillbarrow "$RUN_LINE"
drive day-until-boot

drive browse
check 'no count is stored while the program runs' not value "$STORE" HistoryRemoved
timeout 120 wine wineboot -e -s >/dev/null 2>&1 || true
check 'the end of the session ends the program' within 60 not running
check 'in order: its count is stored' value "$STORE" HistoryRemoved
wineserver -k || true
wineserver -w
[ ! -e "$WINEPREFIX/dosdevices/z:" ] || { say "There is a drive Z:"; exit 1; }
timeout 120 wine wineboot >/dev/null 2>&1 || true
check 'Windows starts the program' within 60 running
drive day-after-boot
check 'the cache is overwritten before it goes' not grep -q JFIF "$WORK/cache"

check 'a removal with settings and data ends the day' wine "$PROGRAM/Uninstall.exe" /S /DATA
within 60 not test -e "$PROGRAM" || true
check 'the settings are gone with it' not wine reg query 'HKCU\Software\VB and VBA Program Settings'
check 'and nothing starts with Windows' not value "$RUN" Quillbarrow
sleep 2
rm -f "$WINEPREFIX/drive_c/helper-calls.txt"
everything >"$WORK/after"
check 'nothing else than the trace and the cache has gone from the disk' diff - \
  <(comm -23 "$WORK/before" "$WORK/after" | sed "s|$LOCAL/||") <<'END'
Google/Chrome/User Data/Default/History
Microsoft/Windows/Explorer/thumbcache_96.db
END
# An audit leaves its second copies of the pictures at the root of the drive.
check 'and nothing of the program is left but what the audit put at the root' diff - \
  <(comm -13 "$WORK/before" "$WORK/after" | sed "s|$WINEPREFIX/drive_c/||") <<'END'
thumbs
thumbs/1.jpg
thumbs/2.jpg
thumbs/3.jpg
END
wineserver -k || true # it may have ended with the last program
wineserver -w
echo "release: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
