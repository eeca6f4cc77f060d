# Shared by ./run, ./test and the native tests: where things are, and how what is missing gets installed.
# Source it; it changes into the project's root.

set -euo pipefail
CALLED_FROM=$PWD
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$ROOT"

# A path as whoever called the script means it.
from_caller() { case $1 in /*) printf '%s\n' "$1" ;; *) printf '%s\n' "$CALLED_FROM/$1" ;; esac; }

say() { printf '%s\n' "$*" >&2; }

# apt_get WORD … runs apt-get; where another installation is going on it waits for its end, ten minutes at most. APT_WAIT is
# the time between two looks.
apt_get() {
  local become=() problem end=$((SECONDS + 600))
  [ "$(id -u)" -eq 0 ] || become=(sudo)
  # The option covers the packages' lock alone, and not that of the lists.
  until problem=$("${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=600 "$@" 2>&1 >/dev/null); do
    if [[ $problem != *lock* ]] || [ "$SECONDS" -ge "$end" ]; then
      say "$problem"
      return 1
    fi
    sleep "${APT_WAIT:-5}"
  done
}

# need PACKAGE[:COMMAND_OR_FILE] … installs the Debian packages of which the command or file is missing.
need() {
  local missing=() item package probe
  for item in "$@"; do
    package=${item%%:*}
    probe=${item#*:}
    command -v "$probe" >/dev/null 2>&1 || [ -e "$probe" ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if ! command -v apt-get >/dev/null 2>&1 || { [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null 2>&1; }; then
    say "Missing: ${missing[*]}. Install them and start again."
    exit 2
  fi
  say "Installing ${missing[*]} …"
  apt_get update && apt_get install -y --no-install-recommends "${missing[@]}"
}

need_host() { need cmake g++ make; }
# Fails, where others end the script: not every system has these two browsers under these names.
need_browsers() {
  need python3
  (need chromium firefox-esr)
}
need_windows() {
  need g++-mingw-w64-x86-64-posix:x86_64-w64-mingw32-g++-posix wine:wine wine64:/usr/lib/wine/wine64 xvfb:Xvfb \
    xauth:xauth imagemagick:import
}

need_release() {
  need_windows
  need git nsis:makensis nsis-common:/usr/share/nsis/Stubs/lzma_solid-amd64-unicode zip unzip
}

# follow LOG PATTERN COMMAND … runs the command with its output in LOG and gives its status. Meanwhile it shows the last match
# of the pattern in LOG: in place on a terminal, else once a minute on a line.
follow() {
  local log=$1 pattern=$2 status=0 watcher
  shift 2
  : >"$log"
  (
    every=60 before='' after=$'\n' seconds=0
    if [ -t 2 ]; then every=1 before=$'\r\e[K' after=''; fi
    while sleep 1 && kill -0 $$ 2>/dev/null; do
      ((++seconds % every == 0)) || continue
      last=$(grep -oE "$pattern" "$log" | tail -n 1) || continue
      printf '%s  %s%s' "$before" "$last" "$after" >&2
    done
  ) >/dev/null &
  watcher=$!
  "$@" >>"$log" 2>&1 || status=$?
  kill "$watcher" 2>/dev/null || true
  wait "$watcher" 2>/dev/null || true
  if [ -t 2 ]; then printf '\r\e[K' >&2; fi
  return "$status"
}

# build PRESET TARGET [CMAKE_OPTION…] configures if need be and builds; its output is only shown if it fails.
build() {
  local preset=$1 target=$2 log
  shift 2
  log=$ROOT/build/$preset.log
  mkdir -p "$ROOT/build"
  say "Building $preset …"
  configure_and_build() { cmake --preset "$preset" "$@" && cmake --build --preset "$preset" --target "$target" -j "$(nproc)"; }
  if ! follow "$log" '^\[ *[0-9]+%\]' configure_and_build "$@"; then
    tail -n 60 "$log" >&2
    say "The build failed; all of it is in $log"
    exit 1
  fi
}
