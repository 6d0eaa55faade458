#!/bin/sh
# The source tree is a house: a file includes only files of its own floor or of
# a lower one, and no two files include each other, by whatever way round.
# Of the platform the game knows the headers that lie directly in platform/.
# Usage: check_floors.sh SRC
set -eu
cd "$1"
find . -name '*.h' -o -name '*.cpp' | sed 's|^\./||' | sort |
    xargs grep -HnE '^[[:blank:]]*#[[:blank:]]*include[[:blank:]]*["<]' | awk -F: '
  function floor(file) {
    split(file, part, "/")
    return part[1] in height ? height[part[1]] : 10
  }
  # The platform has floors of its own: the interface, what backends share, the backends.
  function room(file,   part) { return split(file, part, "/") > 2 ? part[2] : "interface" }
  function platformFloor(file) {
    return room(file) == "interface" ? 0 : room(file) ~ /^(common|mixing)$/ ? 1 : 2
  }
  function isPlatform(file) { return file ~ /^platform\// }
  function isGame(file,   part) {
    split(file, part, "/")
    return part[1] in height && !isPlatform(file)
  }
  function fault(what) { print file ":" line ": " what " " included; bad = 1 }
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
    line = $2
    match($0, /["<][^">]*[">]/)
    included = substr($0, RSTART + 1, RLENGTH - 2)
    # The game itself leans on the standard library alone, whose headers are plain names.
    if (substr($0, RSTART, 1) == "<") {
      if (isGame(file) && included !~ /^[a-z_]+$/) fault("above the platform there is no")
      next
    }
    ++seen
    includes[file] = includes[file] " " included
    if (included ~ /(^|\/)\.\.?\//) fault("the path is not from the top:")
    else if (isPlatform(file) && !isPlatform(included) && included !~ /^text\//) {
      fault("the platform knows nothing of the game, yet includes")
    } else if (isPlatform(file) && platformFloor(included) > platformFloor(file)) {
      fault("climbs within the platform to")
    } else if (isPlatform(file) && platformFloor(file) == 2 && platformFloor(included) == 2 && room(file) != room(included)) {
      fault("a backend knows no other, yet includes")
    } else if (isGame(file) && isPlatform(included) && room(included) != "interface") {
      fault("the game knows only headers directly in platform/, not")
    } else if (floor(included) > floor(file)) fault("climbs to")
  }
  END {
    for (file in includes) visit(file)
    if (!seen) { print "no includes were found: is this the source tree?"; bad = 1 }
    exit bad
  }'
