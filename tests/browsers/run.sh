#!/usr/bin/env bash
# Lets Chromium and Firefox browse a small web site, lays their profiles on a machine, kills all that the two
# tabs offer, and checks what is gone and that the rest is as before. Then tells which traces of the visit are
# left, for the reader. Ends with 'browsers: N passed, N failed'.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
here=$ROOT/tests/browsers
options=()
[ -f build/host/CMakeCache.txt ] || options=(-DQUILLBARROW_TESTS=OFF)
build host quillbarrow-rehearse "${options[@]}"
export PYTHONDONTWRITEBYTECODE=1

WORK=$(mktemp -d)
clean_up() {
  cd / || exit 1
  rm -rf "$WORK"
}
trap clean_up EXIT

passed=0
failed=0
ok() { echo "ok   $*"; passed=$((passed + 1)); }
bad() { echo "FAIL $*"; failed=$((failed + 1)); }
finish() {
  echo "browsers: $passed passed, $failed failed"
  [ "$failed" -eq 0 ]
  exit
}

timeout 20 chromium --version 2>/dev/null || true
timeout 20 firefox-esr --version 2>/dev/null || true
# In the foreground, so that an interrupt from the keyboard reaches it and the browsers end with it.
timeout --foreground -k 20 240 python3 "$here/browse.py" "$WORK" >"$WORK/browse.txt" 2>&1 || true
cat "$WORK/browse.txt"
passed=$((passed + $(grep -c '^ok   ' "$WORK/browse.txt" || true)))
if [ "$passed" -ne 2 ]; then
  echo "Without the profiles of both there is nothing to run on."
  failed=$((2 - passed))
  finish
fi

# copy_tree FROM TO copies the folders and files that a Windows disk can hold: no sockets and no links, as
# Chromium's SingletonLock and Firefox's lock are here, and no name with a character that Windows does not allow.
unfit='*[:*?"<>|\\]*'
copy_tree() {
  local to
  mkdir -p "$2"
  to=$(cd "$2" && pwd -P)
  (
    cd "$1" || exit 1
    find . ! \( \( -type f -o -type d \) ! -path "$unfit" \) -printf "left out, since Windows cannot hold it: $1/%P\n" |
      sed "s|$WORK/||"
    find . -type d ! -path "$unfit" -print0 | xargs -0 -I{} mkdir -p "$to/{}"
    find . -type f ! -path "$unfit" -exec cp --parents -t "$to" {} +
  )
}

# move_there TO NAME… moves those that are there.
move_there() {
  local to=$1 name
  shift
  mkdir -p "$to"
  for name in "$@"; do
    if [ -e "$name" ]; then mv "$name" "$to/"; fi
  done
}

program=$ROOT/build/host/quillbarrow-rehearse
machine=$WORK/machine
# The program makes its own folder when it first starts; from then on nothing may come.
echo start >"$WORK/first.rehearsal"
timeout 120 "$program" "$machine" "$WORK/first.rehearsal"
user=$machine/drives/C/Users/user
[ -d "$user/AppData/Local/Quillbarrow" ] || { bad "the machine is not what it should be"; finish; }

# Chrome's user data folder has the same form on every system, but for one thing: on Windows, of today, what its
# network service keeps lies in a folder "Network". "Default" stays as made, which is also the older form on
# Windows; "Profile 1" is laid out like today's; "Profile 10" is out of reach.
chrome="$user/AppData/Local/Google/Chrome/User Data"
copy_tree "$WORK/chromium" "$chrome"
copy_tree "$WORK/chromium/Default" "$chrome/Profile 1"
copy_tree "$WORK/chromium/Default" "$chrome/Profile 10"
(
  cd "$chrome/Profile 1" || exit 1
  move_there Network Cookies Cookies-journal 'Network Persistent State' 'Reporting and NEL' 'Reporting and NEL-journal' \
    'Trust Tokens' 'Trust Tokens-journal' 'SCT Auditing Pending Reports' TransportSecurity
)

# On Windows a Firefox profile is parted: what can be made anew lies below the local folder. Here, with a
# profile folder of our choice, Firefox keeps all of it in that one folder.
firefox=$user/AppData/Roaming/Mozilla/Firefox
for name in first.default second.default; do
  copy_tree "$WORK/firefox" "$firefox/Profiles/$name"
  (
    cd "$firefox/Profiles/$name" || exit 1
    shopt -s nullglob
    move_there "$user/AppData/Local/Mozilla/Firefox/Profiles/$name" cache2 startupCache thumbnails OfflineCache \
      jumpListCache safebrowsing settings activity-stream.*.json
  )
done
printf '[Profile0]\r\nName=first\r\nIsRelative=1\r\nPath=Profiles/first.default\r\nDefault=1\r\n\r\n' >"$firefox/profiles.ini"
printf '[Profile1]\r\nName=second\r\nIsRelative=1\r\nPath=Profiles/second.default\r\n' >>"$firefox/profiles.ini"

# What was downloaded is the user's, no trace.
copy_tree "$WORK/downloads-chromium" "$user/Downloads/from Chrome"
copy_tree "$WORK/downloads-firefox" "$user/Downloads/from Firefox"

python3 "$here/check.py" before "$machine" "$WORK/before.json"
if timeout 120 "$program" "$machine" "$here/kill.rehearsal" >"$WORK/kill.txt" 2>&1; then
  ok "the run came to its end, with all 19 classes in its log"
else
  bad "the run did not go as it should:"
  cat "$WORK/kill.txt"
fi
count=$(tail -n 1 "$WORK/kill.txt" | grep -Ex '[0-9]+' || echo -1)
python3 "$here/check.py" after "$machine" "$WORK/before.json" "$count" >"$WORK/check.txt" 2>&1 || true
grep -v '^check: ' "$WORK/check.txt" || true
closing=$(grep -E '^check: [0-9]+ passed, [0-9]+ failed$' "$WORK/check.txt" || true)
if [ -z "$closing" ]; then
  bad "the check did not come to its end"
  finish
fi
read -r _ good _ wrong _ <<<"$closing"
passed=$((passed + good))
failed=$((failed + wrong))

# The pages of the thumbnail audit, with pictures that Chromium itself has made.
timeout --foreground -k 20 240 python3 "$here/thumbs.py" "$WORK" "$program" >"$WORK/thumbs.txt" 2>&1 ||
  bad "the pages of the thumbnail audit were not looked at"
cat "$WORK/thumbs.txt"
passed=$((passed + $(grep -c '^ok   ' "$WORK/thumbs.txt" || true)))
failed=$((failed + $(grep -c '^FAIL ' "$WORK/thumbs.txt" || true)))
finish
