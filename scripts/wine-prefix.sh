#!/usr/bin/env bash
# Makes a private 32-bit Wine prefix for headless use. Wine's background services can be left running
# in it, which saves each program seconds of start. Does nothing that is done already.
#
#   scripts/wine-prefix.sh FOLDER                  make the prefix; nothing runs in it afterwards
#   scripts/wine-prefix.sh FOLDER COMMAND [ARG...] make it, run a command with its services, and
#                                                  stop everything in it afterwards
#   . scripts/wine-prefix.sh FOLDER                make it, start its services, and set the
#                                                  environment of this shell
#
# Set CXOL_WINE_GRAPHICS=x11 for windows on a display; without it nothing is drawn.

_cxol_wine_environment() {
  export WINEPREFIX=$1 WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all}
  # A crash must end the program: with the debugger it would wait for ever.
  export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
  if [ "${CXOL_WINE_GRAPHICS:-null}" = null ]; then unset DISPLAY; fi
}

# Ends what runs in the prefix, and waits for it: Wine's server writes the registry when it ends.
_cxol_wine_stop() {
  wineserver -k 2>/dev/null
  timeout 60 wineserver -w
}

# Makes the prefix and sets the environment for it.
_cxol_wine_make() {
  local prefix graphics=${CXOL_WINE_GRAPHICS:-null} settings
  mkdir -p "$1" || return 1
  prefix=$(cd "$1" && pwd) || return 1
  _cxol_wine_environment "$prefix"
  [ "$(cat "$prefix/.cxol-ready" 2>/dev/null)" != "$graphics" ] || return 0
  if [ ! -e "$prefix/system.reg" ]; then
    timeout 300 wineboot -i </dev/null >/dev/null 2>&1 || return 1
    timeout 60 wineserver -w
  fi
  if [ "$graphics" != null ]; then
    # Debian's Wine does not find its own fonts, the one for title bar buttons among them.
    cp /usr/share/wine/fonts/*.ttf "$prefix/drive_c/windows/Fonts/" 2>/dev/null || true
  fi
  settings=$(mktemp --suffix=.reg) || return 1
  # Without a window manager, hiding a managed window takes seconds.
  printf '%s\r\n' 'REGEDIT4' '' \
    '[HKEY_CURRENT_USER\Software\Wine\Drivers]' "\"Graphics\"=\"$graphics\"" '"Audio"=""' '' \
    '[HKEY_CURRENT_USER\Software\Wine\X11 Driver]' '"Managed"="N"' >"$settings"
  timeout 120 wine regedit /S "$settings" </dev/null >/dev/null 2>&1 ||
    { rm -f "$settings"; return 1; }
  rm -f "$settings"
  # The choice of a driver is remembered by the running services.
  _cxol_wine_stop
  printf '%s' "$graphics" >"$prefix/.cxol-ready"
}

# Makes the prefix and starts its services. A caller that stops them at once must not have started
# them: what is being started would start the server anew.
_cxol_wine_prefix() {
  _cxol_wine_make "$1" || return 1
  # Fails when it runs already.
  wineserver -p || true
  timeout 120 wine wineboot </dev/null >/dev/null 2>&1
  if [ "${CXOL_WINE_GRAPHICS:-null}" = null ]; then _cxol_wine_desktop "$WINEPREFIX"; fi
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
  if [ $# -eq 0 ]; then
    _cxol_wine_make "$folder"
  else
    _cxol_wine_prefix "$folder"
    trap '_cxol_wine_stop || true' EXIT
    "$@"
  fi
fi
