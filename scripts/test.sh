#!/usr/bin/env bash
# Fresh machine to green tests: packages, the regular build and its tests, the
# same tests under AddressSanitizer/LeakSanitizer/UndefinedBehaviorSanitizer,
# and bounded runs of the fuzz targets.
#   scripts/test.sh            everything (what CI runs)
#   scripts/test.sh unit       the regular build and tests only
#   scripts/test.sh sanitize   the sanitizer build and tests only
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
stage=${1:-all}
jobs=$(nproc)

scripts/setup.sh

if [[ $stage == all || $stage == unit ]]; then
    echo "== regular build and tests"
    BUILD_DIR=build scripts/build.sh
    (cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs")
fi

if [[ $stage == all || $stage == sanitize ]]; then
    echo "== sanitizer build and tests"
    BUILD_DIR=build-asan scripts/build.sh -DLM_SANITIZE=ON
    export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:detect_odr_violation=0"
    export LSAN_OPTIONS="suppressions=$root/tests/sanitizers/lsan.supp:print_suppressions=0"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    (cd build-asan && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs")
fi
