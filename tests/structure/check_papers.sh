#!/bin/sh
# The papers name what is there: docs/not-bugs.md a file, a procedure and a test in
# every row, docs/glossary.md a name that stands in its room.
# Usage: check_papers.sh TOP
set -eu
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# rows FILE: the rows of its tables without their heads and rulings, "|" between cells.
rows() {
  awk '/^\|/ { if (inside++ > 1) print; next } { inside = 0 }' "docs/$1"
}

# quoted: each word between backquotes on a line of its own.
quoted() {
  grep -o '`[^`]*`' | tr -d '`'
}

# All tests by their names in the sources; formatting may have put a name on a line of its own.
find tests -name '*.cpp' | sort | xargs cat | tr '\n' ' ' | grep -oE 'TEST(_F|_P)?\( *[A-Za-z0-9_]+, +[A-Za-z0-9_]+' |
  sed -E 's/TEST(_F|_P)?\( *//; s/, +/./' | sort -u >"$work/tests"

checkPlaces() {
  printf '%s\n' "$1" | tr ',' '\n' | while read -r place; do
    file=$(printf '%s' "$place" | quoted | head -n 1)
    name=$(printf '%s' "$place" | quoted | sed -n 2p)
    if [ -z "$file" ] || [ -z "$name" ]; then
      echo "docs/not-bugs.md: neither a file nor a name in it: $place"
    elif [ ! -f "src/$file" ]; then
      echo "docs/not-bugs.md: no such file: src/$file"
    elif ! grep -qw -- "$name" "src/$file"; then
      echo "docs/not-bugs.md: src/$file has no $name"
    fi
  done
}

checkTests() {
  names=$(printf '%s' "$1" | quoted) || echo "docs/not-bugs.md: a row without a test: $2"
  for name in $names; do
    grep -qxF -- "$name" "$work/tests" || echo "docs/not-bugs.md: no such test: $name"
  done
}

{
  rows not-bugs.md >"$work/rows"
  [ "$(wc -l <"$work/rows")" -ge 20 ] || echo "docs/not-bugs.md: where have its rows gone?"
  while IFS='|' read -r _ what _ where held _; do
    checkPlaces "$where"
    checkTests "$held" "$what"
  done <"$work/rows"

  rows glossary.md >"$work/rows"
  [ "$(wc -l <"$work/rows")" -ge 20 ] || echo "docs/glossary.md: where have its rows gone?"
  while IFS='|' read -r _ names _ room _; do
    room=$(printf '%s' "$room" | quoted)
    for name in $(printf '%s' "$names" | quoted); do
      grep -rqw -- "$name" "src/$room" || echo "docs/glossary.md: src/$room has no $name"
    done
  done <"$work/rows"
} >"$work/complaints" 2>&1
cat "$work/complaints"
[ ! -s "$work/complaints" ]
