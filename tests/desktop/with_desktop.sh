#!/bin/bash
# Runs a command on a desktop of its own: an empty X display and a sound server
# whose only sink can be listened to. Nothing of the user's own desktop, settings
# or sound is touched, and several may run at once.
#
#   with_desktop.sh [--no-display] [--no-sound] [--record FILE.wav] COMMAND [ARGUMENT...]
#
# The command finds DISPLAY, XDG_RUNTIME_DIR, HOME, PULSE_SERVER and VORN_DESKTOP set, and in
# VORN_RECORDING, with --record, a file that grows as the sound is played (raw
# 48 kHz stereo, 16 bit). Exit status: the command's; 125 where the desktop could
# not be set up.
set -u

display=yes sound=yes record=
while [[ $# -gt 0 ]]; do
  case $1 in
    --no-display) display=no; shift ;;
    --no-sound) sound=no; shift ;;
    --record) record=$2; shift 2 ;;
    *) break ;;
  esac
done
if [[ $# -eq 0 ]]; then
  sed -n '2,13s/^# \{0,1\}//p' "$0" >&2
  exit 125
fi

# What plays and listens in real time goes first on a busy machine, where that is allowed.
renice -n -10 $$ >/dev/null 2>&1

folder=$(mktemp -d "${TMPDIR:-/tmp}/vorn-desktop.XXXXXX") || exit 125
mkdir -p "$folder/run/pulse" "$folder/home"
chmod 700 "$folder/run"

# Ends what still runs here, and takes the desktop away.
clean_up() {
  local file process i
  for file in "$folder"/run/*.pid "$folder"/run/*/daemon.pid; do
    [[ -e $file ]] || continue
    process=$(<"$file")
    kill -- "$process"
    for (( i = 0; i < 100; ++i )); do
      kill -0 -- "$process" || break
      sleep 0.05
    done
    kill -KILL -- "$process"  # frozen, perhaps
  done 2>/dev/null
  rm -rf "$folder"
}
trap clean_up EXIT
trap 'exit 125' INT TERM HUP
# Where this script is killed, along with all that it has started, somebody else does it.
setsid --fork bash -c "$(declare -f clean_up)
  folder=$folder
  while kill -0 $$ 2>/dev/null; do sleep 1; done
  clean_up" </dev/null >/dev/null 2>&1

fail() {
  echo "with_desktop.sh: $1" >&2
  cat "$folder"/*.log "$folder"/run/*.log >&2
  exit 125
}

# wait_until WHAT COMMAND...: up to ten seconds.
wait_until() {
  local what=$1 i
  shift
  for (( i = 0; i < 200; ++i )); do
    "$@" >/dev/null 2>&1 && return
    sleep 0.05
  done
  fail "$what did not come up"
}

export XDG_RUNTIME_DIR=$folder/run HOME=$folder/home
export PULSE_SERVER=unix:$folder/run/pulse/native
# No braille display but one of braille_daemon.sh.
export BRLAPI_AUTH=none BRLAPI_HOST=127.0.0.1:$(( 1000 + $$ % 20000 )) VORN_BRAILLE_PORT=$(( 30000 + $$ % 20000 ))
export VORN_DESKTOP=$folder
unset WAYLAND_DISPLAY DISPLAY SDL_VIDEODRIVER SDL_AUDIODRIVER PIPEWIRE_REMOTE XDG_DATA_HOME XDG_CONFIG_HOME

if [[ $display == yes ]]; then
  Xvfb -displayfd 3 -screen 0 800x600x24 -nolisten tcp -noreset 3>"$folder/display" 2>"$folder/xvfb.log" &
  echo $! >"$folder/run/xvfb.pid"
  wait_until 'the X server' test -s "$folder/display"
  DISPLAY=:$(<"$folder/display")
  export DISPLAY
fi

if [[ $sound == yes ]]; then
  "$(dirname "$0")/sound_server.sh" start || fail 'no sound server'
else
  # No way round by a sound driver that needs no server.
  export ALSA_CONFIG_PATH=/dev/null JACK_NO_START_SERVER=1 AUDIODEV=/nonexistent
fi

if [[ -n $record ]]; then
  export VORN_RECORDING=$folder/recording.raw
  parec -d out.monitor --format=s16le --rate=48000 --channels=2 --latency-msec=5 --raw >"$VORN_RECORDING" \
    2>"$folder/parec.log" &
  recorder=$!
  echo $recorder >"$folder/run/recorder.pid"
  wait_until 'the recorder' test -s "$VORN_RECORDING"
fi

# Beside this script, so that a signal ends both at once, and in a group of its own, by which all is found that
# it has started; not in a session of its own, where it would compete with the other tests and not go before them.
# Here, too, it is to read what this script would and to be told of interrupts.
set -m
env --default-signal=INT,QUIT "$@" <&0 &
set +m
echo -$! >"$folder/run/command.pid"
wait $!
status=$?
rm "$folder/run/command.pid"

if [[ -n $record ]]; then
  kill "$recorder"
  wait "$recorder" 2>/dev/null
  sox -t raw -r 48000 -c 2 -e signed -b 16 "$VORN_RECORDING" "$record" || fail 'the recording could not be written'
fi
exit $status
