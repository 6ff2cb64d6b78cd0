#!/bin/sh
# Installs the build in $1 into a scratch prefix, then builds and runs the
# consumer in $2 against it through the CMake package and through pkg-config,
# with the compiler $3 (default c++) and the flags $4 the library was built
# with where they matter to a program using it (a sanitizer's).
set -eu
build=$1
consumer=$2
cxx=${3:-c++}
cxxflags=${4:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" > "$work/install.log"
expected="1.5 -2 0.25 4"
lib=$(dirname "$(find "$work/prefix" -name liborb.so | head -1)")

cmake -S "$consumer" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
      -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$cxxflags" > "$work/configure.log"
cmake --build "$work/cmake" > "$work/build.log"
got=$(LD_LIBRARY_PATH="$lib" "$work/cmake/consumer")
[ "$got" = "$expected" ] || { echo "CMake package consumer printed: $got"; exit 1; }

pc=$(find "$work/prefix" -name orb.pc)
flags=$(PKG_CONFIG_PATH=$(dirname "$pc") pkg-config --define-prefix --cflags --libs orb)
"$cxx" $cxxflags -std=c++17 "$consumer/consumer.cpp" $flags -o "$work/pc-consumer"
got=$(LD_LIBRARY_PATH="$lib" "$work/pc-consumer")
[ "$got" = "$expected" ] || { echo "pkg-config consumer printed: $got"; exit 1; }
echo "installed and consumed through CMake and pkg-config"
