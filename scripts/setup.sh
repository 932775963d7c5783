#!/usr/bin/env bash
# Installs what the build needs and is missing, from the machine's own Debian package sources.
# Usage: scripts/setup.sh [base|windows|benchmarks]...    (base when nothing is named)
set -euo pipefail
cd "$(dirname "$0")/.."

base=(g++ clang libclang-rt-dev cmake ninja-build ccache pkg-config python3 googletest libgtest-dev duktape-dev
      libexpat1-dev unicode-data)
format=(clang-format clang-tidy)
windows=(g++-mingw-w64-x86-64-posix wine64 cmake ninja-build ccache googletest dpkg-dev xz-utils)
benchmarks=(libbenchmark-dev libmimalloc-dev libicu-dev qt6-base-dev libmujs-dev libglib2.0-dev libboost-dev
            libabsl-dev libxml2-dev libpugixml-dev)

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

for group in "${@:-base}"; do
    case "$group" in
        base) install_missing "${base[@]}" ;;
        format) install_missing "${format[@]}" ;;
        windows) install_missing "${windows[@]}"; scripts/windows-dependencies.sh ;;
        benchmarks) install_missing "${benchmarks[@]}" ;;
        *) echo "setup: unknown group $group" >&2; exit 2 ;;
    esac
done
