#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compiles the files for Windows with the cross compiler of Debian. They include no header of Qt.
set -euo pipefail

cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.."
out=build/windows
mkdir -p "$out"

count=0
while IFS= read -r source; do
    echo "$source"
    x86_64-w64-mingw32-g++-posix -std=c++20 -O2 -Wall -Wextra -Wpedantic -Werror -I. -Iapps/kvgamut \
        -c "$source" -o "$out/${source//\//-}.o"
    count=$((count + 1))
done < <(find apps annotation engine gamut glwindow platform scene viewer -name '*_windows.cpp' | sort)
[[ $count -gt 0 ]] || { echo "windows: no file for Windows was found" >&2; exit 1; }
echo "compiled for Windows: $count files"
