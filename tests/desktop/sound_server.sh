#!/bin/bash
# The sound server of with_desktop.sh, and what can happen to it.
#
#   sound_server.sh start      starts it, with one sink, and waits until it answers
#   sound_server.sh kill       ends it without a farewell
#   sound_server.sh add NAME   plugs in another sink and makes it the default one
#   sound_server.sh late NAME  the same, with one behind which a third of a second waits to be heard
#   sound_server.sh remove NAME
#   sound_server.sh suspend|resume   the default sink takes nothing; takes again
#   sound_server.sh freeze|thaw      the server takes nothing and answers nobody
#
# XDG_RUNTIME_DIR names the desktop that it belongs to.
set -u

folder=$XDG_RUNTIME_DIR
export PULSE_SERVER=unix:$folder/pulse/native

start() {
  # As on a desktop there is always a sink, be it one that leads nowhere.
  # Without norewinds the sink stalls for two seconds when something begins to play.
  pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no \
    -L 'module-null-sink sink_name=out rate=48000 channels=2 format=s16le norewinds=1' \
    -L module-always-sink \
    -L "module-native-protocol-unix auth-anonymous=1 socket=$folder/pulse/native" \
    >>"$folder/pulseaudio.log" 2>&1 &
  echo $! >"$folder/pulseaudio.pid"
  for (( i = 0; i < 200; ++i )); do
    pactl info >/dev/null 2>&1 && return
    sleep 0.05
  done
  echo 'the sound server did not come up' >&2
  return 1
}

server=$(cat "$folder/pulseaudio.pid" 2>/dev/null)
case $1 in
  start) start ;;
  kill) kill -KILL "$server" && rm -f "$folder/pulse/native" ;;
  freeze) kill -STOP "$server" ;;
  thaw) kill -CONT "$server" ;;
  add)
    pactl load-module module-null-sink sink_name="$2" rate=48000 channels=2 format=s16le norewinds=1 >/dev/null &&
      pactl set-default-sink "$2" ;;
  late)
    # A pipe that is full of sound, and whoever hears its other end hears at the pace of a clock.
    pactl load-module module-pipe-sink sink_name="$2" file="$folder/$2.pipe" rate=48000 channels=2 format=s16le \
      >/dev/null &&
      pactl set-default-sink "$2" &&
      ffmpeg -loglevel quiet -nostdin -re -f s16le -ar 48000 -ac 2 -i "$folder/$2.pipe" -f null - \
        </dev/null >/dev/null 2>&1 & ;;
  remove) pactl unload-module "$(pactl list short modules | sed -n "s/^\([0-9]*\).*sink_name=$2 .*/\1/p")" ;;
  suspend) pactl suspend-sink @DEFAULT_SINK@ 1 ;;
  resume) pactl suspend-sink @DEFAULT_SINK@ 0 ;;
  *) sed -n '2,12s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac
