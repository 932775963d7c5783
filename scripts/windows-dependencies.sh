#!/usr/bin/env bash
# Cross-builds what the Windows tests and examples link: GoogleTest, Expat and Duktape, from Debian's own
# sources, into build/windows-dependencies. Does nothing when a stamp says that it was done.
set -euo pipefail
cd "$(dirname "$0")/.."
top=$PWD
prefix=$top/build/windows-dependencies
work=$top/build/windows-dependencies-work
stamp=$prefix/.complete-2
[ ! -e "$stamp" ] || exit 0
rm -rf "$prefix" "$work"
mkdir -p "$prefix/include" "$prefix/lib" "$work"

# Debian's source packages, through a copy of the machine's own source list that asks for sources too.
fetch_sources() {
    mkdir -p "$work/apt/lists/partial" "$work/apt/sources.list.d"
    : > "$work/apt/sources.list"
    local list
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -e "$list" ] || continue
        sed -n 's/^deb /deb-src /p' "$list" >> "$work/apt/sources.list"
    done
    for list in /etc/apt/sources.list.d/*.sources; do
        [ -e "$list" ] || continue
        sed 's/^Types:.*/Types: deb-src/' "$list" > "$work/apt/sources.list.d/$(basename "$list")"
    done
    local options=(-o "Dir::Etc::SourceList=$work/apt/sources.list"
                   -o "Dir::Etc::SourceParts=$work/apt/sources.list.d"
                   -o "Dir::State::Lists=$work/apt/lists" -o APT::Sandbox::User=root)
    apt-get "${options[@]}" update -q
    (cd "$work" && apt-get "${options[@]}" source -q --tar-only "$@")
}

build_with_cmake() { # <name> <source folder> [option...]
    local name=$1 source=$2
    shift 2
    cmake -S "$source" -B "$work/$name" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$top/cmake/mingw-w64.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
        -DBUILD_SHARED_LIBS=OFF "$@" > "$work/$name.log"
    cmake --build "$work/$name" --target install >> "$work/$name.log"
}

unpack() { # <name>: unpacks the archive that was fetched under that name and prints its folder
    mkdir -p "$work/source-$1"
    tar -xf "$(ls "$work/$1"_*.orig.tar.* | grep -v '\.asc$' | head -n 1)" -C "$work/source-$1" --strip-components=1
    echo "$work/source-$1"
}

fetch_sources expat duktape

build_with_cmake googletest /usr/src/googletest -DBUILD_GMOCK=OFF

build_with_cmake expat "$(unpack expat)/expat" -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_TOOLS=OFF \
    -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_DOCS=OFF -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_CHAR_TYPE=ushort

duktape=$(unpack duktape)/src
x86_64-w64-mingw32-gcc-posix -O2 -c "$duktape/duktape.c" -o "$work/duktape.o"
x86_64-w64-mingw32-ar rcs "$prefix/lib/libduktape.a" "$work/duktape.o"
cp "$duktape/duktape.h" "$duktape/duk_config.h" "$prefix/include/"

touch "$stamp"
rm -rf "$work"
