#!/bin/sh
# The sounds are made without the game, so that no change of it remakes them: its
# catalogue of sound files is all that their tool knows.
# Usage: check_sound_tool.sh TOP
set -eu
cd "$1"
[ -d tools/sounds ]
for folder in src/*/; do
  folder=$(basename "$folder")
  if grep -rnE "^[[:blank:]]*#[[:blank:]]*include[[:blank:]]*\"$folder/" tools/sounds | grep -v '"sound/catalogue.h"'; then
    echo "tools/sounds includes a header of the game"
    exit 1
  fi
done
