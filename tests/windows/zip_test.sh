#!/bin/bash
# The archive as a player finds it: unpacked into a folder with a name of some other alphabet, started by
# nothing but its program, left by keys. His files lie where Windows has them afterwards.
# Runs within with_desktop.sh.
#
#   zip_test.sh PREFIX BUILD SOUNDS
set -eu
here=$(cd "$(dirname "$0")" && pwd)
prefix=$1 build=$2 sounds=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "$1" >&2
  cat "$work/captions" >&2
  exit 1
}

# hear TEXT: waits until the game has said it.
hear() {
  for (( i = 0; i < 1200; ++i )); do
    grep -qF -- "$1" "$work/captions" && return
    sleep 0.05
  done
  fail "Never heard: $1"
}

"$here/../../packaging/windows/build" --build "$build" --sounds "$sounds" --output "$work" >/dev/null
place="$work/Závody 赛车"
mkdir "$place"
unzip -q "$work/vorn1-windows.zip" -d "$place"
for file in play.cmd manual.html manual.txt terms/vorn1.txt terms/SDL2.txt; do
  [[ -s $place/vorn1/$file ]] || fail "The archive lacks $file"
done
ls "$place"/vorn1/sounds/*.wav | wc -l | grep -qx 108 || fail 'Not all sounds are there'

rm -rf "$prefix"/drive_c/users/*/AppData/Roaming/vorn1
cd /
"$here/in_wine.sh" "$prefix" "$place/vorn1/vorn1.exe" --captions >"$work/captions" 2>"$work/errors" &
game=$!
hear ' Select. Exit Game. '
sleep 1
xdotool keydown Return; sleep 0.2; xdotool keyup Return
hear ' exiting program '
wait $game || fail 'It ended badly'
own=$(echo "$prefix"/drive_c/users/*/AppData/Roaming/vorn1)
[[ -s $own/vorn1log.txt ]] || fail 'There is no log in the folder for players'
cmp "$own/vorn1.wav" "$place/vorn1/sounds/vorn1.wav"
