#!/bin/sh
# What clang-tidy finds in the program.
# Usage: check_tidy.sh TOP BUILD_FOLDER
set -eu
cd "$1"
find src -name '*.cpp' | sort | xargs -P "$(nproc)" -n 4 clang-tidy -p "$2" --quiet 2>/dev/null
