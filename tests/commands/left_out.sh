#!/usr/bin/env bash
# Where a part of ./test cannot be played, as its browsers are not to be had: it is named at the end, and who asks for that
# part, or for all with CI set, is told of a failure. All tools are stand-ins; what they would test counts as passed.
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
mkdir -p "$WORK/project/scripts" "$WORK/project/tests/native" "$WORK/project/tests/release" "$WORK/project/tests/conformance" "$WORK/bin"
cp "$HERE/test" "$WORK/project/"
cp "$HERE/scripts/common.sh" "$WORK/project/scripts/"
for part in conformance native release; do echo "echo '$part: 1 passed, 0 failed'" >"$WORK/project/tests/$part/run.sh"; done
for tool in bash env sed touch grep cut uname nproc tail head mkdir dirname sleep id cat date; do ln -s "$(command -v "$tool")" "$WORK/bin/$tool"; done
stand_in() { printf '#!/usr/bin/env bash\n%s\n' "$2" >"$WORK/bin/$1"; chmod +x "$WORK/bin/$1"; }
stand_in ctest 'echo "100% tests passed, 0 tests failed out of 1"'
stand_in clang++ 'echo 14'
stand_in apt-get '[[ $* != *chromium* ]] || { echo "E: Unable to locate package chromium" >&2; exit 100; }'
stand_in sudo 'exec "$@"'
for tool in cmake g++ make python3; do stand_in "$tool" ''; done

# tries CI EXIT PASSED_AND_FAILED [PART …]
tries() {
  local ci=$1 wanted=$2 closing=$3 status=0 said
  shift 3
  said=$(env -i PATH="$WORK/bin" ${ci:+CI="$ci"} bash "$WORK/project/test" "$@" 2>"$WORK/errors") || status=$?
  if [ "$status" -ne "$wanted" ] || [ "$(tail -n 1 <<<"$said")" != "$closing" ] || ! grep -q '^left out: browsers, ' <<<"$said"; then
    printf './test %s with CI "%s" ended with %s and said:\n%s\n' "$*" "$ci" "$status" "$said"
    cat "$WORK/errors"
    exit 1
  fi
}
tries '' 0 '6 passed, 0 failed'
tries true 1 '6 passed, 1 failed'
tries '' 1 '0 passed, 1 failed' browsers
