#!/bin/bash
# A game that the player's screen reader reads: what the window raises, with a double in the place of
# UI Automation, is what the captions say. Where Windows knows no such thing its voice says so and speaks.
# Runs within with_desktop.sh.
#
#   reader_test.sh PREFIX PROGRAM AUTOMATION-DOUBLE SOUNDS
set -eu
here=$(cd "$(dirname "$0")" && pwd)
prefix=$1 program=$2 double=$3 sounds=$4
work=$(mktemp -d)
. "$here/at_desktop.sh"

# raised: the texts that the reader was to read, as captions are written.
raised() {
  sed -n 's/^raise 4 [12] Vorn 1 TTS|//p' "$work/raised"
}

sentence='Press Enter as soon as your screen reader has read this sentence to its end'
cp -r "$sounds" "$work/place"
automation=$prefix/drive_c/windows/system32/uiautomationcore.dll
usual_automation() {
  [[ ! -e $automation.usual ]] || mv "$automation.usual" "$automation"
}
trap 'clean_up; usual_automation' EXIT
mv "$automation" "$automation.usual"
cp "$double" "$automation"
export VORN_UIA_LOG=Z:$work/raised VORN_SAPI_LOG=Z:$work/spoken
WINEDLLOVERRIDES=uiautomationcore=n play "$program" --folder "Z:$work/place" --speech reader
hear "$sentence"
answer Return ' Select. Exit Game. '
leave
grep -qx '[0-9]*.' "$work/place/vorn1reader.txt" || fail 'How fast the reader reads is not kept'
# Whoever is in a hurry cuts texts before their turn; what was read is what was said, in that order.
[[ -s $work/raised ]] || fail 'Nothing was raised'
raised | while IFS= read -r text; do
  grep -qxF -- "$text" "$work/captions" || fail "Not said: $text"
done
raised | grep -qF ' Select. Exit Game. ' || fail 'The reader was not told where the game waited'
grep -q '^raise 4 1 ' "$work/raised" || fail 'Nothing took the place of a text'
[[ ! -e $work/spoken ]] || fail 'The voice of Windows spoke as well'

# Not asked again.
rm "$work/raised"
WINEDLLOVERRIDES=uiautomationcore=n play "$program" --folder "Z:$work/place" --speech reader
hear ' Select. Exit Game. '
leave
! grep -qF "$sentence" "$work/captions" || fail 'The player was asked twice'

# Windows before notifications.
usual_automation
rm "$work/raised"
play "$program" --folder "Z:$work/place" --speech reader
hear ' No screen reader listens. The voice of Windows speaks instead. '
hear ' Select. Exit Game. '
leave
grep -q 'Screen reader: .*1709' "$work/errors" || fail 'The reason stands nowhere'
grep -qF ' No screen reader listens. ' "$work/spoken" || fail 'The voice of Windows did not speak'
[[ ! -e $work/raised ]] || fail 'Something was raised all the same'
