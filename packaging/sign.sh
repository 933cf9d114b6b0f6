#!/usr/bin/env bash
# Signs a DLL or a package in place. SHA-1: Windows 2000 to Vista know nothing newer.
#
#   CERTIFICATE=cert.pem KEY=key.pem [TIMESTAMP=URL] packaging/sign.sh FILE
set -euo pipefail
signed=$(mktemp)
trap 'rm -f "$signed"' EXIT
rm "$signed"
osslsigncode sign -h sha1 -certs "$CERTIFICATE" -key "$KEY" ${TIMESTAMP:+-t "$TIMESTAMP"} \
  -n "Velnor Outlook AddIn" -in "$1" -out "$signed"
cat "$signed" >"$1"
