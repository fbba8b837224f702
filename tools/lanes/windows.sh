#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compiles the files for Windows with the cross compiler of Debian; they include no header of Qt. Then checks the syntax
# of all sources of the libraries for Windows, with the headers of Qt and of the other libraries that this system has.
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

# Only the headers that are needed: those of this system's C library must not be found.
headers=$out/include
rm -rf "$headers"
mkdir -p "$headers"
ln -s /usr/include/{tl,polyclipping,lcms2.h,lcms2_plugin.h,meshoptimizer.h} "$headers"
qt=$(dirname "$(find /usr/include -type d -path '*qt6/QtCore' -print -quit)")
options=(-std=c++20 -fsyntax-only -w -I. -Iinclude -isystem "$headers" -isystem "$qt" -DQT_NO_KEYWORDS -DKVCORECOMMON_LIBRARY
    -DKVVELMORAFRAMEWORK_LIBRARY -DKV3DVIEWER_LIBRARY -DKV3DVIEWERWIDGETS_LIBRARY -DKV3DVIEWERQUICK_LIBRARY)
for module in Core Gui OpenGL Concurrent Widgets OpenGLWidgets Network Qml QmlIntegration Quick; do
    options+=(-isystem "$qt/Qt$module")
done
find platform engine annotation scene glwindow gamut viewer widgets quick -name '*.cpp' ! -name '*_posix.cpp' -print0 |
    xargs -0 --max-procs="$(nproc)" --max-args=4 x86_64-w64-mingw32-g++-posix "${options[@]}"
echo "the libraries compile for Windows"
