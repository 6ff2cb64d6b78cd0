#!/bin/sh
# Builds everything with AddressSanitizer and UndefinedBehaviorSanitizer
# (clang) in a folder of its own, default build-san, and runs every test
# there; any sanitizer report fails the test that caused it. Then the export
# fuzzer runs for ORB_FUZZ_SECONDS (default 180) in the same build.
set -eu
dir=${1:-build-san}
cd "$(dirname "$0")/.."
# Highway compiles each kernel once per instruction set, which makes up most
# of the build; here only AVX2 and the portable baseline are compiled (the
# value leaves out SSSE3 4096, SSE4 2048, AVX3 256 and AVX3_DL 128), still
# two targets, so dispatch and the tests that visit every target run both.
flags="-O2 -gline-tables-only -DNDEBUG -DHWY_DISABLED_TARGETS=6528"
cmake -S . -B "$dir" -G Ninja -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
      -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_FLAGS_RELWITHDEBINFO="$flags" \
      -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="$flags" -DORB_SANITIZE=address,undefined -DORB_BUILD_BENCH=OFF \
      -DORB_BUILD_FUZZ=ON
cmake --build "$dir" -j2
ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:print_stacktrace=1:strict_init_order=1:detect_odr_violation=2
UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export ASAN_OPTIONS UBSAN_OPTIONS
ctest --test-dir "$dir" --output-on-failure -j2
sh scripts/fuzz.sh "$dir" "${ORB_FUZZ_SECONDS:-180}"
