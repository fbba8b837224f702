#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The lane "oss-fuzz" (tools/lane.sh oss-fuzz): runs tests/fuzz/oss-fuzz/build.sh with the variables that OSS-Fuzz sets,
# and starts each fuzzer with its seeds, without the build folder and with the libraries beside it only. Fails if the
# script fails, if a fuzzer does not start or fails on its seeds, or if one takes a library of the build.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
build=$root/build/oss-fuzz
rm -rf "$build"
mkdir -p "$build/out" "$build/work"
flags="-O1 -fno-omit-frame-pointer -gline-tables-only -DFUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION -fsanitize=address"
flags+=" -fsanitize-address-use-after-scope -fsanitize=fuzzer-no-link"
(
    cd "$root"
    export SANITIZER=address FUZZING_ENGINE=libfuzzer ARCHITECTURE=x86_64 CC=clang CXX=clang++ CFLAGS=$flags
    export CXXFLAGS="$flags -stdlib=libc++" LIB_FUZZING_ENGINE=-fsanitize=fuzzer
    export SRC=${root%/*} OUT=$build/out WORK=$build/work
    bash tests/fuzz/oss-fuzz/build.sh
)
mv "$build/work" "$build/hidden" # a fuzzer that needs it does not start
for fuzzer in "$build"/out/fuzz_*; do
    [[ -x $fuzzer ]] || continue
    name=$(basename "$fuzzer")
    mkdir -p "$build/seeds/$name"
    unzip -q -o -d "$build/seeds/$name" "$build/out/${name}_seed_corpus.zip"
    env -i HOME="$build" LD_DEBUG=libs "$fuzzer" -runs=50 -detect_leaks=0 "-artifact_prefix=$build/" \
        "$build/seeds/$name" >"$build/$name.log" 2>&1 || {
        grep -v '^ *[0-9]*:' "$build/$name.log" | tail -n 20
        echo "FAILED: $name" >&2
        exit 1
    }
    if grep -aE 'calling init: .*/lib(Qt6|vips|lcms2|png16|jpeg|tiff)[^/]*$' "$build/$name.log" |
        grep -av "calling init: $build/out/"; then
        echo "FAILED: $name uses libraries that are not beside it" >&2
        exit 1
    fi
    echo "$name starts"
done
