#!/bin/bash
# install-packages and its table on systems that are none: package managers that only write down what they
# were asked. Whether the packages themselves are rightly named no test here can tell.
#
#   install_packages_test.sh SOURCE
set -eu
packaging=$1/packaging
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $1" >&2
  cat "$work/errors" >&2
  exit 1
}

# fake NAME LINE...: a program that the next system has.
fake() {
  printf '%s\n' '#!/bin/sh' "${@:2}" >"$work/bin/$1"
  chmod +x "$work/bin/$1"
}

# new_system: only what every system has.
new_system() {
  rm -rf "$work/bin" "$work/asked"
  mkdir "$work/bin"
  local tool
  for tool in sh env cat cut dirname grep kill mktemp paste printf rm sed sleep tail tr; do
    ln -s "$(command -v $tool)" "$work/bin/$tool"
  done
  fake id 'echo 0'
}

# run [ARGUMENT...]: sets `status`, `said` and what was asked of the package manager, `asked`.
run() {
  status=0
  PATH=$work/bin LOG=$work/asked "$packaging/install-packages" "$@" >"$work/said" 2>"$work/errors" || status=$?
  said=$(cat "$work/said")
  asked=$(cat "$work/asked" 2>/dev/null || true)
}

writes_down='echo "${0##*/} $*" >>"$LOG"'

# expect_asked TEXT: among what was asked.
expect_asked() {
  [[ " $asked " == *"$1"* ]] || fail "$1 was not asked: $asked"
}

# Fedora: nothing there but the compiler.
new_system
fake rpm '[ "$3" = gcc-c++ ]'
fake dnf "$writes_down"
run
[[ $status == 0 ]] || fail "dnf: exit status $status"
expect_asked 'dnf -q -y install cmake ninja-build'
expect_asked ' pkgconfig(sdl2) '
expect_asked ' stk-devel '
[[ $asked != *gcc-c++* ]] || fail 'what is there was installed again'
[[ $asked != *'?'* && $asked != *' - '* ]] || fail "signs of the table were asked for: $asked"
[[ $said == 'Installing packages: cmake ninja-build'* ]] || fail "said: $said"

# openSUSE; everything for the game is there, and what the tests need is not all known.
new_system
fake rpm 'exit 0'
fake zypper "$writes_down"
run
[[ $status == 0 && -z $asked && -z $said ]] || fail "zypper with nothing to do: $asked$said"
run --tests
grep -q 'not known here: a sound server, ' "$work/errors" || fail 'nothing was said of unknown packages'

# Arch: pacman itself tells what is missing.
new_system
fake pacman 'if [ "$1" = -T ]; then shift; printf "%s\n" "$@" | grep -v "^cmake$"; exit 127; fi' "$writes_down"
run
expect_asked 'pacman -S --needed --noconfirm --noprogressbar base-devel ninja'
[[ $asked != *cmake* ]] || fail 'what is there was installed again'

# Debian.
new_system
fake dpkg-query 'printf "install ok installed cmake\ndeinstall ok config-files ninja-build\n"; exit 1'
fake apt-get "$writes_down"
run
expect_asked 'apt-get -o DPkg::Lock::Timeout=300 -qq update'
expect_asked ' install build-essential ninja-build pkg-config '
[[ $asked != *libgtest-dev* ]] || fail 'what only the tests need was installed'
run --tests
expect_asked ' libgtest-dev '
[[ $asked != *libbenchmark-dev* ]] || fail 'what only the benchmarks need was installed'
run --bench
expect_asked ' libbenchmark-dev '

# A package manager that fails is heard, and nothing goes on.
fake apt-get 'echo no network; exit 100'
run
[[ $status == 1 ]] || fail "a failed installation: exit status $status"
grep -q 'no network' "$work/errors" || fail 'the reason was kept quiet'

# Without rights and sudo.
fake id 'echo 1000'
run
[[ $status == 1 ]] || fail "without rights: exit status $status"
grep -q 'Please install these packages as root.* build-essential' "$work/errors" || fail 'no word of missing rights'

# No package manager that is known: a sentence, and the build is tried.
new_system
run
[[ $status == 0 ]] || fail "no package manager: exit status $status"
grep -q '^Which packages this system needs is not known here.* SDL 2, ' "$work/errors" || fail 'nothing was said'

# There, too, a player who has everything is told nothing at each start.
for tool in cmake ninja pkg-config; do fake $tool 'exit 0'; done
run
[[ $status == 0 && ! -s $work/errors && -z $said ]] || fail 'words where nothing is missing'

# Every line has a name for every system.
sed -e '/^#/d' "$packaging/packages.table" | while read -r row; do
  [[ $(tr -cd '|' <<<"$row" | wc -c) == 5 && $row != *'| |'* && $row != *'||'* ]] || fail "not six columns: $row"
done
echo 'Five kinds of systems know what to install.'
