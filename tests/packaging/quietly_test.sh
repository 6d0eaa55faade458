#!/bin/bash
# quietly: words only every now and then, and all of them where something fails.
#
#   quietly_test.sh SOURCE
set -eu
. "$1/packaging/quietly.sh"
export VORN_TELL_EVERY=1

fail() {
  echo "FAILED: $1" >&2
  exit 1
}

[[ -z $(quietly 'Being quick' echo a word) ]] || fail 'a quick step was not quiet'

# Waits until a line has been said, so that no time is too short.
long_step() { printf '[1/9] one\n[4/9] two\n'; until grep -q . "$told"; do sleep 0.1; done; }
told=$(mktemp)
trap 'rm -rf "$told" "$told.place"' EXIT
quietly 'Building' long_step >"$told"
[[ $(head -n 1 "$told") == 'Building: 4 of 9.' ]] || fail "told: $(cat "$told")"

plain_step() { until grep -q . "$told"; do sleep 0.1; done; }
: >"$told"
quietly 'Installing' plain_step >"$told"
[[ $(head -n 1 "$told") == 'Installing: 1 seconds.' ]] || fail "told: $(cat "$told")"

broken_step() { echo the reason; return 3; }
status=0
words=$(quietly 'Breaking' broken_step 2>&1) || status=$?
[[ $status == 1 && $words == 'the reason' ]] || fail "a failure: $status, $words"
# A script that is stopped tells no more, and its words are gone.
mkdir "$told.place"
TMPDIR=$told.place sh -c '. "$1"; endless_step() { while :; do sleep 0.1; done; }; quietly Stopping endless_step' \
  sh "$1/packaging/quietly.sh" >"$told" &
stopped=$!
disown
until grep -q 'Stopping: 1 seconds.' "$told"; do sleep 0.1; done
kill -KILL $stopped
for (( i = 0; i < 600; ++i )); do
  [[ -n $(ls "$told.place") ]] || break
  sleep 0.1
done
rmdir "$told.place" || fail 'a stopped script goes on'
told_then=$(cat "$told")
sleep 2
[[ $(cat "$told") == "$told_then" ]] || fail 'a stopped script tells on'
echo 'Quiet, but not silent.'
