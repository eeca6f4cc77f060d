#!/usr/bin/env bash
# Called by run.sh as an ordinary user, in a folder that has all that is needed.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
source "$ROOT/scripts/wine_prefix.sh"

mkdir "$ROOT/prefix"
make_prefix "$ROOT/prefix"
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
[ ! -e "$WINEPREFIX/dosdevices/z:" ] || { say "There is a drive Z:"; exit 1; }
drive=$WINEPREFIX/drive_c
mkdir "$drive/helper"
cp "$ROOT/conformance_windows.exe" "$drive/"
cp "$ROOT/conformance_windows.exe" "$drive/helper/end.exe"
cd "$drive"
xvfb-run -a "$ROOT/compare" --tests "$ROOT/conformance" --drive "$drive" "$@"
