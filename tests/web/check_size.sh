#!/bin/sh
# What a first visit loads is less than 8 MB, as a host sends it that compresses. Usage: check_size.sh TOP
set -eu
cd "$1/build/web/site"
total=0
for file in *; do
  case $file in *.packed) continue ;; esac  # the same file once more
  plain=$(wc -c <"$file")
  packed=$(gzip -c "$file" | wc -c)
  total=$((total + (packed < plain ? packed : plain)))
done
echo "$total bytes"
[ "$total" -gt 6000000 ] && [ "$total" -lt 8000000 ]
