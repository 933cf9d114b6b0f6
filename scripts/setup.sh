#!/usr/bin/env bash
# Installs the Debian packages that building and testing need; does nothing when they are there. Needs
# root or sudo only when something is missing.
#
#   scripts/setup.sh [windows] [screen]
#
# windows: also those for the DLL and its package, the cross compiler and Wine; screen: also those for
# pictures of its windows.
set -euo pipefail

packages=(
  g++ cmake ninja-build clang-format clang-14 libclang-rt-14-dev git
  libgtest-dev libgmock-dev libbenchmark-dev libcli11-dev nlohmann-json3-dev libpugixml-dev libedit-dev
)
foreign=
for part in "$@"; do
  case $part in
    windows)
      packages+=(g++-mingw-w64-i686-win32 mingw-w64-tools wine wine32:i386 googletest
        wixl msitools faketime osslsigncode openssl xz-utils)
      foreign=i386
      ;;
    screen) packages+=(xvfb xauth imagemagick fonts-liberation fonts-wine) ;;
    *)
      echo "usage: $0 [windows] [screen]" >&2
      exit 2
      ;;
  esac
done

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | head -1 || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -eq 0 ]; then
  as_root=()
elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
  as_root=(sudo)
else
  echo "These Debian packages are missing: ${missing[*]}" >&2
  echo "Install them with: apt-get install ${missing[*]}" >&2
  exit 1
fi

echo "Installing: ${missing[*]}"
# Wine for 32-bit programs is of the other architecture.
[ -z "$foreign" ] || "${as_root[@]}" dpkg --add-architecture "$foreign"
# One index that is out of step must not stop the others.
"${as_root[@]}" apt-get update -qq || true
# From one release: the two architectures must not want different versions of one library.
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
  -t bookworm "${missing[@]}" </dev/null >/dev/null
