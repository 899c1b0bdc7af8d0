#!/usr/bin/env bash
# Fresh machine to green tests: packages; the regular build and its tests; the
# bounded runs of the libFuzzer targets from the committed seed corpus; the
# same tests under AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer.
#   scripts/test.sh            everything (what CI runs)
#   scripts/test.sh unit       the regular build and tests
#   scripts/test.sh sanitize   the sanitizer build and tests
#   scripts/test.sh fuzz       the fuzz targets (LM_FUZZ_SECONDS each, default 60)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
stage=${1:-all}
jobs=$(nproc)

scripts/setup.sh

# Full stacks for every allocation, so that each suppression matches exactly
# the system library's own leak and nothing else.
export ASAN_OPTIONS="detect_leaks=1:fast_unwind_on_malloc=0:detect_odr_violation=0"
export LSAN_OPTIONS="suppressions=$root/tests/sanitizers/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

if [[ $stage == all || $stage == unit ]]; then
    echo "== regular build and tests"
    BUILD_DIR=build scripts/build.sh
    (cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs")
fi

if [[ $stage == all || $stage == fuzz ]]; then
    echo "== fuzz targets"
    CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLM_FUZZ=ON -DLM_BENCHMARKS=OFF >/dev/null
    cmake --build build-fuzz -j "$jobs" --target fuzz_storedocument fuzz_setvalue
    seconds=${LM_FUZZ_SECONDS:-60}
    for target in storedocument setvalue; do
        # New inputs go to a scratch copy; the committed corpus stays as it is.
        corpus=$(mktemp -d)
        cp fuzz/corpus/$target/* "$corpus"/
        (cd "$corpus" && "$root/build-fuzz/bin/fuzz_$target" -max_total_time="$seconds" -max_len=8192 \
            -print_final_stats=1 "$corpus" 2>&1 | tail -n 12)
        rm -rf "$corpus"
        echo "fuzz_$target: ${seconds}s, no findings"
    done
fi

if [[ $stage == all || $stage == sanitize ]]; then
    echo "== sanitizer build and tests"
    BUILD_DIR=build-asan scripts/build.sh -DLM_SANITIZE=ON -DLM_BENCHMARKS=OFF
    (cd build-asan && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs")
fi
