#!/bin/sh
# Runs a program for Windows in a Windows of its own: Wine, with its registry and drives in folder PREFIX.
#
#   in_wine.sh PREFIX --make REGISTRY-FILE...   makes it anew, with these entries
#   in_wine.sh PREFIX --end          ends all that still runs in it
#   in_wine.sh PREFIX PROGRAM [ARGUMENT...]
set -eu
export WINEPREFIX=$1 WINEDEBUG=${WINEDEBUG:--all}
# No .NET, no browser, nothing in the menus of the machine's own desktop.
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
shift
case $1 in
  --make)
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    unset DISPLAY
    shift
    wine wineboot --init >"$WINEPREFIX.log" 2>&1 || { cat "$WINEPREFIX.log"; exit 1; }
    for entries; do
      { printf '\377\376' && iconv -f UTF-8 -t UTF-16LE "$entries"; } >"$WINEPREFIX/entries.reg"
      wine regedit /S "Z:$WINEPREFIX/entries.reg"
    done
    wineserver --wait
    ;;
  --end) wineserver --kill || true ;;
  *) exec wine "$@" ;;
esac
