#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the Debian source package and, from it, the packages; then lintian checks all of them:  source_package.sh
#
# Run by tools/lane.sh, which installs what is needed. The results are in build/source_package.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
work=$root/build/source_package
tree=$work/kv3dviewer
rm -rf "$work"
mkdir -p "$tree"
git -C "$root" ls-files -z --cached --others --exclude-standard --deduplicate |
    (cd "$root" && while IFS= read -r -d '' file; do [[ ! -e $file ]] || printf '%s\0' "$file"; done) |
    tar -C "$root" --null --files-from=- -cf - | tar -C "$tree" -xf -

echo "--- the packages, from the source package (log: $work/build.log)"
(cd "$tree" && dpkg-buildpackage --no-sign) >"$work/build.log" 2>&1 || { tail -n 40 "$work/build.log"; exit 1; }
echo "--- lintian"
run=(lintian)
[[ $EUID -ne 0 ]] || run+=(--allow-root)
"${run[@]}" --fail-on error,warning --info "$work"/*.changes
ls "$work"
