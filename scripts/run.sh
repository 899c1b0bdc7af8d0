#!/usr/bin/env bash
# Fresh machine to the main job: packages, build, then the stand-in host with
# the preferences plug-in. Arguments go to lmprefs-host.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh >/dev/null
exec "${BUILD_DIR:-build}/bin/lmprefs-host" "$@"
