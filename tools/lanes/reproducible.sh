#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the Debian packages twice, at other paths and times and with another umask, time zone and number of jobs, and
# compares them byte by byte:  reproducible.sh [--release]
#
# --release compares the libraries, the program and the files that it makes, built with the preset "release", instead:
# without debhelper and the links of packages. Run by tools/lane.sh, which installs what is needed.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
work=$root/build/reproducible
first=$work/first/kv3dviewer-0
second=$work/the-second-folder-has-a-longer-path/b/kv3dviewer
rm -rf "$work"

# The files that git knows, as they are now.
copy() {
    mkdir -p "$1"
    git -C "$root" ls-files -z --cached --others --exclude-standard --deduplicate |
        (cd "$root" && while IFS= read -r -d '' file; do [[ ! -e $file ]] || printf '%s\0' "$file"; done) |
        tar -C "$root" --null --files-from=- -cf - | tar -C "$1" -xf -
}

build_packages() { # FOLDER
    (cd "$1" && dpkg-buildpackage --build=binary --no-sign >"$1.log" 2>&1) || { tail -n 40 "$1.log"; exit 1; }
}

build_release() { # FOLDER
    (cd "$1" && cmake --preset release && cmake --build --preset release) >"$1.log" 2>&1 || { tail -n 40 "$1.log"; exit 1; }
}

results() { # FOLDER
    if [[ $kind == packages ]]; then
        find "$(dirname "$1")" -maxdepth 1 -name '*.deb' -printf '%f\n'
    else
        (cd "$1/build/release" && find lib bin man completions kv3dviewer.spdx.json -type f)
    fi | sort
}

folder_of_results() { # FOLDER
    if [[ $kind == packages ]]; then dirname "$1"; else echo "$1/build/release"; fi
}

kind=packages
[[ ${1:-} != --release ]] || kind=release
copy "$first"
copy "$second"
# in the past: ninja repeats its configuration for files of the future
find "$second" -exec touch --no-dereference --date='2020-01-02 03:04:05 UTC' {} +
export CCACHE_DISABLE=1
# packages take their time from debian/changelog
[[ $kind == packages ]] || export SOURCE_DATE_EPOCH=1700000000
(umask 022 && export TZ=UTC LC_ALL=C.UTF-8 && "build_$kind" "$first")
(umask 002 && export TZ=Pacific/Auckland LC_ALL=C && CMAKE_BUILD_PARALLEL_LEVEL=$(($(nproc) + 1)) \
    DEB_BUILD_OPTIONS=parallel=$(($(nproc) + 1)) "build_$kind" "$second")

list=$(results "$first")
[[ -n $list && $list == "$(results "$second")" ]] || { echo "FAILED: the builds have different files"; exit 1; }
failed=0
while read -r file; do
    if cmp "$(folder_of_results "$first")/$file" "$(folder_of_results "$second")/$file"; then
        echo "identical: $file"
    else
        failed=1
    fi
done <<<"$list"
[[ $failed -eq 0 ]] || { echo "FAILED: files differ, see $work (diffoscope shows where)"; exit 1; }
echo "Both builds are identical."
