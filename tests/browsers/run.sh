#!/usr/bin/env bash
# Has Debian's Chromium and Firefox browse, puts their profiles into a machine, and runs all of both tabs on
# it: what is named goes, all else stays. Ends with 'browsers: N passed, N failed'.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

build host quillbarrow-rehearse
WORK=$(mktemp -d)
leave() {
  cd / || exit 1
  rm -rf "$WORK"
}
trap leave EXIT
here=$ROOT/tests/browsers
machine=$WORK/machine
rehearse() { timeout 120 "$ROOT/build/host/quillbarrow-rehearse" "$machine"; }

chromium --version 2>/dev/null
firefox-esr --version
# A home of their own, so that they read and write nothing of the user's.
mkdir "$WORK/home"
HOME=$WORK/home XDG_CONFIG_HOME=$WORK/home/.config XDG_CACHE_HOME=$WORK/home/.cache \
  timeout 300 python3 -B "$here/browse.py" "$WORK/chromium" "$WORK/firefox"

rehearse </dev/null
python3 -B "$here/profiles.py" place "$machine" "$WORK/chromium" "$WORK/firefox"
python3 -B "$here/profiles.py" snapshot "$machine" "$WORK/before.json"
counts=$(rehearse <<'SCRIPT'
start
choose SftTabs1 1
tick chkNS_all
click cmdKILLALL
get HistoryRemoved
choose SftTabs1 1
untick chkNS_all
choose SftTabs1 2
tick chkChrome_All
click cmdKILLALL
get HistoryRemoved
SCRIPT
)
# shellcheck disable=SC2086  # two numbers
python3 -B "$here/profiles.py" compare "$machine" "$WORK/before.json" $counts
