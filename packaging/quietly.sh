# For scripts that a player starts, to be read into them.

# quietly WHAT COMMAND [ARGUMENT...]: runs a command without a word, for a screen reader would read them all.
# Every ten seconds one short line says how far it is: Ninja's figures where there are any, else the seconds.
# Where it fails its words are shown, and the script ends.
quietly() {
  what=$1
  shift
  said=$(mktemp)
  (
    seconds=0
    # A script that was stopped leaves nobody who would end this.
    while sleep "${VORN_TELL_EVERY:-10}" >/dev/null 2>&1 && kill -0 $$ 2>/dev/null; do
      seconds=$((seconds + ${VORN_TELL_EVERY:-10}))
      figures=$(sed -n 's|^\[\([0-9]*\)/\([0-9]*\)\].*|\1 of \2|p' "$said" | tail -n 1)
      echo "$what: ${figures:-$seconds seconds}."
    done
    kill -0 $$ 2>/dev/null || rm -f "$said"
  ) &
  teller=$!
  status=0
  "$@" >"$said" 2>&1 || status=$?
  kill $teller 2>/dev/null || true
  wait $teller 2>/dev/null || true
  if [ $status != 0 ]; then
    cat "$said" >&2
  fi
  rm -f "$said"
  [ $status = 0 ] || exit 1
}
