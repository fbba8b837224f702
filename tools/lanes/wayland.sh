#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Shows the viewer in a Wayland compositor and compares the compositor's screenshots with the viewer's pictures:
#
#   tools/lane.sh wayland [option of the test program ...]
#
# The compositor is weston without a screen, in a Debian 13 root directory with Qt 6.8: with earlier versions Qt cannot
# embed windows on Wayland. The root directory, its packages and the build are kept in build/wayland.
#
# Needs root (for chroot) and, the first time, the package archive of Debian. Exits with 77 and prints the reason if it
# cannot run.
set -euo pipefail

PATH=$PATH:/usr/sbin:/sbin
tree=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tools/setup.sh
source "$tree/tools/setup.sh"
work=$tree/build/wayland
root=$work/root
suite=trixie
mirror=http://deb.debian.org/debian

cannot_run() {
    echo "NOT RUN: $1"
    exit 77
}

inside() {
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe "$@"
}

# --- Requirements ---------------------------------------------------------------------------------
[[ $EUID -eq 0 ]] || cannot_run "it needs the rights of root"
for tool in debootstrap unshare; do
    command -v "$tool" >/dev/null || cannot_run "$tool is not installed"
done
if [[ -z ${KV_OWN_MOUNTS:-} ]]; then # mounts are removed when this process ends
    unshare --mount true 2>/dev/null || cannot_run "this system does not let root mount file systems"
    KV_OWN_MOUNTS=1 exec unshare --mount --propagation private "${BASH_SOURCE[0]}" "$@"
fi

# --- A Debian 13 with what the build, the tests and the compositor need -----------------------------
mkdir -p "$work"
if [[ ! -f $work/fetched ]]; then
    echo "--- fetching Debian 13"
    rm -rf --one-file-system "$root"
    debootstrap --variant=minbase "$suite" "$root" "$mirror" >"$work/debootstrap.log" 2>&1 || {
        tail -n 5 "$work/debootstrap.log"
        cannot_run "debootstrap could not create $suite from $mirror"
    }
    touch "$work/fetched"
fi
mkdir -p "$root/src"
mount --bind "$tree" "$root/src" && mount -t proc proc "$root/proc" && mount -t tmpfs tmpfs "$root/dev/shm" &&
    mount -t tmpfs tmpfs "$root/tmp" || cannot_run "this system does not let root mount file systems"
packages=("${kv_run_packages[@]}" libgtest-dev libgmock-dev libbenchmark-dev colord-data doxygen jq qt6-wayland weston)
if [[ $(cat "$work/installed" 2>/dev/null) != "${packages[*]}" ]]; then
    echo "--- installing ${#packages[@]} packages in it"
    cp /etc/resolv.conf "$root/etc/"
    echo 'Acquire::Languages "none"; APT::Sandbox::User "root";' >"$root/etc/apt/apt.conf.d/lane"
    echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/lane"
    { inside apt-get -q update && inside apt-get -q -y install --no-install-recommends "${packages[@]}" &&
        inside apt-get clean; } >"$work/apt.log" 2>&1 ||
        { tail -n 5 "$work/apt.log"; cannot_run "the packages could not be installed from $mirror"; }
    echo "${packages[*]}" >"$work/installed"
fi

# --- Build ------------------------------------------------------------------------------------------
echo "--- building with Qt $(inside dpkg-query --show --showformat '${Version}' qt6-base-dev)"
inside sh -c 'cmake -S /src --preset dev -B /src/build/wayland/build -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON \
    -DKV3DVIEWER_PACKAGES=OFF -DKV3DVIEWER_TEST_ROOMS=wayland &&
    cmake --build /src/build/wayland/build --target test_wayland' >"$work/build.log" 2>&1 ||
    { tail -n 30 "$work/build.log"; exit 1; }

# --- Tests ------------------------------------------------------------------------------------------
for renderer in pixman gl; do
    echo "--- weston with its renderer $renderer"
    inside /src/tools/lanes/run_in_weston.sh "$renderer" /src/build/wayland/build/bin/test_wayland "$@"
done
echo "--- done"
