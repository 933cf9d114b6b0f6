#!/usr/bin/env bash
# Makes a release: the package, the DLL, its symbols, policies, samples, documents, notices and sums
# in one folder. The same sources give the same bytes, wherever and whenever they are built.
#
#   scripts/release.sh VERSION [FOLDER]      FOLDER: where to, build/release-VERSION by default
#   scripts/release.sh --twice VERSION       makes it twice from two copies of the sources, and
#                                            compares every file
#
# VERSION stands in CMakeLists.txt and as the first heading of CHANGELOG.md, with the day that counts
# as the moment of the release.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"

if [ "${1:-}" = --twice ]; then
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  for copy in one another/copy; do
    mkdir -p "$work/$copy"
    git ls-files -z | xargs -0 cp --parents -t "$work/$copy"
    "$work/$copy/scripts/release.sh" "$2" "$work/release of ${copy%%/*}"
  done
  diff -r "$work/release of one" "$work/release of another"
  echo "Both are the same to the byte."
  exit
fi

version=${1:?usage: scripts/release.sh [--twice] VERSION [FOLDER]}
folder=$(realpath -m "${2:-build/release-$version}")
fail() {
  echo "$1" >&2
  exit 1
}
grep -q "^project(velnor_addin VERSION $version " CMakeLists.txt ||
  fail "CMakeLists.txt says another version than $version."
heading=$(grep -m1 '^## ' CHANGELOG.md)
[[ $heading =~ ^"## $version, "([0-9]{4}-[0-9]{2}-[0-9]{2})$ ]] ||
  fail "CHANGELOG.md begins with \"$heading\", not with \"## $version, YEAR-MONTH-DAY\"."
SOURCE_DATE_EPOCH=$(date -ud "${BASH_REMATCH[1]}" +%s)
export SOURCE_DATE_EPOCH

scripts/setup.sh windows
# The linker writes the full paths of its inputs into the .pdb: they must be the same everywhere.
build=/tmp/velnor-addin-$version-build
mkdir "$build" || fail "Another release is being made, or was left there."
trap 'rm -rf "$build"' EXIT
rm -rf "$folder"
cmake --preset windows -B "$build" -DBUILD_TESTING=OFF >/dev/null
cmake --build "$build" --target velnor-package >"$build/log" || { cat "$build/log"; exit 1; }
dll=$build/windows/cxolcom.dll
for file in "$dll" "$build/windows/velnor-doctor.exe"; do
  windows/tests/check_imports.sh "$file" windows/tests/windows2000_imports.txt i686-w64-mingw32-objdump
done

mkdir -p "$folder/symbols"
cp "$build/packaging/velnor-addin-$version.msi" "$dll" CHANGELOG.md "$folder"
cp docs/{administrators,settings,users,users.de,trace,interfaces}.md standin/script/client.js "$folder"
cp -r packaging/policy docs/pictures "$folder"
cp "$build/cxolcom.pdb" packaging/symbols/resolve.sh "$folder/symbols"
xz -9 -T1 -c "$build/windows/cxolcom.debug" >"$folder/symbols/cxolcom.debug.xz"
{
  cat packaging/NOTICES.txt
  for package in g++-mingw-w64-i686-win32 mingw-w64-i686-dev; do
    printf '\n\n======== %s ========\n\n' "$package"
    cat "/usr/share/doc/$package/copyright"
  done
} >"$folder/NOTICES.txt"
(
  cd "$folder"
  find . -type f ! -name SHA256SUMS -printf '%P\0' | LC_ALL=C sort -z | xargs -0 sha256sum >SHA256SUMS
)
echo "$folder: $(wc -l <"$folder/SHA256SUMS") files"
