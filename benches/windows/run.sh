#!/usr/bin/env bash
# The benches that need Windows, on the real program in a throwaway prefix: run.sh NAME … plays those of these names alone
# (size, first, start, pause, helper, hidden, wipe, audit). "hidden" watches for QUILLBARROW_HIDDEN_SECONDS, or ten minutes.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"
names=("$@")
all=(size first start pause helper hidden wipe audit)
[ $# -gt 0 ] || names=("${all[@]}")
for name in "${names[@]}"; do
  [[ " ${all[*]} " == *" $name "* ]] || { say "There is no bench $name under Wine; there are ${all[*]}"; exit 2; }
done

# line NAME OURS OTHER_NAME OTHER UNIT GOAL; a GOAL of 0 is none.
line() {
  awk -v name="$1" -v ours="$2" -v other_name="$3" -v other="$4" -v unit="$5" -v goal="$6" 'BEGIN {
    ratio = ours / other
    form = ratio < 1 ? "%.3g" : "%.2f"
    printf "%s: ours " form " %s, %s %.2f %s, ratio " form, name, ours, unit, other_name, other, unit, ratio
    if (goal > 0) printf " (goal %.2f%s)", goal, (ratio > goal ? ", missed" : "")
    printf "\n"
  }'
}

# windows PROGRAM … runs a Windows program in the prefix; BENCH_BEGAN tells it the milliseconds since 1970 before that.
windows() {
  [ ! -e "$WINEPREFIX/dosdevices/z:" ] || { say "There is a drive Z:"; exit 1; }
  (cd "$WINEPREFIX/drive_c" && xvfb-run -a -s '-screen 0 1280x900x24' \
    sh -c 'BENCH_BEGAN=$(date +%s%3N) exec wine "$@"' sh "$@" 2>/dev/null) | sed -u 's/\r$//'
}

# The desktop is a window of Wine's own: without a window manager Wine else waits two seconds whenever a window that had
# the keyboard comes back, which hits one program of a comparison and spares the other.
in_prefix() {
  cp "$ROOT"/build/windows/{windows_bench,native_driver,native_helper}.exe "$WINEPREFIX/drive_c/"
  windows reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null
  windows reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1280x900 /f >/dev/null
  wineserver -w
}

bench_size() {
  local limit=1.5 bytes
  bytes=$(stat -c %s "$ROOT/build/windows/Quillbarrow.exe")
  line "size of the stripped exe" "$(awk -v bytes="$bytes" 'BEGIN { print bytes / 1048576 }')" "the goal" "$limit" MiB 1
}

# The first program in a prefix that was never used starts all of the session too, which counts here. A copy of the fresh
# prefix for each start.
bench_first() {
  local ours=() other=() round
  for round in {1..9}; do
    say "  first start: $round of 9"
    for what in ours notepad; do
      rm -rf "$WORK/first"
      cp -a "$WORK/fresh" "$WORK/first"
      sync -f "$WORK/first" # or the start is timed while the disk takes the copy
      seconds=$(WINEPREFIX=$WORK/first windows 'C:\windows_bench.exe' first "$what")
      WINEPREFIX=$WORK/first wineserver -k || true
      WINEPREFIX=$WORK/first wineserver -w
      if [ "$what" = ours ]; then ours+=("$seconds"); else other+=("$seconds"); fi
    done
  done
  median() { printf '%s\n' "$@" | sort -n | sed -n 5p; }
  line "first start in a fresh prefix" "$(median "${ours[@]}")" notepad "$(median "${other[@]}")" s 0
}

bench_start() { windows 'C:\windows_bench.exe' start; }

