# Plays the game in Wine, at a desktop of with_desktop.sh, by what it says and by keys. To be sourced; wants
# `here`, `prefix` and `work` set to this folder, Wine's own and one for the test.

fail() {
  echo "$1" >&2
  cat "$work"/captions "$work"/errors >&2
  exit 1
}

# Where Windows keeps the player's files.
own_folder() {
  echo "$prefix"/drive_c/users/*/AppData/Roaming/vorn1
}

# The player has never played before.
forget() {
  rm -rf "$(own_folder)"
}

# play PROGRAM [ARGUMENT...]: starts it.
play() {
  "$here/in_wine.sh" "$prefix" "$@" --captions >"$work/captions" 2>"$work/errors" &
  game=$!
}

# hear TEXT: waits until the game has said it.
hear() {
  for (( i = 0; i < 1200; ++i )); do
    grep -qF -- "$1" "$work/captions" && return
    sleep 0.05
  done
  fail "Never heard: $1"
}

press() {
  sleep 1
  xdotool keydown "$1"; sleep 0.2; xdotool keyup "$1"
}

# The game is leaving, and does it well.
end() {
  hear ' exiting program '
  wait $game || fail 'It ended badly'
}
