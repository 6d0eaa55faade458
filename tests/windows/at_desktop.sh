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

# For the end, however it comes: no game goes on in a Windows that the next test plays in.
clean_up() {
  [[ -z ${game:-} ]] || "$here/in_wine.sh" "$prefix" --end
  rm -rf "$work"
}

# play PROGRAM [ARGUMENT...]: starts it.
play() {
  : >"$work/captions"  # of the game before
  "$here/in_wine.sh" "$prefix" "$@" --captions >"$work/captions" 2>"$work/errors" &
  game=$!
}

# is_heard TEXT SECONDS: whether the game says it, or has said it, by then.
is_heard() {
  local end=$(( SECONDS + $2 ))
  until grep -qF -- "$1" "$work/captions"; do
    (( SECONDS < end )) || return 1
    sleep 0.05
  done
}

# hear TEXT: waits until the game has said it; a Windows that has just been started takes its time.
hear() {
  is_heard "$1" 300 || fail "Never heard: $1"
}

# answer KEY TEXT: presses it until the game has said TEXT, for a menu takes no key in its first moments.
answer() {
  local press
  for press in {1..10}; do
    sleep 1
    xdotool keydown "$1"; sleep 0.2; xdotool keyup "$1"
    ! is_heard "$2" 30 || return 0
  done
  fail "Never heard: $2"
}

# leave: at the main menu's first entry. The game does it well.
leave() {
  answer Return ' exiting program '
  wait $game || fail 'It ended badly'
  game=
}
