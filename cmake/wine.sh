#!/bin/sh
# Runs a Windows program, with a quiet Wine and a prefix of this source tree's own.
#   wine.sh PROGRAM [ARGUMENT]...
#   wine.sh --stop                 ends the prefix's server
here=$(cd "$(dirname "$0")/.." && pwd)
: "${WINEPREFIX:=$here/build/wine}" "${WINEDEBUG:=-all}" "${WINEDLLOVERRIDES:=mscoree,mshtml=}"
: "${HOME:=$here/build}"
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES HOME
export WINEARCH=win64
mkdir -p "$(dirname "$WINEPREFIX")"
if [ "$1" = --stop ]; then
    wineserver -k || true
    exit 0
fi
exec wine "$@"
