#!/bin/sh
# Every C++ file stands as clang-format would have it.
# Usage: check_format.sh TOP
set -eu
cd "$1"
sources=$(find src tools tests bench -name '*.h' -o -name '*.cpp' | sort)
clang-format --dry-run --Werror $sources
# One spelling of the same type; the plain one is there only by what else a header drags in.
if grep -nE '(^|[^:[:alnum:]_])size_t' $sources; then
  echo "write std::size_t"
  exit 1
fi
