#!/usr/bin/env bash
# Builds and runs the tests. Usage: scripts/check.sh [native|asan|tsan|windows|format|all]...   (all by default)
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A stages=([native]=1 [asan]=1 [tsan]=1 [windows]=1 [format]=1)
wanted=("${@:-all}")
for stage in "${wanted[@]}"; do
    [ "$stage" = all ] || [ -n "${stages[$stage]:-}" ] || { echo "check: unknown stage $stage" >&2; exit 2; }
done
[[ " ${wanted[*]} " != *" all "* ]] || wanted=(format native asan tsan windows)

passed=0
failed=0

# Adds up the closing lines that the test programs of a build printed; a test that is no GoogleTest program
# (an example script, a corpus, the package) counts as one.
count_results() { # <build folder> <log>
    local log=$1/Testing/Temporary/LastTest.log tests bad single
    tests=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\{0,1\}\.\r\{0,1\}$/\1/p' "$log" | awk '{ sum += $1 } END { print sum + 0 }')
    bad=$(sed -n 's/^ *\([0-9]*\) FAILED TESTS\{0,1\}\r\{0,1\}$/\1/p' "$log" | awk '{ sum += $1 } END { print sum + 0 }')
    single=$(grep -c '^Test Passed\.' "$log" || true)
    single=$((single - $(grep -c '^\[==========\].* ran\.' "$log" || true)))
    passed=$((passed + tests + (single > 0 ? single : 0)))
    failed=$((failed + bad))
}

configure() { # <preset> [option...]
    local preset=$1
    shift
    if command -v ccache > /dev/null; then
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    cmake --preset "$preset" "$@" > "build/$preset-configure.log" || { cat "build/$preset-configure.log"; exit 1; }
}

run_tests() { # <preset> [ctest option...]
    local preset=$1 result=0
    shift
    ctest --preset "$preset" --no-tests=error -j2 "$@" || result=$?
    count_results "build/$preset"
    [ $result = 0 ] || { finish; exit 1; }
}

finish() {
    # A failure outside a test program (a leak, a script, a crash) leaves no count of its own.
    [ "${1:-failure}" = success ] || [ $failed -gt 0 ] || failed=1
    echo "$passed passed, $failed failed"
}

# A Wine world of this project's own, made once and kept up while the tests run: starting it costs more than most
# tests do.
start_wine() {
    local folder
    folder=$(dirname "$(dpkg -L wine64 | grep -E '/wine64$' | head -n 1)")
    export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml='
    mkdir -p "$WINEPREFIX"
    "$folder/wineserver64" -p
    trap '"'"$folder"'/wineserver64" -k || true' EXIT
    "$folder/wine64" wineboot.exe --init > build/wine.log 2>&1 || { cat build/wine.log; exit 1; }
}

run_stage() {
    echo "== $1"
    case "$1" in
        format)
            scripts/setup.sh base format
            python3 scripts/check_layers.py
            git ls-files '*.h' '*.cpp' | grep -v '\.gen\.cpp$' | xargs clang-format --dry-run -Werror
            configure dev
            git ls-files '*.cpp' | grep -E '^(foundation|text|containers|regexp|values|xml|files|live|platform/posix)/' |
                grep -v '\.gen\.cpp$' | xargs -P2 -n4 clang-tidy --quiet -p build/dev 2> build/clang-tidy.log ||
                { tail -n 40 build/clang-tidy.log; exit 1; }
            ;;
        native)
            scripts/setup.sh base
            scripts/setup.sh typescript || echo "check: no TypeScript compiler; its test will be skipped"
            configure dev
            cmake --build --preset dev
            run_tests dev
            ;;
        asan)
            scripts/setup.sh base
            configure asan
            cmake --build --preset asan
            run_tests asan
            ;;
        tsan)
            # Only programs that start threads have something to show here.
            scripts/setup.sh base
            configure tsan
            cmake --build --preset tsan --target multi_threaded_tests
            run_tests tsan -L multi_threaded
            ;;
        windows)
            scripts/setup.sh windows
            configure windows
            cmake --build --preset windows
            start_wine
            run_tests windows
            ;;
    esac
}

mkdir -p build
for stage in "${wanted[@]}"; do
    run_stage "$stage"
done
finish success
