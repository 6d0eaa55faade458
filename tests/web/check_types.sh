#!/bin/sh
# The page's scripts keep to their types. Usage: check_types.sh TOP
set -eu
cd "$1/build/web/site"
tsc="node ../npm/node_modules/typescript/bin/tsc --noEmit --allowJs --strict --skipLibCheck --target es2022 --module esnext --moduleResolution bundler"
$tsc --lib es2022,dom,dom.iterable page.js
$tsc --lib es2022,webworker sw.js speaker.js
