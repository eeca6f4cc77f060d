#!/usr/bin/env bash
# Another installation holds the lock for a while: what is missing is installed all the same. What apt cannot do at all
# is told at once, and fails.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
cat >"$WORK/apt-get" <<'STUB'
#!/usr/bin/env bash
echo "${*: -1}" >>"$WORK/calls"
[ "$(wc -l <"$WORK/calls")" -gt 2 ] || { echo "E: Could not get lock /var/lib/apt/lists/lock." >&2; exit 100; }
[ -z "$BROKEN" ] || { echo "E: Unable to fetch some archives." >&2; exit 100; }
STUB
printf '#!/usr/bin/env bash\nexec "$@"\n' >"$WORK/sudo"
chmod +x "$WORK/apt-get" "$WORK/sudo"
export WORK PATH=$WORK:$PATH APT_WAIT=0 BROKEN=
need none:/none/such
[ "$(tr '\n' ' ' <"$WORK/calls")" = "update update update none " ]
rm "$WORK/calls"
BROKEN=1
if (need none:/none/such); then exit 1; fi
[ "$(wc -l <"$WORK/calls")" -eq 3 ]
