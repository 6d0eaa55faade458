#!/bin/bash
# Makes the packages of a build, holds them against the systems' rules, installs each on the smallest
# system that it claims to run on, and has a lap raced there.
#
#   package_test.sh SOURCE BUILD
set -eu
source=$1 build=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $1" >&2
  exit 1
}

# in_root ROOT COMMAND...: on that system, without display, sound and anything else of this one.
in_root() {
  local as_root=()
  [[ $(id -u) == 0 ]] || as_root=(unshare --map-root-user)
  env -i PATH="$PATH" HOME=/home/player "${as_root[@]}" chroot "$@"
}

# races_a_lap ROOT PROGRAM: a first start, as a player without display would see it.
races_a_lap() {
  local root=$1 own=$1/home/player/.local/share/vorn1
  mkdir -p "$root/home/player" "$root/proc/self"
  ln -s "$2" "$root/proc/self/exe"  # all of /proc that the system's loader asks for
  in_root "$root" "$2" --demo >"$work/said" 2>"$work/errors" || fail "the lap in $root: $(cat "$work/errors")"
  grep -q '^ Your time for 1 lap on the Maple Leaf Tri Oval Track is, ' "$work/said" || fail "no result was said"
  # Ten seconds of CD-like sound at the very least.
  [[ $(find "$root" -name demo.wav -size +1800k | wc -l) == 1 ]] || fail "no lap in demo.wav"
  diff -r --exclude='demo*.wav' "$build/sounds" "$own" >&2 || fail "the player's sounds are not the installed ones"

  rm "$own/vorn1t1.wav"
  echo damaged >"$own/vorn1t2.wav"
  echo old | dd of="$own/vorn1t3.wav" conv=notrunc status=none
  touch -d 2000-01-01 "$own/vorn1t3.wav"
  in_root "$root" "$2" --demo >/dev/null 2>&1
  diff -r --exclude='demo*.wav' "$build/sounds" "$own" >&2 || fail "missing, damaged and old sounds were not replaced"
}

"$source/packaging/package" --build "$build" --output "$work/packages"
deb=$(ls "$work"/packages/*.deb)
archive=$(ls "$work"/packages/*.tar.gz)

lintian --allow-root --fail-on error,warning "$deb"
mkdir "$work/debian"
dpkg-deb -x "$deb" "$work/debian"
desktop-file-validate "$work"/debian/usr/share/applications/vorn1.desktop
metainfo=$work/debian/usr/share/metainfo/vorn1.metainfo.xml
appstreamcli validate --no-net "$metainfo"
grep -q "<release version=\"$(dpkg-deb -f "$deb" Version)\"" "$metainfo" || fail "the metadata know no such release"
man=$work/debian/usr/share/man/man6/vorn1.6.gz
[[ -z $(LC_ALL=C.UTF-8 man --warnings -l "$man" 2>&1 >"$work/man.txt") ]] || fail "the manual page has mistakes"
options() { grep -o -e '--[a-z][a-z-]*' "$1" | sort -u; }
"$build/bin/vorn1" --help >"$work/help"
diff <(options "$work/help") <(zcat "$man" | sed 's/\\-/-/g' | options /dev/stdin) ||
  fail "--help and the manual page know different options"

"$here/clean_root.py" "$work/debian" "$(dpkg-deb -f "$deb" Depends)"
races_a_lap "$work/debian" /usr/games/vorn1

mkdir "$work/bare"
tar -C "$work/bare" -xzf "$archive"
ls "$work"/bare/*/terms | grep -q '^libespeak-ng1$' || fail "the terms of the libraries are missing"
"$here/clean_root.py" "$work/bare" --alone libc6
races_a_lap "$work/bare" "/$(ls "$work/bare" | grep '^vorn1-')/bin/vorn1"
echo "Both packages install and race."
