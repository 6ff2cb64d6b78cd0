#!/bin/sh
# Builds the library, the stand-in host and the export tests with
# ThreadSanitizer in the folder given (default build-tsan) and runs the
# concurrent-callers test there. Any report fails the run.
#   scripts/tsan.sh [build folder]
# ORB_THREADS and ORB_CONCURRENCY_SECONDS pass through to the test.
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build-tsan}
# Two Highway targets (AVX2 and the portable baseline) as in sanitize.sh,
# which keeps the build short.
flags="-g1 -DHWY_DISABLED_TARGETS=6528"
cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DORB_BUILD_BENCH=OFF \
    -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" -DORB_SANITIZE=thread
ninja -C "$build" -j2 orb_tests
TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 ${TSAN_OPTIONS:-}" \
    "$build/tests/orb_tests" --gtest_filter='Concurrency*'
