#!/usr/bin/env bash
# Installs the Debian packages that building and testing need; does nothing when they are there.
# Needs root or sudo only when something is missing.
set -euo pipefail

packages=(
  g++ cmake ninja-build clang-format
  libgtest-dev libgmock-dev libbenchmark-dev libcli11-dev nlohmann-json3-dev libpugixml-dev libedit-dev
)

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
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
# One index that is out of step must not stop the others.
"${as_root[@]}" apt-get update -qq || true
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
  "${missing[@]}" </dev/null >/dev/null
