#!/bin/sh
# The source tree is a house: a file includes only files of its own floor or of
# a lower one, and no two files include each other, by whatever way round.
# Usage: check_floors.sh SRC
set -eu
cd "$1"
find . -name '*.h' -o -name '*.cpp' | sed 's|^\./||' | sort | xargs grep -n '^#include "' | awk -F: '
  function floor(file) {
    if (file ~ /^speech\/voice_settings/) return 6   # its dialogue needs input and sound
    if (file ~ /^platform\/(desktop|headless)\//) return 0
    split(file, part, "/")
    return part[1] in height ? height[part[1]] : 10
  }
  function isBackend(file) { return file ~ /^platform\// }
  function visit(file,   i, n, next_files) {
    if (state[file] == 2) return
    if (state[file] == 1) { print "includes itself by way of others: " file; bad = 1; return }
    state[file] = 1
    n = split(includes[file], next_files, " ")
    for (i = 1; i <= n; ++i) visit(next_files[i])
    state[file] = 2
  }
  BEGIN {
    n = split("platform:0 text:0 state:1 clock:2 speech:3 input:4 sound:5 records:5 options:6 race:6 " \
              "pit:7 tracks:8 shell:9", rows, " ")
    for (i = 1; i <= n; ++i) { split(rows[i], row, ":"); height[row[1]] = row[2] }
  }
  {
    file = $1
    match($0, /"[^"]*"/)
    included = substr($0, RSTART + 1, RLENGTH - 2)
    ++seen
    includes[file] = includes[file] " " included
    if (floor(included) > floor(file)) { print file ":" $2 ": climbs to " included; bad = 1 }
    if (isBackend(file) && !isBackend(included)) {
      print file ":" $2 ": the platform knows nothing of the game, yet includes " included; bad = 1
    }
    if (file !~ /^platform\// && file !~ /^(demo|program)\// && file != "main.cpp" && included ~ /^platform\/(desktop|headless)\//) {
      print file ":" $2 ": names a backend, " included; bad = 1
    }
  }
  END {
    for (file in includes) visit(file)
    if (seen < 100) { print "only " seen " includes were found: is this the source tree?"; bad = 1 }
    exit bad
  }'
# The game itself leans on the standard library alone.
if grep -rnE '#include <(SDL|espeak|speak_lib|sndfile|nlohmann|CLI/|unistd|sys/|fcntl|libspeechd)' \
    state clock text speech input sound records options race pit tracks shell; then
  echo "a library or system header above the platform"
  exit 1
fi
