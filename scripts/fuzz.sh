#!/bin/sh
# A bounded run of the export fuzzer: fuzz.sh BUILD_DIR [SECONDS] [JOBS]
# BUILD_DIR is a clang build configured with -DORB_BUILD_FUZZ=ON (as
# scripts/sanitize.sh makes it). The corpus starts from the export rows'
# valid calls and the saved regressions and grows in BUILD_DIR/fuzz-corpus;
# a crash, leak or stray write leaves its input in BUILD_DIR/fuzz-artifacts
# and fails the run. Copy such an input into fuzz/regressions/ once fixed.
set -eu
build=${1:?usage: fuzz.sh BUILD_DIR [SECONDS] [JOBS]}
seconds=${2:-180}
jobs=${3:-1}
src=$(cd "$(dirname "$0")/.." && pwd)
fuzzer="$build/fuzz/orb_fuzzer"
corpus="$build/fuzz-corpus"
artifacts="$build/fuzz-artifacts"
mkdir -p "$corpus" "$artifacts"
ORB_FUZZ_SEEDS="$corpus" "$fuzzer"
# A failed allocation must come back as null (the exports report it as "out
# of memory"), not stop the run; options given outside come after and win.
export ASAN_OPTIONS="detect_leaks=1:halt_on_error=1:abort_on_error=1:allocator_may_return_null=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"
# A call counts as hung after 60 s: the fuzzer's build traces every
# comparison, which makes the tightest loops (sorting a median window, Hough
# voting) about 30 times slower than a release build (more under
# AddressSanitizer); the slowest calls the long runs met take half a second
# in a release build.
if [ "$jobs" -le 1 ]; then
  exec "$fuzzer" -max_total_time="$seconds" -timeout=60 -rss_limit_mb=4096 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="$artifacts/" "$corpus" "$src/fuzz/regressions"
fi
# Several processes share the corpus; each stops after SECONDS.
exec "$fuzzer" -max_total_time="$seconds" -timeout=60 -rss_limit_mb=4096 -max_len=4096 \
  -print_final_stats=1 -artifact_prefix="$artifacts/" -jobs="$jobs" -workers="$jobs" \
  "$corpus" "$src/fuzz/regressions"
