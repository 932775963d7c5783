#!/usr/bin/env bash
# Installs what the build needs and is missing, from the machine's own Debian package sources.
# Usage: scripts/setup.sh [base|format|windows|benchmarks|typescript]...    (base when nothing is named)
set -euo pipefail
cd "$(dirname "$0")/.."

base=(g++ clang libclang-rt-dev cmake ninja-build ccache pkg-config python3 googletest libgtest-dev duktape-dev
      libexpat1-dev unicode-data)
format=(clang-format clang-tidy)
windows=(g++-mingw-w64-x86-64-posix wine64 cmake ninja-build ccache googletest dpkg-dev xz-utils)
benchmarks=(libbenchmark-dev libmimalloc-dev libicu-dev qt6-base-dev libmujs-dev libglib2.0-dev libboost-dev
            libabsl-dev libxml2-dev libpugixml-dev libpcre2-dev)

install_missing() {
    local missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "setup: installing ${missing[*]}"
    local as_root=()
    [ "$(id -u)" = 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# The TypeScript compiler that a test of krhost's declarations runs, from npm into build/typescript.
typescript=5.9.3

install_typescript() {
    local folder=build/typescript missing=()
    ! grep -qs "\"version\": \"$typescript\"" "$folder/node_modules/typescript/package.json" || return 0
    command -v node > /dev/null || command -v nodejs > /dev/null || missing+=(nodejs)
    command -v npm > /dev/null || missing+=(npm)
    install_missing "${missing[@]}"
    echo "setup: installing typescript $typescript"
    rm -rf "$folder"
    mkdir -p "$folder"
    npm install --prefix "$folder" --no-save --no-audit --no-fund --loglevel=error "typescript@$typescript"
}

for group in "${@:-base}"; do
    case "$group" in
        base) install_missing "${base[@]}" ;;
        format) install_missing "${format[@]}" ;;
        windows) install_missing "${windows[@]}"; scripts/windows-dependencies.sh ;;
        typescript) install_typescript ;;
        benchmarks) install_missing "${benchmarks[@]}" ;;
        *) echo "setup: unknown group $group" >&2; exit 2 ;;
    esac
done
