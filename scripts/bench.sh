#!/usr/bin/env bash
# Measures the library against its peers in the same run. Usage: scripts/bench.sh [area]...
#
# An area is the first word of a case's name (heap, string, encoder, numbers, variant, hashtable, live, regexp, xml,
# files, broadcaster); without one all are measured. The table shows medians of five runs and the ratio library / peer.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh base benchmarks
mkdir -p build
if command -v ccache > /dev/null; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi
cmake --preset release > build/release-configure.log || { cat build/release-configure.log; exit 1; }
cmake --build --preset release
python3 scripts/bench_table.py build/release/benchmarks "$@"
