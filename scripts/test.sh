#!/usr/bin/env bash
# Fresh machine to green tests: packages, build, every test headless.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh
cd "${BUILD_DIR:-build}"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)"
