#!/usr/bin/env bash
# A script or an export is looked for where the caller is, and not where the project lies.
cd /usr || exit 1
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
[ "$PWD" = "$ROOT" ] && [ "$(from_caller share/x)" = /usr/share/x ] && [ "$(from_caller /etc/x)" = /etc/x ]
