#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Shows the gamuts of ICC profiles:  ./run.sh [profile ...]
#
# Installs what is missing (Debian, Ubuntu), builds, and opens a window with the given profiles, or
# with sRGB solid and Display P3 translucent around it. Without a display it writes gamut.png here.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tools/setup.sh
source "$root/tools/setup.sh"

profiles=("$@")
[[ ${#profiles[@]} -gt 0 ]] || profiles=(sRGB DisplayP3)

kv_set_up "$root" run

[[ -d $root/build/release ]] || echo "Building; the first time takes a few minutes." >&2
log="$root/build/release.log"
if ! (cd "$root" && cmake --preset release && cmake --build --preset release) >"$log" 2>&1; then
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
echo "There is no display to open a window on. The picture is in $picture"
