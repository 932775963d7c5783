#!/usr/bin/env bash
# From a bare Debian machine to krhost running its example scripts. Usage: scripts/demo.sh [script [arguments]]
# With a script, runs that one instead, on this program's standard input.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$top/build/demo

say() { printf '\n== %s\n' "$*" >&2; }

say "installing what is missing"
"$top/scripts/setup.sh" base >&2

say "building the library and krhost"
launcher=()
if command -v ccache > /dev/null; then
    launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKRCORE_BUILD_EXAMPLES=ON "${launcher[@]}" >&2
cmake --build "$build" --target krhost >&2
krhost=$build/examples/krhost/krhost

if [ $# -gt 0 ]; then
    exec "$krhost" "$@"
fi

cd "$top/examples/scripts"

run() { # <standard input> <krhost argument>...
    local input=$1
    shift
    say "krhost $*" 2>&1
    "$krhost" "$@" < "$input" 2>&1
}

run shelves.in shelves.js 24
run words.in words.js 5
run report.in report.js
run requests.in requests.js 4
run /dev/null convert.js
run /dev/null notebook.js
run /dev/null properties.js
run /dev/null text.js
run /dev/null errors.js
run /dev/null memory.js
run /dev/null --trace trace.js
run /dev/null uncaught.js || say "exit status $?" 2>&1
