#!/usr/bin/env bash
# Plays the sequences on a machine and, as an ordinary user in a throwaway prefix, under Wine, and compares.
# `run.sh [--seed N] [--random N]`; without a seed it is 1. Ends with 'conformance: N passed, N failed'.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

# All that the other user needs lies in a folder of his own: he may not see the project.
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
cp -r "$ROOT/scripts" "$ROOT/tests/conformance" "$WORK/"
cp "$ROOT/build/host/tests/conformance/conformance" "$WORK/compare"
cp "$ROOT/build/windows/conformance_windows.exe" "$WORK/"
become=()
if [ "$(id -u)" -eq 0 ]; then
  # To root everything is allowed, read-only files too.
  user=65534
  chown -R "$user:$user" "$WORK"
  chmod 700 "$WORK"
  become=(setpriv --reuid="$user" --regid="$user" --clear-groups)
fi
cd "$WORK"
"${become[@]}" env HOME="$WORK" TMPDIR="$WORK" LC_ALL=C.UTF-8 TZ=UTC bash "$WORK/conformance/compare.sh" "$@"
