#!/bin/bash
# A BRLTTY of its own on the desktop of with_desktop.sh, with a display of forty
# cells that is none: whoever connects to port VORN_BRAILLE_PORT reads the lines
# that it is sent (Visual "text") and writes the commands of its keys.
#
#   braille_daemon.sh start   starts it and waits until it answers
#   braille_daemon.sh kill    ends it without a farewell
#
# XDG_RUNTIME_DIR names the desktop that it belongs to, BRLAPI_HOST where the game looks for it.
set -u

folder=$XDG_RUNTIME_DIR/braille

# answers PORT
answers() {
  (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

start() {
  mkdir -p "$folder"
  rm -f "$folder/pid"  # of one that was killed
  brltty --no-daemon --standard-error --environment-variables --configuration-file=/dev/null \
    --braille-driver=vr --braille-device="server:127.0.0.1:$VORN_BRAILLE_PORT" \
    --screen-driver=no --speech-driver=no --api-parameters="auth=none,host=$BRLAPI_HOST" \
    --writable-directory="$folder" --updatable-directory="$folder" --pid-file="$folder/pid" \
    >>"$folder/daemon.log" 2>&1 &
  echo $! >"$folder/daemon.pid"
  for (( i = 0; i < 200; ++i )); do
    answers $(( 4101 + ${BRLAPI_HOST#*:} )) && return
    sleep 0.05
  done
  echo 'the braille daemon did not come up' >&2
  cat "$folder/daemon.log" >&2
  return 1
}

case $1 in
  start) start ;;
  kill) kill -KILL "$(cat "$folder/daemon.pid")" ;;
  *) sed -n '2,10s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac
