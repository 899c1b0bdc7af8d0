#!/usr/bin/env bash
# Builds in Release and prints the plug-in's cost to its host as ratios
# against floors measured in the same run. Arguments go to Google Benchmark.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
BUILD_DIR=build-release BUILD_TYPE=Release scripts/build.sh -DLM_BENCHMARKS=ON -DBUILD_TESTING=OFF >/dev/null
echo "machine: $(nproc) cores, $(awk '/MemTotal/ {printf "%.0f GiB", $2/1048576}' /proc/meminfo), $(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2 | sed 's/^ //')"
exec build-release/bin/lmbench --benchmark_color=false "$@"
