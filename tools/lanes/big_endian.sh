#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compares what kvgamut reads and writes on a big-endian processor (s390x, emulated) with what it does on this one:
#
#   tools/lane.sh big-endian
#
# The program is built for both. The one for s390x is built in a root directory of Debian 12, which is kept in
# build/debian/s390x. Needs root and, the first time, the package archive of Debian. Exits with 77 and prints the reason
# if it cannot run.
set -euo pipefail

tree=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tools/lanes/debian_root.sh
source "$tree/tools/lanes/debian_root.sh"

# What the program links, for s390x, and the tools for this processor that build it.
libraries=(qt6-base-dev qt6-base-private-dev qt6-svg-dev qt6-tools-dev libqt6opengl6-dev libgl-dev libopengl-dev libegl-dev
    liblcms2-dev libpolyclipping-dev libmeshoptimizer-dev libxcb1-dev libfontconfig-dev libpng-dev libjpeg-dev libtiff-dev
    libwebp-dev libvips-dev)
tools=(g++-s390x-linux-gnu cmake ninja-build pkg-config qemu-user-static qt6-base-dev-tools qt6-l10n-tools
    qt6-tools-dev-tools qt6-translations-l10n fonts-liberation libjs-three libcli11-dev libexpected-dev)

if [[ -z ${KV_OWN_MOUNTS:-} ]]; then
    echo "--- building for this processor"
    cmake --preset release -S "$tree" -B "$tree/build/release" >/dev/null
    cmake --build "$tree/build/release" --target kvgamut >/dev/null
fi
kv_own_mounts "$@"
kv_enter_debian "$tree" bookworm s390x
log=$tree/build/debian/s390x/lane.log
kv_in_debian bash -c 'dpkg --add-architecture s390x && apt-get -q update &&
    apt-get -q -y install --no-install-recommends "$@"' install "${tools[@]}" "${libraries[@]/%/:s390x}" >"$log" 2>&1 || {
    tail -n 5 "$log"
    kv_cannot_run "the packages could not be installed from $kv_mirror"
}
echo "--- building for s390x"
kv_in_debian sh -c 'cd /src && cmake --preset release -B build/s390x --toolchain tools/lanes/s390x.cmake \
    -DKV3DVIEWER_HARDENING=OFF && cmake --build build/s390x --target kvgamut' >"$log" 2>&1 || { tail -n 30 "$log"; exit 1; }

# --- The same commands on both ------------------------------------------------------------------------------------
shared=$tree/build/debian/s390x/build/files # /src/build/files in the root directory
rm -rf "$shared"
mkdir -p "$shared/little" "$shared/big"
export QT_QPA_PLATFORM=offscreen
little() {
    (cd "$shared/little" && "$tree/build/release/bin/kvgamut" "$@")
}
big() {
    kv_in_debian env QT_QPA_PLATFORM=offscreen sh -c 'cd /src/build/files/big && exec qemu-s390x-static \
        /src/build/s390x/bin/kvgamut "$@"' sh "$@"
}
differing=0
# compare NAME: the file that both have written. Times are left out.
compare() {
    sed -i '/"seconds":/d' "$shared/little/$1" "$shared/big/$1"
    if cmp -s "$shared/little/$1" "$shared/big/$1"; then
        echo "the same bytes: $1 ($(stat --format %s "$shared/big/$1"))"
    else
        echo "DIFFERENT: $1"
        differing=$((differing + 1))
    fi
}
# both NAME ARGUMENT ...: a command on both, whose output file is NAME.
both() {
    little "${@:2}" --output "$1" --quiet
    big "${@:2}" --output "$1" --quiet
    compare "$1"
}
for format in kvgamut ply obj stl gltf x3d json icc html; do
    both "srgb.$format" export sRGB --grid 9
done
# Not pictures and PDF: Qt rounds the borders of lines by processor, and orders fonts by addresses.
for format in csv json svg; do
    both "slice.$format" slice sRGB DisplayP3 --lightness 50 --grid 9
done
both volume.json volume sRGB AdobeRGB --grid 9 --format json
both info.json info sRGB --grid 9 --format json
both compare.json compare sRGB DisplayP3 --grid 9 --format json

# Each reads what the other has written.
cp "$shared/little/srgb.kvgamut" "$shared/big/other.kvgamut"
cp "$shared/big/srgb.kvgamut" "$shared/little/other.kvgamut"
cp "$shared/little/srgb.icc" "$shared/big/other.icc"
cp "$shared/big/srgb.icc" "$shared/little/other.icc"
both read_gamut.ply export other.kvgamut
both read_boundary.ply export other.icc@boundary

# Pictures and colours as inputs. (The hull of pixels has its vertices in another order: Little CMS rounds colours by
# processor.)
printf 'L,a,b\n50,10,10\n60,-120,90\n' | tee "$shared/little/colours.csv" >"$shared/big/colours.csv"
cp "$tree/docs/pictures/qml.png" "$shared/little"
cp "$tree/docs/pictures/qml.png" "$shared/big"
both inside.csv inside sRGB --points colours.csv --format csv
both check.json check sRGB --photo qml.png --points-space sRGB --format json

[[ $differing -eq 0 ]] || { echo "big-endian: $differing files differ, see $shared"; exit 1; }
echo "Files are read and written on a big-endian processor as on this one."
