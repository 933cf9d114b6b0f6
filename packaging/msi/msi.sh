#!/usr/bin/env bash
# Makes the installable package. The version is that of the add-in's DLL, its first three numbers.
#
#   packaging/msi/msi.sh OUTPUT FILE...
#
# FILE...: what velnor-addin.wxs names, cxolcom.dll among them. The same files and SOURCE_DATE_EPOCH
# (default: a fixed day) give the same package to the byte.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=packaging/msi/lib.sh
. "$here/lib.sh"
output=$(realpath -m "$1")
shift
export TZ=UTC LC_ALL=C.UTF-8
moment=$(date -d "@${SOURCE_DATE_EPOCH:-1136073600}" '+%Y-%m-%d %H:%M:%S')

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cp "$@" "$here/velnor-addin.wxs" "$stage/"
cd "$stage"
touch -d "$moment" -- *
version=$(file_version cxolcom.dll)
[ -n "$version" ] || { echo "cxolcom.dll has no version." >&2; exit 1; }

# One product code a version, one package code a content.
product=$(name_id "velnor-addin $version")
package=$(name_id "$(cat -- * "$here"/msi.sh "$here"/registration.txt | sha256sum) $moment")

# What these tools dislike they often only mention: any word of theirs is a failure.
quietly() {
  local said
  if said=$(faketime -f "$moment" "$@" 2>&1) && [ -z "$said" ]; then return 0; fi
  printf '%s: %s\n' "$1" "$said" >&2
  exit 1
}
quietly wixl -D "ProductCode=$product" -D "Version=${version%.*}" -o addin.msi velnor-addin.wxs
query() { quietly msibuild addin.msi -q "$1"; }

# The registry: classes and type library with the DLL, Outlook's entry once a root.
{
  printf 'Registry\tRoot\tKey\tName\tValue\tComponent_\r\n'
  printf 's72\ti2\tl255\tL255\tL0\ts72\r\n'
  printf 'Registry\tRegistry\r\n'
  row=0
  while IFS='|' read -r key name value; do
    subkey=${key#*\\}
    value=${value//"{dll}"/"[#cxolcom.dll]"}
    value=${value//"{folder}"/"[INSTALLFOLDER]"}
    part=Entry
    [ "$name" != LoadBehavior ] || part=Load
    case $key in
      HKEY_LOCAL_MACHINE*) rows=("2 Addin") ;;
      *) rows=("1 User$part" "2 Machine$part") ;;
    esac
    for each in "${rows[@]}"; do
      row=$((row + 1))
      printf 'r%03d\t%s\t%s\t%s\t%s\t%s\r\n' $row "${each% *}" "$subkey" "$name" "$value" "${each#* }"
    done
  done <"$here/registration.txt"
} >Registry.idt
quietly msibuild addin.msi -i Registry.idt
query "INSERT INTO \`InstallExecuteSequence\` (\`Action\`, \`Sequence\`) VALUES ('RemoveRegistryValues', 2600)"
query "INSERT INTO \`InstallExecuteSequence\` (\`Action\`, \`Sequence\`) VALUES ('WriteRegistryValues', 5000)"
# A registry value is the key of these components (4); one that is there already stays as it is (128).
while IFS=$'\t' read -r id _ _ name _ component; do
  component=${component%$'\r'}
  case $component:$name in
    *Entry:FriendlyName) attributes=4 ;;
    *Load:*) attributes=132 ;;
    *) continue ;;
  esac
  query "UPDATE \`Component\` SET \`KeyPath\` = '$id', \`Attributes\` = $attributes WHERE \`Component\` = '$component'"
done <Registry.idt

# Outlook is also known by its class, under the key's default value.
query "INSERT INTO \`RegLocator\` (\`Signature_\`, \`Root\`, \`Key\`, \`Type\`) VALUES ('OutlookClass', 2, 'Software\\Classes\\Outlook.Application\\CLSID', 2)"
query "INSERT INTO \`AppSearch\` (\`Property\`, \`Signature_\`) VALUES ('OUTLOOK', 'OutlookClass')"

# The old version goes when the new one stands, so that what both have, the user's choice among it,
# is never taken away.
query "UPDATE \`InstallExecuteSequence\` SET \`Sequence\` = 6700 WHERE \`Action\` = 'RemoveExistingProducts'"

# A file without a version here would be judged by its hash or its age, and might be kept or lost in
# an upgrade. A long name goes with a short one.
while IFS=$'\t' read -r id _ name _; do
  name=${name##*|}
  short=$name
  [[ $name =~ ^[^.]{1,8}(\.[^.]{1,3})?$ ]] || short=${name:0:6}~1.${name##*.}
  [ "$short" = "$name" ] || query "UPDATE \`File\` SET \`FileName\` = '${short^^}|$name' WHERE \`File\` = '$id'"
  numbers=$(file_version "$name")
  [ -n "$numbers" ] || continue
  query "UPDATE \`File\` SET \`Version\` = '$numbers', \`Language\` = '1033' WHERE \`File\` = '$id'"
  query "DELETE FROM \`MsiFileHash\` WHERE \`File_\` = '$id'"
done < <(msiinfo export addin.msi File | tail -n +4)
query "UPDATE \`Directory\` SET \`DefaultDir\` = 'VELNOR|Velnor Outlook AddIn' WHERE \`Directory\` = 'INSTALLFOLDER'"
quietly msibuild addin.msi -s "Velnor Outlook AddIn ${version%.*}" K9T 'Intel;1033' "{$package}"

mkdir -p "$(dirname "$output")"
mv addin.msi "$output"
