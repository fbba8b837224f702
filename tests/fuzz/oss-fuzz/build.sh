#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Run by OSS-Fuzz in the tree, with its compiler, flags and folders in the environment: builds the fuzzers to $OUT,
# each with its dictionary, its seeds and the libraries of the system that it needs.
set -euo pipefail

tree=$PWD
# Qt is linked to GCC's standard library.
export CXXFLAGS="${CXXFLAGS//-stdlib=libc++/}"
# The sanitizers are in CXXFLAGS.
cmake --preset fuzz -B "$WORK/build" "-DCMAKE_CXX_COMPILER=$CXX" -DKV3DVIEWER_SANITIZE=
cmake --build "$WORK/build" --target KVFuzzers

mkdir -p "$OUT/lib" "$OUT/plugins"
cp -r "$(qmake6 -query QT_INSTALL_PLUGINS)/imageformats" "$OUT/plugins/"
vips=$(pkg-config --variable=libdir vips)/libvips.so.42 # the readers load it when they need it
cp -L "$vips" "$OUT/lib/"
for fuzzer in "$WORK"/build/bin/fuzz_*; do
    name=$(basename "$fuzzer")
    cp "$fuzzer" "$OUT/"
    # the libraries beside the fuzzers come first: the machine that runs them has none of them
    patchelf --set-rpath "\$ORIGIN/lib" "$OUT/$name"
    ldd "$fuzzer" "$vips" "$OUT"/plugins/imageformats/*.so | awk '$2 == "=>" && $3 ~ /^\// { print $3 }' |
        grep -vE '/(libc|libm|libpthread|libdl|librt|ld-linux.*)\.so' | sort -u | xargs -I{} cp -uL {} "$OUT/lib/"
    dictionary="$tree/tests/fuzz/${name#fuzz_}.dict"
    [[ ! -f $dictionary ]] || cp "$dictionary" "$OUT/$name.dict"
    (cd "$WORK/build/seeds/${name#fuzz_}" && zip -q -r "$OUT/${name}_seed_corpus.zip" .)
done
for library in "$OUT"/lib/*.so* "$OUT"/plugins/imageformats/*.so; do
    patchelf --set-rpath "\$ORIGIN:\$ORIGIN/../../lib" "$library"
done
