#!/bin/sh
# Runs a program for Windows in a Windows of its own: Wine, with its registry and drives in folder PREFIX.
#
#   in_wine.sh PREFIX --make REGISTRY-FILE...   makes it anew, with these entries
#   in_wine.sh PREFIX --end          ends all that still runs in it
#   in_wine.sh PREFIX PROGRAM [ARGUMENT...]
set -eu
export WINEPREFIX=$1 WINEDEBUG=${WINEDEBUG:--all}
# No .NET, no browser, nothing in the menus of the machine's own desktop, and what the test wants besides.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=;${WINEDLLOVERRIDES:-}"
shift
# What is read-only is so for root too, who on Windows has no more rights than others.
drop=
[ "$(id -u)" != 0 ] || drop='setpriv --inh-caps=-dac_override --bounding-set=-dac_override'
case $1 in
  --make)
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    unset DISPLAY
    shift
    $drop wine wineboot --init >"$WINEPREFIX.log" 2>&1 || { cat "$WINEPREFIX.log"; exit 1; }
    for entries; do
      { printf '\377\376' && iconv -f UTF-8 -t UTF-16LE "$entries"; } >"$WINEPREFIX/entries.reg"
      $drop wine regedit /S "Z:$WINEPREFIX/entries.reg"
    done
    wineserver --wait
    ;;
  --end) wineserver --kill || true ;;
  *) exec $drop wine "$@" ;;
esac
