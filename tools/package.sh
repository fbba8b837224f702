#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Packs a build with the option KV3DVIEWER_PACKAGES:  package.sh BUILD OUTPUT
#
# Writes the Debian packages that debian/ describes to the folder OUTPUT. Needs debhelper. Nothing is compiled, and the
# tree is not changed.
set -euo pipefail
[[ $# -eq 2 ]] || { echo "Usage: $0 BUILD OUTPUT" >&2; exit 2; }
command -v dh >/dev/null || { echo "Please install debhelper" >&2; exit 1; }
root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
build=$(realpath "$1")
rm -rf "$2/source"
mkdir -p "$2/source"
output=$(realpath "$2")
rm -f "$output"/*.deb
cp -r "$root"/{debian,CHANGELOG.md,SECURITY.md} "$output/source"
mkdir "$output/source/cmake"
cp "$root/cmake/KVRemoveRunPaths.cmake" "$output/source/cmake"
cd "$output/source"
# debug symbols of a build for tests are of no use
KV_BUILD=$build DEB_RULES_REQUIRES_ROOT=no DEB_BUILD_OPTIONS="${DEB_BUILD_OPTIONS:-} noautodbgsym" debian/rules binary
cd ..
rm -rf source
