#!/bin/bash
# A Speech Dispatcher of its own on the desktop of with_desktop.sh, and what can
# happen to it.
#
#   speech_dispatcher.sh start [VARIABLE=VALUE...]   starts it and waits until it answers
#   speech_dispatcher.sh kill       ends it without a farewell
#   speech_dispatcher.sh freeze|thaw   it answers nobody; answers again
#
# XDG_RUNTIME_DIR names the desktop that it belongs to.
set -u

folder=$XDG_RUNTIME_DIR/speech-dispatcher

start() {
  mkdir -p "$folder/conf"
  cat >"$folder/conf/speechd.conf" <<'CONF'
LogLevel 2
LogDir "default"
AudioOutputMethod "pulse"
DefaultLanguage "en-US"
DefaultModule "espeak-ng"
AddModule "espeak-ng" "sd_espeak-ng" ""
CONF
  rm -f "$folder/speechd.sock"  # of one that was killed
  env "$@" speech-dispatcher --run-single --timeout 0 --config-dir "$folder/conf" >>"$folder/daemon.log" 2>&1 &
  echo $! >"$folder/daemon.pid"
  # Its own clients would start another daemon instead of waiting for this one.
  for (( i = 0; i < 200; ++i )); do
    python3 -c 'import socket, sys; socket.socket(socket.AF_UNIX).connect(sys.argv[1])' "$folder/speechd.sock" \
      2>/dev/null && return
    sleep 0.05
  done
  echo 'Speech Dispatcher did not come up' >&2
  cat "$folder/daemon.log" >&2
  return 1
}

daemon=$(cat "$folder/daemon.pid" 2>/dev/null)
case $1 in
  start) shift; start "$@" ;;
  kill) kill -KILL "$daemon" ;;
  freeze) kill -STOP "$daemon" ;;
  thaw) kill -CONT "$daemon" ;;
  *) sed -n '2,9s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac
