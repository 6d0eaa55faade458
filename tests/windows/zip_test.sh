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
. "$here/at_desktop.sh"
trap clean_up EXIT

"$here/../../packaging/windows/build" --build "$build" --sounds "$sounds" --output "$work" >/dev/null
place="$work/Závody 赛车"
mkdir "$place"
unzip -q "$work/vorn1-windows.zip" -d "$place"
for file in play.cmd manual.html manual.txt terms/vorn1.txt terms/SDL2.txt; do
  [[ -s $place/vorn1/$file ]] || fail "The archive lacks $file"
done
ls "$place"/vorn1/sounds/*.wav | wc -l | grep -qx 108 || fail 'Not all sounds are there'

forget
cd /
play "$place/vorn1/vorn1.exe"
hear ' Select. Exit Game. '
leave
own=$(own_folder)
[[ -s $own/vorn1log.txt ]] || fail 'There is no log in the folder for players'
cmp "$own/vorn1.wav" "$place/vorn1/sounds/vorn1.wav"
