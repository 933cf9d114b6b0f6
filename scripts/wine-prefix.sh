#!/usr/bin/env bash
# Makes a private 32-bit Wine prefix for headless use and leaves Wine's background services running
# in it, which saves each program seconds of start. Does nothing that is done already.
#
#   scripts/wine-prefix.sh FOLDER                  make the prefix
#   scripts/wine-prefix.sh FOLDER COMMAND [ARG...] make it, run a command with its environment, and
#                                                  stop everything in it afterwards
#   . scripts/wine-prefix.sh FOLDER                make it and set the environment of this shell
#
# Set CXOL_WINE_GRAPHICS=x11 for windows on a display; without it nothing is drawn.

_cxol_wine_environment() {
  export WINEPREFIX=$1 WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all}
  # A crash must end the program: with the debugger it would wait for ever.
  export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
  if [ "${CXOL_WINE_GRAPHICS:-null}" = null ]; then unset DISPLAY; fi
}

_cxol_wine_prefix() {
  local prefix graphics=${CXOL_WINE_GRAPHICS:-null}
  mkdir -p "$1" || return 1
  prefix=$(cd "$1" && pwd) || return 1
  _cxol_wine_environment "$prefix"
  if [ "$(cat "$prefix/.cxol-ready" 2>/dev/null)" != "$graphics" ]; then
    if [ ! -e "$prefix/system.reg" ]; then
      wineboot -i </dev/null >/dev/null 2>&1 || return 1
      wineserver -w
    fi
    local settings
    settings=$(mktemp --suffix=.reg) || return 1
    # Without a window manager, hiding a managed window takes seconds.
    printf '%s\r\n' 'REGEDIT4' '' \
      '[HKEY_CURRENT_USER\Software\Wine\Drivers]' "\"Graphics\"=\"$graphics\"" '"Audio"=""' '' \
      '[HKEY_CURRENT_USER\Software\Wine\X11 Driver]' '"Managed"="N"' >"$settings"
    wine regedit /S "$settings" </dev/null >/dev/null 2>&1 || { rm -f "$settings"; return 1; }
    rm -f "$settings"
    # The choice of a driver is remembered by the running services.
    wineserver -k
    wineserver -w
    printf '%s' "$graphics" >"$prefix/.cxol-ready"
  fi
  # Fails when it runs already.
  wineserver -p || true
  wine wineboot </dev/null >/dev/null 2>&1
  if [ "$graphics" = null ]; then _cxol_wine_desktop "$prefix"; fi
}

# Each program with a window would start Wine's desktop and wait a second for its end: some program
# that nobody sees keeps it open.
_cxol_wine_desktop() {
  local process
  for process in /proc/[0-9]*; do
    if grep -qi 'notepad\.exe' "$process/cmdline" 2>/dev/null &&
      grep -qzFx "WINEPREFIX=$1" "$process/environ" 2>/dev/null; then
      return 0
    fi
  done
  # By its full path: a bare name would leave a starter behind, too.
  setsid wine 'C:\windows\system32\notepad.exe' </dev/null >/dev/null 2>&1 &
  disown $!
}

if [ "${BASH_SOURCE[0]}" != "$0" ]; then
  _cxol_wine_prefix "$1"
else
  set -euo pipefail
  if [ $# -lt 1 ]; then
    echo "usage: $0 FOLDER [COMMAND [ARG...]]" >&2
    exit 2
  fi
  folder=$1
  shift
  _cxol_wine_prefix "$folder"
  if [ $# -gt 0 ]; then
    trap 'wineserver -k || true' EXIT
    "$@"
  fi
fi
