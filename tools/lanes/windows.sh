#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compiles the files for Windows with the cross compiler of Debian; they include no header of Qt. Then checks the syntax
# of all sources of the libraries and of the program for Windows, with the headers of Qt and of the other libraries that
# this system has.
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

# Only the headers that are needed: those of this system's C library must not be found. Some are in a folder that has the
# name of this system's architecture.
headers=$out/include
rm -rf "$headers"
mkdir -p "$headers"
ln -s /usr/include/{tl,CLI,polyclipping,lcms2.h,lcms2_plugin.h,meshoptimizer.h} "$headers"
ln -s /usr/include/{jpeglib.h,jmorecfg.h,jerror.h,png.h,pngconf.h,pnglibconf.h,zlib.h,zconf.h,webp,vips} "$headers"
for name in jconfig.h tiff.h tiffconf.h tiffio.h tiffvers.h; do
    ln -s "$(find /usr/include -name "$name" -print -quit)" "$headers"
done
glib=$(dirname "$(find /usr/include -path '*/glib-2.0/glib.h' -print -quit)")
glib_config=$(dirname "$(find /usr/lib -path '*/glib-2.0/include/glibconfig.h' -print -quit)")
qt=$(dirname "$(find /usr/include -type d -path '*qt6/QtCore' -print -quit)")

options=(-std=c++20 -fsyntax-only -w -I. -Iinclude -isystem "$headers" -isystem "$qt" -DQT_NO_KEYWORDS -DKVCORECOMMON_LIBRARY
    -DKVVELMORAFRAMEWORK_LIBRARY -DKV3DVIEWER_LIBRARY -DKV3DVIEWERWIDGETS_LIBRARY -DKV3DVIEWERQUICK_LIBRARY)
for module in Core Gui OpenGL Concurrent Widgets OpenGLWidgets Network Qml QmlIntegration Quick Svg; do
    options+=(-isystem "$qt/Qt$module")
done

# Checks the sources below the folders that are named.
check_syntax() {
    find "$@" -name '*.cpp' ! -name '*_posix.cpp' -print0 |
        xargs -0 --max-procs="$(nproc)" --max-args=4 x86_64-w64-mingw32-g++-posix "${options[@]}"
}

check_syntax platform engine annotation scene glwindow gamut viewer widgets quick
echo "the libraries compile for Windows"

# glib's headers describe this system, where users have numbers of the type uid_t
options+=(-Iapps/kvgamut -DKVGAMUT_VERSION='"0"' -isystem "$glib" -isystem "$glib_config" -Duid_t=int)
check_syntax apps/kvgamut/{main.cpp,model,commands,desktop}
echo "the program compiles for Windows"
