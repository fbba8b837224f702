#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Shows the viewer in a Wayland compositor and compares the compositor's screenshots with the viewer's pictures:
#
#   tools/lane.sh wayland [option of the test program ...]
#
# The compositor is weston without a screen, in a Debian 13 root directory with Qt 6.8: with earlier versions Qt cannot
# embed windows on Wayland. The root directory, its packages and the build are kept in build/debian.
#
# Needs root (for chroot) and, the first time, the package archive of Debian. Exits with 77 and prints the reason if it
# cannot run.
set -euo pipefail

tree=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tools/lanes/debian_root.sh
source "$tree/tools/lanes/debian_root.sh"

kv_own_mounts "$@"
kv_enter_debian "$tree" trixie
log=$tree/build/debian/trixie/wayland.log
kv_set_up_debian run libgtest-dev libgmock-dev libbenchmark-dev colord-data doxygen jq qt6-wayland weston >"$log" 2>&1 || {
    tail -n 5 "$log"
    kv_cannot_run "the packages could not be installed from $kv_mirror"
}

# --- Build ------------------------------------------------------------------------------------------
echo "--- building with Qt $(kv_in_debian dpkg-query --show --showformat '${Version}' qt6-base-dev)"
kv_in_debian sh -c 'cmake -S /src --preset dev -B /src/build/wayland -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON \
    -DKV3DVIEWER_PACKAGES=OFF -DKV3DVIEWER_TEST_ROOMS=wayland &&
    cmake --build /src/build/wayland --target test_wayland' >"$log" 2>&1 ||
    { tail -n 30 "$log"; exit 1; }

# --- Tests ------------------------------------------------------------------------------------------
for renderer in pixman gl; do
    echo "--- weston with its renderer $renderer"
    kv_in_debian /src/tools/lanes/run_in_weston.sh "$renderer" /src/build/wayland/bin/test_wayland "$@"
done
echo "--- done"
