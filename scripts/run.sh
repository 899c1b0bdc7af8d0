#!/usr/bin/env bash
# Fresh machine to the main job: packages, build, then the stand-in host with
# the preferences plug-in; arguments go to lmprefs-host. With a display it
# opens the Preferences dialog. Without one it runs headless: with no
# arguments it writes every page's screenshot and the start-up trace into a
# folder (LMPREFS_OUTPUT, default build/headless-run) and says where.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh >/dev/null
build_dir=${BUILD_DIR:-build}
host="$build_dir/bin/lmprefs-host"

if [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]; then
    exec "$host" "$@"
fi
if (($#)); then
    exec "$host" --headless "$@"
fi

out=${LMPREFS_OUTPUT:-$PWD/$build_dir/headless-run}
rm -rf "$out/screenshots"
mkdir -p "$out"
"$host" --headless --screenshots "$out/screenshots" --trace "$out/startup-trace.txt" \
    --list-pages --diff-defaults >"$out/pages-and-changes.txt"
pages=$(find "$out/screenshots" -name '*.png' | wc -l)
cat <<MESSAGE
No display (DISPLAY is not set): lmprefs-host ran headless.
  Screenshots of the $pages pages:  $out/screenshots/
  Host calls of the start-up:  $out/startup-trace.txt
  Pages in dialog order, then the keys that differ from their defaults:
                               $out/pages-and-changes.txt
With a display, scripts/run.sh opens the Preferences dialog; "scripts/run.sh --help"
lists the command line.
MESSAGE
