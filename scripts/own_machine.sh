#!/usr/bin/env bash
# own_machine.sh MACHINE EXPORT…   makes a machine with the registry of a real computer: EXPORT is what
# `regedit /e all.reg` or `reg export HKCU user.reg` wrote there. docs/machine.md tells what else a machine needs.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

if [ $# -lt 2 ]; then
  sed -n '2,3s/^# //p' "$ROOT/scripts/own_machine.sh" >&2
  exit 2
fi
machine=$(from_caller "$1")
shift
exports=()
for export in "$@"; do exports+=("$(from_caller "$export")"); done
for export in "${exports[@]}"; do [ -r "$export" ] || { say "$export cannot be read"; exit 2; }; done
[ ! -e "$machine/registry.reg" ] || { say "$machine is a machine already"; exit 2; }
program=$ROOT/build/host/quillbarrow-rehearse
[ -x "$program" ] || { need_host; build host quillbarrow-rehearse; }

joined=$(mktemp)
trap 'rm -f "$joined"' EXIT
printf 'Windows Registry Editor Version 5.00\r\n' >"$joined"
for export in "${exports[@]}"; do
  # The header of each file goes, and the mark of the byte order.
  if [ "$(head -c 2 "$export" | od -An -tx1 | tr -d ' ')" = fffe ]; then iconv -c -f UTF-16 -t UTF-8 "$export"; else cat "$export"; fi |
    LC_ALL=C sed '1{s/^\xef\xbb\xbf//;/^Windows Registry Editor/d}' >>"$joined"
done
# An export of everything has the user's keys under the number of the account alone.
if ! LC_ALL=C grep -aq '^\[HKEY_CURRENT_USER' "$joined"; then
  accounts=$(LC_ALL=C grep -aoE '^\[HKEY_USERS\\S-1-5-21-[-0-9]+' "$joined" | sort -u | sed 's/.*\\//')
  account=${ACCOUNT:-$accounts}
  if [ "$(grep -c . <<<"$account")" -ne 1 ]; then
    say "Whose registry? Set ACCOUNT to one of these (on that computer: whoami /user):" $accounts
    exit 2
  fi
  LC_ALL=C sed -i "s/^\\[HKEY_USERS\\\\$account\\([]\\\\]\\)/[HKEY_CURRENT_USER\\1/" "$joined"
fi
"$program" "$machine" /dev/null
cp "$joined" "$machine/registry.reg"
"$program" "$machine" /dev/null
