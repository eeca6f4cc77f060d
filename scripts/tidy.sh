#!/usr/bin/env bash
# Runs clang-tidy with the project's checks over what is built for this computer, fuzz targets too, and over what is built for
# Windows alone.
# scripts/tidy.sh [PATTERN…]: only the files whose paths match one of the extended regular expressions. What it finds is
# in build/tidy/findings.log too; the status is 0 if nothing was found.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need clang clang-tidy g++-mingw-w64-x86-64-posix:x86_64-w64-mingw32-g++-posix
need_host
need libgtest-dev:/usr/include/gtest/gtest.h libbenchmark-dev:/usr/include/benchmark/benchmark.h
mkdir -p build/tidy
chosen=${*:-.}
chosen=${chosen// /|}
log=$ROOT/build/tidy/findings.log

# sources PRESET prints the project's own sources of a preset that were asked for, each once.
sources() {
  sed -nE 's/^ *"file": "([^"]*)".*/\1/p' "build/tidy/$1/compile_commands.json" | sort -u | grep -E "$chosen" || true
}

for preset in fuzz windows; do
  say "Configuring $preset …"
  cmake --preset "$preset" -B "build/tidy/$preset" -DQUILLBARROW_TESTS=ON -DQUILLBARROW_BENCH=ON >"$log"
done

# Clang does not find the headers of this flavour of MinGW; those of the compiler itself it brings along.
# Left out there: Windows hands handles and pointers over in numbers, and its headers have types of their own by our names.
for_windows=(--checks=-performance-no-int-to-ptr,-bugprone-forward-declaration-namespace
  --extra-arg-before=--target=x86_64-w64-mingw32)
while read -r folder; do
  for_windows+=("--extra-arg=-isystem$folder")
done < <(x86_64-w64-mingw32-g++-posix -xc++ -E -v /dev/null 2>&1 | grep -E '^ .*(/include/c[+][+].*|mingw32/include)$')

# check PRESET OPTION… checks the files named on its input.
check() {
  local preset=$1
  shift
  xargs -r -n 1 -P "$(nproc)" clang-tidy --quiet -p "build/tidy/$preset" "$@"
}

{
  status=0
  sources fuzz | check fuzz || status=1
  comm -13 <(sources fuzz) <(sources windows) | check windows "${for_windows[@]}" || status=1
  exit "$status"
} 2>&1 | sed -u '/ warnings\? generated\.$/d' | tee "$log"
say "No finding."
