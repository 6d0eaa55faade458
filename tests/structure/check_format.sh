#!/bin/sh
# Every C++ file stands as clang-format would have it.
# Usage: check_format.sh TOP
set -eu
cd "$1"
find src tools tests bench -name '*.h' -o -name '*.cpp' | sort | xargs clang-format --dry-run --Werror
