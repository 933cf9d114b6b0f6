#!/usr/bin/env bash
# Signs DLL and package with a certificate made for the purpose, and has both signatures checked.
#
#   packaging/signing_test.sh FILE...
#
# FILE...: what the package holds.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$@" "$work"
files=("${@##*/}")
cd "$work"
openssl req -x509 -newkey rsa:2048 -nodes -keyout key.pem -out cert.pem -days 2 -sha1 \
  -subj "/CN=Test" -addext extendedKeyUsage=codeSigning 2>/dev/null
export CERTIFICATE=cert.pem KEY=key.pem
for file in "${files[@]}"; do "$here/sign.sh" "$file"; done
"$here/msi/msi.sh" signed.msi "${files[@]}"
"$here/sign.sh" signed.msi
for file in "${files[@]}" signed.msi; do
  osslsigncode verify -CAfile cert.pem -in "$file" || exit 1
done
# A signed file that is changed must be noticed.
printf x | dd of=cxolcom.dll bs=1 seek=5000 conv=notrunc status=none
! osslsigncode verify -CAfile cert.pem -in cxolcom.dll
