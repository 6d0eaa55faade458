#!/bin/sh
# The check of the floors finds each fault planted in a small tree, and names its line.
set -eu
check=$(dirname "$(realpath "$0")")/check_floors.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# A sound house: something on each kind of floor, includes running down.
house() {
  rm -rf "$work/src"
  mkdir -p "$work/src"
  cd "$work/src"
  mkdir -p platform/common platform/mixing platform/desktop platform/headless text state race demo
  touch text/reals.h
  touch platform/common/random.h platform/desktop/window.h platform/headless/trace.h
  add platform/platform.h '#include <string>'
  add platform/mixing/mixer.h '#include "platform/platform.h"' '#include "text/reals.h"'
  add platform/desktop/window.cpp '#include <SDL.h>' '#include "platform/mixing/mixer.h"' '#include "platform/desktop/window.h"'
  add state/state.h '#include "platform/platform.h"'
  add race/walls.h '#include "state/state.h"'
  add race/walls.cpp '#include "race/walls.h"' '' '#include <vector>' '#include "platform/platform.h"'
  add demo/demo.cpp '#include "platform/common/random.h"' '#include "race/walls.h"'
  add main.cpp '#include "demo/demo.h"' '#include "platform/headless/trace.h"'
}

# add FILE LINE...
add() {
  file=$1
  shift
  printf '%s\n' "$@" >>"$file"
}

# expect SENTENCE: the check fails with this line, and with no other.
expect() {
  if said=$("$check" "$work/src" 2>&1); then
    echo "passed, instead of: $1"
  elif [ "$said" != "$1" ]; then
    printf 'said:    %s\ninstead: %s\n' "$said" "$1"
  else
    return 0
  fi
  failures=$((failures + 1))
}

# fault FILE INCLUDE SENTENCE: this include in line 1 of a new file is a fault.
fault() {
  house
  add "$1" "#include $2"
  expect "$1:1: $3"
}

house
if ! "$check" "$work/src"; then
  echo "the sound house was refused"
  failures=1
fi

house
add race/walls.cpp '#include "platform/mixing/mixer.h"'
expect 'race/walls.cpp:5: the game knows only headers directly in platform/, not platform/mixing/mixer.h'

house
add race/walls.cpp '  #  include "shell/menus.h"'
expect 'race/walls.cpp:5: climbs to shell/menus.h'

game='the game knows only headers directly in platform/, not'
for room in state text clock speech input sound records options race pit tracks shell; do
  house
  mkdir -p "$work/src/$room"
  add $room/new.cpp '#include "platform/platform.h"' '#include "platform/common/random.h"'
  expect "$room/new.cpp:2: $game platform/common/random.h"
done
fault race/new.cpp '"platform/desktop/window.h"' "$game platform/desktop/window.h"
fault race/new.cpp '"platform/headless/trace.h"' "$game platform/headless/trace.h"
fault race/new.cpp '"../platform/mixing/mixer.h"' 'the path is not from the top: ../platform/mixing/mixer.h'
fault race/new.cpp '<platform/mixing/mixer.h>' 'above the platform there is no platform/mixing/mixer.h'
fault race/new.cpp '<SDL.h>' 'above the platform there is no SDL.h'
fault race/new.cpp '<sys/stat.h>' 'above the platform there is no sys/stat.h'
fault state/new.h '"race/walls.h"' 'climbs to race/walls.h'
fault race/new.cpp '"demo/demo.h"' 'climbs to demo/demo.h'

fault platform/common/new.h '"state/state.h"' \
  'the platform knows nothing of the game, yet includes state/state.h'
for room in common mixing desktop headless; do
  fault platform/new.h "\"platform/$room/new.h\"" "climbs within the platform to platform/$room/new.h"
done
for shared in common mixing; do
  for backend in desktop headless; do
    fault platform/$shared/new.h "\"platform/$backend/new.h\"" \
      "climbs within the platform to platform/$backend/new.h"
  done
done
fault platform/desktop/new.h '"platform/headless/trace.h"' 'a backend knows no other, yet includes platform/headless/trace.h'
fault platform/headless/new.h '"platform/desktop/window.h"' 'a backend knows no other, yet includes platform/desktop/window.h'

house
add race/one.h '#include "race/two.h"'
add race/two.h '#include "race/one.h"'
case $("$check" "$work/src" || true) in
  'includes itself by way of others: race/'*.h) ;;
  *) echo "a circle was not found"; failures=$((failures + 1)) ;;
esac

house
find "$work/src" -type f -exec sh -c ': >"$1"' _ {} \;
expect 'no includes were found: is this the source tree?'

exit $((failures > 0))
