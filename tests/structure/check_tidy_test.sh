#!/bin/sh
# Clang-tidy looks again at what may read differently now, and at nothing else.
set -eu
check=$(dirname "$(realpath "$0")")/check_tidy.py
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
failures=0
unset VORN_TIDY_ALL

mkdir -p "$top/src/race" "$top/build" "$top/bin"
echo 'Checks: bugprone-*' >"$top/.clang-tidy"
printf '%s\n' '#pragma once' '#include "race/car.h"' >"$top/src/race/walls.h"
echo 'struct Car {};' >"$top/src/race/car.h"
echo '#include "race/walls.h"' >"$top/src/race/walls.cpp"
echo '#include <vector>' >"$top/src/main.cpp"

# In its place: notes which files it is shown, and complains about the word "faulty".
echo 1 >"$top/version"
cat >"$top/bin/clang-tidy" <<END
#!/bin/sh
[ "\$1" = --version ] && exec cat "$top/version"
for file; do :; done
echo "\${file#"$top/src/"}" >>"$top/seen"
! grep faulty "\$file"
END
chmod +x "$top/bin/clang-tidy"

# Of another system, so never compiled: never looked at.
echo '#include <windows.h>' >"$top/src/race/walls_windows.cpp"

# commands FLAG: the compiler's commands, with this flag for walls.cpp.
commands() {
  cat >"$top/build/compile_commands.json" <<END
[{"file": "$top/src/race/walls.cpp", "command": "c++ $1"}, {"file": "$top/src/main.cpp", "command": "c++"}]
END
}

# expect FILES [STATUS]: these are looked at, with this exit status (0).
expect() {
  : >"$top/seen"
  status=0
  PATH=$top/bin:$PATH "$check" "$top" "$top/build" >"$top/said" 2>&1 || status=$?
  seen=$(sort "$top/seen" | xargs)
  if [ "$seen" != "$1" ] || [ "$status" != "${2:-0}" ]; then
    echo "$what: looked at '$seen', status $status, instead of '$1', ${2:-0}"
    cat "$top/said"
    failures=$((failures + 1))
  fi
}

commands -O1
what='at first'
expect 'main.cpp race/walls.cpp'
what='nothing changed'
expect ''
what='all asked for'
export VORN_TIDY_ALL=1
expect 'main.cpp race/walls.cpp'
unset VORN_TIDY_ALL
what='a file changed'
echo '// more' >>"$top/src/main.cpp"
expect 'main.cpp'
what='a header behind a header changed'
echo '// more' >>"$top/src/race/car.h"
expect 'race/walls.cpp'
what='the flags changed'
commands -O2
expect 'race/walls.cpp'
what='the checks changed'
echo '# more' >>"$top/.clang-tidy"
expect 'main.cpp race/walls.cpp'
what='clang-tidy changed'
echo 2 >"$top/version"
expect 'main.cpp race/walls.cpp'
what='a fault'
echo '// faulty' >>"$top/src/main.cpp"
expect 'main.cpp' 1
what='the fault once more'
expect 'main.cpp' 1
what='the fault is mended'
echo '#include <vector>' >"$top/src/main.cpp"
expect 'main.cpp'
what='no files at all'
rm -r "$top/src"
expect '' 1

exit $((failures > 0))
