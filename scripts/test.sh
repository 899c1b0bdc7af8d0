#!/usr/bin/env bash
# Fresh machine to green tests: packages; the regular build and its tests; the
# same against Qt 6; the bounded runs of the libFuzzer targets from the
# committed seed corpus; the same tests under AddressSanitizer, LeakSanitizer
# and UndefinedBehaviorSanitizer.
#   scripts/test.sh            everything (what CI runs)
#   scripts/test.sh unit       the regular build and tests
#   scripts/test.sh qt6        the build and tests against Qt 6
#   scripts/test.sh sanitize   the sanitizer build and tests
#   scripts/test.sh fuzz       the fuzz targets (LM_FUZZ_SECONDS each, default 60)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
stage=${1:-all}
jobs=$(nproc)

# Each stage's wall time, printed at the end so that it closes the run.
times=()
stage_start() { stage_started=$SECONDS; echo "== $1"; }
stage_end() { times+=("$(printf '%-28s %4ds' "$1" $((SECONDS - stage_started)))"); }
summary=$(mktemp)
# The stage times, then the last test run's summary again, so that the run
# still ends on ctest's own closing lines.
report_times() {
    ((${#times[@]})) && printf 'stage times:\n' && printf '  %s\n' "${times[@]}"
    grep -E 'tests passed|tests failed|Total Test time' "$summary" || true
    rm -f "$summary"
}
trap report_times EXIT

stage_start "setup"
scripts/setup.sh
stage_end "setup"

# Full stacks for every allocation, so that each suppression matches exactly
# the system library's own leak and nothing else.
export ASAN_OPTIONS="detect_leaks=1:fast_unwind_on_malloc=0:detect_odr_violation=0"
export LSAN_OPTIONS="suppressions=$root/tests/sanitizers/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

if [[ $stage == all || $stage == unit ]]; then
    stage_start "regular build"
    BUILD_DIR=build scripts/build.sh
    stage_end "regular build"
    stage_start "regular tests"
    (cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs") | tee "$summary"
    stage_end "regular tests"
fi

if [[ $stage == all || $stage == qt6 ]]; then
    stage_start "Qt 6 build"
    # With the regular (Qt 5) build's module, the host's refusal of it is tested.
    BUILD_DIR=build-qt6 scripts/build.sh -DLM_QT_MAJOR=6 -DLM_OTHER_QT_PLUGIN="$root/build/bin/lmKernelPreferences.so"
    stage_end "Qt 6 build"
    stage_start "Qt 6 tests"
    (cd build-qt6 && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs") | tee "$summary"
    # Both builds write the same store document from a fresh start.
    if [[ -x build/bin/lmprefs-host ]]; then
        stores=$(mktemp -d)
        for build in build build-qt6; do
            QT_QPA_PLATFORM=offscreen $build/bin/lmprefs-host --headless --preferences "$stores/$build.json" \
                --accept --dump-store >"$stores/$build.dump" 2>/dev/null
        done
        cmp "$stores/build.json" "$stores/build-qt6.json"
        cmp "$stores/build.dump" "$stores/build-qt6.dump"
        echo "Qt 5 and Qt 6 builds write the same store document"
        rm -rf "$stores"
    fi
    stage_end "Qt 6 tests"
fi

if [[ $stage == all || $stage == fuzz ]]; then
    stage_start "fuzz build and runs"
    CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLM_FUZZ=ON >/dev/null
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
    stage_end "fuzz build and runs"
fi

if [[ $stage == all || $stage == sanitize ]]; then
    stage_start "sanitizer build"
    BUILD_DIR=build-asan scripts/build.sh -DLM_SANITIZE=ON
    stage_end "sanitizer build"
    stage_start "sanitizer tests"
    (cd build-asan && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs") | tee "$summary"
    stage_end "sanitizer tests"
fi