# processor_time prints what the threads of the program that runs in this prefix have used, in nanoseconds; fails if it does
# not run. Clock ticks would be too coarse: a hidden program uses some ten of them in ten minutes.
processor_time() {
  local process
  for process in /proc/[0-9]*; do
    if grep -qzF 'Quillbarrow.exe' "$process/cmdline" && ! grep -qzF 'bench.exe' "$process/cmdline" &&
      grep -qzxF "WINEPREFIX=$WINEPREFIX" "$process/environ"; then
      awk '{ used += $1 } END { printf "%d\n", used }' "$process"/task/*/schedstat
      return 0
    fi
  done 2>/dev/null
  return 1
}

# processor_share NAME GOAL reads the lines of a bench and prints the median share of a core between "begin" and "end".
processor_share() {
  local text used now began shares=()
  while read -r text; do
    case $text in
      begin)
        used=$(processor_time) || { say "The program does not run"; exit 1; }
        began=$EPOCHREALTIME
        ;;
      end)
        now=$(processor_time) || { say "The program ended before it was measured"; exit 1; }
        shares+=("$(awk -v used=$((now - used)) -v from="$began" -v to="$EPOCHREALTIME" \
          'BEGIN { print used / 1e7 / (to - from) }')")
        ;;
      *) echo "$text" ;;
    esac
  done
  line "$1" "$(printf '%s\n' "${shares[@]}" | sort -n | sed -n "$(((${#shares[@]} + 1) / 2))p")" "the goal" "$2" "% of a core" 1
}
bench_pause() { windows 'C:\windows_bench.exe' pause | processor_share "processor time in the closing pause" 5; }
bench_helper() { windows 'C:\windows_bench.exe' helper | processor_share "processor time while it waits for a helper" 5; }
bench_hidden() {
  export QUILLBARROW_HIDDEN_SECONDS=${QUILLBARROW_HIDDEN_SECONDS:-600}
  say "  hidden: $QUILLBARROW_HIDDEN_SECONDS seconds"
  windows 'C:\windows_bench.exe' hidden |
    processor_share "processor time while hidden for $QUILLBARROW_HIDDEN_SECONDS seconds" 0.1
}

bench_wipe() {
  local trees=$WINEPREFIX/drive_c/trees folder file
  mkdir -p "$trees/ours0"
  for folder in $(seq 0 399); do
    mkdir "$trees/ours0/$folder"
    head -c $((50 * 8192)) /dev/zero | split -b 8192 -a 2 - "$trees/ours0/$folder/f"
  done
  cp -r "$trees/ours0" "$trees/del0"
  for file in 1 2 3 4; do
    cp -r "$trees/ours0" "$trees/ours$file"
    cp -r "$trees/ours0" "$trees/del$file"
  done
  windows 'C:\windows_bench.exe' wipe
  rm -rf "$trees"
}

# The story of the native driver asks the window all the time; its figures in our form. The longest of one run is a matter
# of chance, so the median of three runs counts, each in a copy of the fresh prefix.
bench_audit() {
  local round what
  python3 "$ROOT/tests/native/make_caches.py" "$WORK/audit"
  for round in 1 2 3; do
    say "  audit: $round of 3"
    rm -rf "$WORK/again"
    cp -a "$WORK/fresh" "$WORK/again"
    cp -r "$WORK/audit/." "$WORK/again/drive_c/"
    WINEPREFIX=$WORK/again windows 'C:\native_driver.exe' thumbs |
      sed -nE 's/^ +the window answered within ([0-9.]+) ms, an idle one [^,]*, (.*) \(asked.*/\1 \2/p' >>"$WORK/answers"
    WINEPREFIX=$WORK/again wineserver -k || true
    WINEPREFIX=$WORK/again wineserver -w
  done
  cut -d' ' -f2- "$WORK/answers" | awk '!seen[$0]++' | while read -r what; do
    line "longest answer of the audit's window $what" \
      "$(grep -F " $what" "$WORK/answers" | cut -d' ' -f1 | sort -n | sed -n 2p)" "the goal" 100 ms 1
  done
}

throwaway_prefix
in_prefix
cp -a "$WINEPREFIX" "$WORK/fresh"
for name in "${names[@]}"; do
  say "  under Wine: $name"
  "bench_$name"
done
