#!/usr/bin/env bash
# spdx.sh VERSION EXE: the list of what is linked into the exe, in the tag-value form of SPDX 2.3, from the map that its link
# left. Fails if that names a library that stands in no row below: its licence would have to be looked at first.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
version=$1
exe=$2
compiler=x86_64-w64-mingw32-g++-posix

gcc=$("$compiler" -dumpfullversion)
mingw=$("$compiler" -E -dM -x c++ -include _mingw_mac.h /dev/null | sed -nE 's/^#define __MINGW64_VERSION_(MAJOR|MINOR|BUGFIX) ([0-9]+)$/\1 \2/p' |
  sort -k1,1r | cut -d' ' -f2)
# Bugfix, major, minor stand in the order of their names turned round: minor, major, bugfix.
read -r minor major bugfix <<<"$(tr '\n' ' ' <<<"$mingw")"
mingw=$major.$minor.$bugfix

# All archives of which a member was taken, by their names.
linked=$(sed -n '/^Archive member included/,/^Discarded input sections\|^Memory Configuration/p' build/windows/Quillbarrow.map |
  sed -nE 's/^([^ ]+\.a)\(.*/\1/p' | sort -u)
strange=
has() { grep -qE "/$1\$" <<<"$linked"; }
while IFS= read -r archive; do
  case "$archive" in
    */lib/gcc/x86_64-w64-mingw32/*/libstdc++.a | */lib/gcc/x86_64-w64-mingw32/*/libgcc.a | */lib/gcc/x86_64-w64-mingw32/*/libgcc_eh.a) ;;
    */x86_64-w64-mingw32/lib/lib*.a) ;; # of mingw-w64, the libraries that name the functions of Windows among them
    libqb_*.a | */libqb_*.a | CMakeFiles/Quillbarrow.dir/objects.a) ;; # its own
    *) strange+=" $archive" ;;
  esac
done <<<"$linked"
if [ -n "$strange" ] || ! has 'libstdc\+\+\.a' || ! has 'lib(win)?pthread\.a' || ! has 'libmingw32\.a'; then
  echo "spdx.sh: cannot tell what is linked in:${strange:- no map of the link}" >&2
  exit 1
fi

# part ID NAME VERSION LICENCE HOME COMMENT
part() {
  printf '\nPackageName: %s\nSPDXID: SPDXRef-%s\nPackageVersion: %s\nPackageDownloadLocation: %s\nFilesAnalyzed: false\n' "$2" "$1" "$3" "$5"
  printf 'PackageLicenseConcluded: %s\nPackageLicenseDeclared: %s\nPackageCopyrightText: NOASSERTION\nPackageComment: <text>%s</text>\n' "$4" "$4" "$6"
  printf 'Relationship: SPDXRef-Quillbarrow STATIC_LINK SPDXRef-%s\n' "$1"
}

sum=$(sha256sum "$exe" | cut -d' ' -f1)
cat <<END
SPDXVersion: SPDX-2.3
DataLicense: CC0-1.0
SPDXID: SPDXRef-DOCUMENT
DocumentName: quillbarrow-$version
DocumentNamespace: https://quillbarrow.example/spdx/$version/$sum
Creator: Tool: release
Created: $(date -u -d "@${SOURCE_DATE_EPOCH:-0}" +%Y-%m-%dT%H:%M:%SZ)

PackageName: Quillbarrow
SPDXID: SPDXRef-Quillbarrow
PackageVersion: $version
PackageFileName: Quillbarrow.exe
PackageDownloadLocation: NOASSERTION
FilesAnalyzed: false
PackageChecksum: SHA256: $sum
PackageLicenseConcluded: NOASSERTION
PackageLicenseDeclared: NOASSERTION
PackageCopyrightText: NOASSERTION
Relationship: SPDXRef-DOCUMENT DESCRIBES SPDXRef-Quillbarrow
END
part libstdcxx 'libstdc++ and libgcc' "$gcc" 'GPL-3.0-or-later WITH GCC-exception-3.1' https://gcc.gnu.org/ \
  'The run-time libraries of the compiler; the exception lets programs that it made be passed on under any terms.'
part winpthreads winpthreads "$mingw" 'MIT AND BSD-3-Clause' https://www.mingw-w64.org/ \
  'Threads for the run-time library of C++; part of mingw-w64.'
part mingw-w64 'mingw-w64 run-time library' "$mingw" 'ZPL-2.1 AND LicenseRef-mingw-w64-parts' https://www.mingw-w64.org/ \
  'The start of a program, mathematics and texts of C, and the names of the functions of Windows.'
cat <<'END'

LicenseID: LicenseRef-mingw-w64-parts
LicenseName: Notices of parts of mingw-w64
ExtractedText: <text>Parts of the run-time library are in the public domain; the conversion of numbers bears the notices of Lucent
Technologies (1997-2001) and David M. Gay, which permit use, copying and distribution for any purpose without fee. The whole
text stands in the file COPYING.MinGW-w64-runtime.txt of mingw-w64.</text>
END
