#!/usr/bin/env bash
# Makes the sample machine, plays the run on it, and tells what each class removed and what stayed.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"

program=$ROOT/build/host/quillbarrow-rehearse
machine=$ROOT/build/demo/machine
rm -rf "$ROOT/build/demo/machine"
mkdir -p "$ROOT/build/demo"

ask() { printf '%s\n' "$1" | "$program" "$machine"; }
# Files below a folder; what stands behind a junction is not counted as the folder's own.
files() { ask "files \"$1\"" | grep -vc '\\$' || true; }
values() { ask "reg show \"$1\"" | grep -c ' [sed]' || true; }
there() { for path in "$@"; do ask "exists \"$path\""; done | grep -c file || true; }
fragments() { ask 'files C:\' | grep -c '^FILE[0-9]*\.CHK$' || true; }
lists() { local sum=0 ext; for ext in doc xls pps exe txt zip '*'; do sum=$((sum + $(values "$1\\$ext"))); done; echo $sum; }

explorer='HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer'
player='HKCU\Software\Microsoft\MediaPlayer\Player'
count_all() {
  values "$explorer\\RunMRU"
  files 'C:\Users\user\AppData\Roaming\Microsoft\Windows\Recent'
  echo $(($(values "$player\\RecentURLList") + $(values "$player\\RecentFileList") +
          $(there 'C:\WINDOWS\wmplibrary_v_0_12.db' 'C:\WINDOWS\Application Data\Microsoft\Media Player\ActivePlaylist.dat')))
  ask recycle
  fragments
  files 'C:\WINDOWS\TEMP'
  echo $(($(files 'C:\WINDOWS\Application Data\Microsoft\Office\Recent') + $(lists "$explorer\\ComDlg32\\OpenSaveMRU")))
  files 'C:\Users\user\Documents'
  files 'C:\Users\user\AppData\Roaming\Mozilla'
  files 'C:\Users\user\AppData\Local\Google'
  there 'C:\FILES.TXT' 'C:\WINDOWS\SYSTEM.INI' 'C:\WINDOWS\Application Data\Microsoft\Office\Templates\Normal.dot'
  echo $(($(values "$explorer\\Advanced") + $(values "$player\\Settings") + $(values "$explorer\\ComDlg32\\OpenSaveMRU\\pdf")))
}
names=("Windows Start, Run drop-list" "Windows Recent Documents list" "Windows Media player lists" "Windows Recycle Bin"
  "File Fragments (*.CHK)" "Windows Temp Folder" "MS Office Recent File List"
  "documents (must stay)" "Firefox profile (not ticked)" "Chrome profile (not ticked)" "files beside the traces (must stay)"
  "registry values beside them (must stay)")

"$program" "$machine" demo/used_computer.rehearsal
mapfile -t before < <(count_all)

echo "Kill Now! on the sample machine:"
{ cat demo/used_computer.rehearsal; cat demo/kill_windows.rehearsal; } >"$ROOT/build/demo/all.rehearsal"
# The machine is the same one: the first part is played again because locks do not outlive a rehearsal.
rm -rf "$ROOT/build/demo/machine"
"$program" "$machine" "$ROOT/build/demo/all.rehearsal" | awk '
  /^ - Searching/ { line = 0 }
  /^ - / { if (++line > shown) { shown = line; print " " $0; fflush() } next }
  { print; fflush() }'

mapfile -t after < <(count_all)
printf '\n%-42s %7s %7s %7s\n' "" before gone left
for i in "${!names[@]}"; do
  printf '%-42s %7d %7d %7d\n' "${names[$i]}" "${before[$i]}" $((before[i] - after[i])) "${after[$i]}"
done
echo
echo "One temp file was held open by another program and stayed."
echo "The machine is left in build/demo/machine for a look."
