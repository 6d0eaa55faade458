#!/bin/bash
# Checks that a program is hardened, and that the preset for players hardens every
# program and every file of them.
#
#   check_hardening.sh PROGRAM SOURCE_FOLDER CMAKE
# PROGRAM: made with vorn_hardening; it copies its argument into 16 bytes.
set -u
export LC_ALL=C  # what is read below is in English
program=$1 source=$2 cmake=$3
failed=0
fail() {
  echo "$1" >&2
  failed=1
}

# expect WHAT PATTERN TEXT
expect() {
  grep -q -- "$2" <<<"$3" || fail "$program: no $1"
}
expect 'position-independent code' 'Type: *DYN' "$(readelf -h "$program")"
expect 'relocations that are read-only from the start' GNU_RELRO "$(readelf -lW "$program")"
expect 'relocations that are all made at the start' 'FLAGS_1.*NOW.*PIE' "$(readelf -dW "$program")"
symbols=$(readelf --dyn-syms -W "$program")
expect 'guarded stack' __stack_chk_fail "$symbols"
expect 'checked copying' __strcpy_chk "$symbols"
if [[ $(uname -m) == x86_64 ]]; then
  # The system's own start-up files may not be protected, so the program as a whole is not marked as such.
  expect 'protected branches' endbr64 "$(objdump -d --disassemble=main "$program")"
fi
[[ $("$program" 'fits') == fits ]] || fail "$program does not run"
("$program" 'this is more than sixteen bytes') >/dev/null 2>&1 && fail "$program overruns its buffer"

build=$(mktemp -d)
trap 'rm -rf "$build"' EXIT
(cd "$source" && "$cmake" --preset release -B "$build" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON) >"$build/log" 2>&1 ||
  fail "$(cat "$build/log")"
for flag in -fPIE -fstack-protector-strong -D_FORTIFY_SOURCE=2; do
  bare=$(grep '"command":' "$build/compile_commands.json" | grep -vc -- " $flag ")
  [[ $bare == 0 ]] || fail "$bare files are compiled without $flag"
done
[[ $(grep -c '"command":' "$build/compile_commands.json") -gt 50 ]] || fail 'no files are compiled'
for flag in -pie -Wl,-z,relro,-z,now; do
  programs=$(grep -c '^build bin/' "$build/build.ninja")
  hardened=$(grep -c "^  LINK_FLAGS = .*$flag" "$build/build.ninja")
  [[ $programs -gt 0 && $hardened -ge $programs ]] || fail "$hardened of $programs programs are linked with $flag"
done
exit $failed
