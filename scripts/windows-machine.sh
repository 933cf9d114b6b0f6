# Sourced by the scripts that let the add-in run under Wine: a machine is a folder with a Wine prefix
# and, beside it, the programs, with the DLL registered.

_cxol_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
_cxol_windows=${BUILD_WINDOWS:-$_cxol_root/build/windows}

# Fails naming the first file that a machine needs and that was not built.
cxol_built() {
  local file
  for file in "$_cxol_windows/bin/outlook-standin.exe" "$_cxol_windows/bin/velnor-standin.exe" \
    "$_cxol_windows/windows/cxolcom.dll" "$_cxol_windows/bin/libraries/cxmapihlp.dll"; do
    if [ ! -e "$file" ]; then
      echo "missing: $file" >&2
      return 1
    fi
  done
}

# Sets up the machine FOLDER, its programs being those built last, and starts it. Sets the environment
# of this shell and stops the machine when the shell ends.
cxol_machine() {
  mkdir -p "$1" || return 1
  local folder
  folder=$(cd "$1" && pwd) || return 1
  rm -rf "$folder/bin"
  cp -r "$_cxol_windows/bin" "$folder/bin" || return 1
  cp "$_cxol_windows/windows/cxolcom.dll" "$folder/bin/" || return 1
  # shellcheck disable=SC1091
  . "$_cxol_root/scripts/wine-prefix.sh" "$folder/prefix" || return 1
  trap _cxol_wine_stop EXIT
  if ! timeout 120 wine regsvr32 /s "$(timeout 60 winepath -w "$folder/bin/cxolcom.dll")" \
    </dev/null >/dev/null 2>&1; then
    echo "the DLL can't be registered" >&2
    return 1
  fi
}

# cxol_program FILE MAJOR SOURCE: a program like SOURCE, but of this version.
cxol_program() {
  mkdir -p "$(dirname "$1")"
  perl -0777 -pe 's/(\xBD\x04\xEF\xFE.{4}).{8}/$1 . pack("v4", 0, '"$2"', 0, 5608)/se' "$3" >"$1"
}
