#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Shows the gamuts of ICC profiles:  ./run.sh [profile ...]
#
# Installs missing packages (Debian, Ubuntu), builds, and opens a window with the given profiles. The default is
# sRGB and a translucent Display P3. Without a display the picture is written to gamut.png in this folder.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tools/setup.sh
source "$root/tools/setup.sh"

profiles=("$@")
[[ ${#profiles[@]} -gt 0 ]] || profiles=(sRGB DisplayP3)

kv_set_up "$root" run

[[ -d $root/build/release ]] || echo "Building; this takes a few minutes the first time." >&2
log="$root/build/release.log"
if ! (cd "$root" && cmake --preset release && cmake --build --preset release --target kvgamut) >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    echo "The build failed; all of its output is in $log" >&2
    exit 1
fi

kvgamut="$root/build/release/bin/kvgamut"
if [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; then
    exec "$kvgamut" view -- "${profiles[@]}"
fi
picture="$root/gamut.png"
"$kvgamut" render --output "$picture" -- "${profiles[@]}"
echo "There is no display, so no window was opened. The picture is in $picture"
