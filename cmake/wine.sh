#!/bin/sh
# Runs a Windows program, with a quiet Wine and a prefix of this source tree's own.
#   wine.sh PROGRAM [ARGUMENT]...
#   wine.sh --start                makes the prefix and keeps its server, so that programs start fast
#   wine.sh --stop                 ends the server
here=$(cd "$(dirname "$0")/.." && pwd)
: "${WINEPREFIX:=$here/build/wine}" "${WINEDEBUG:=-all}" "${WINEDLLOVERRIDES:=mscoree,mshtml=}"
: "${HOME:=$here/build}"
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES HOME
export WINEARCH=win64
mkdir -p "$(dirname "$WINEPREFIX")"
case $1 in
--start)
    # The server and its services would keep the caller's pipes open, so they get none of them.
    wineserver -p >/dev/null 2>&1 </dev/null || true
    wine wineboot --init >/dev/null 2>&1 </dev/null
    # Nobody manages the windows of the tests' screen, and two seconds would be waited for him at
    # each of them.
    exec wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1 </dev/null
    ;;
--stop) wineserver -k || true ;;
*) exec wine "$@" ;;
esac
