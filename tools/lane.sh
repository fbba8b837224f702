#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs one check that is not part of the ordinary tests:  tools/lane.sh NAME [argument ...]
#
#   asan       logic tests under the address, leak and undefined-behaviour sanitizers
#   tsan       tests of code that shares data between threads, under the thread sanitizer
#   valgrind   a sample of the logic tests under memcheck
#   tidy       clang-tidy; arguments are files, default: all sources of the library and the program
#   clazy      clazy, level 1; same arguments
#   libcxx     the libraries and the parts of the program, compiled with Clang and libc++
#   soak       many random calls; arguments are passed to the program (see --help)
#   soak-asan  the same under the address sanitizer
#   faults     the program while calls of the system fail, in many places
#   idle       the cost of idle, covered and hidden viewers; arguments are width, height and seconds
#   fuzz       every fuzzer for an hour, under the sanitizers; arguments are [--seconds N] and names of readers
#   oss-fuzz   the script with which OSS-Fuzz builds the fuzzers, and a start of each of them
#   source-package  the Debian source package, what is built from it, and lintian
#   reproducible    two builds of the packages at other paths and times, which must be identical; --release: of the
#                   preset "release"
#   windows    the files for Windows, with a cross compiler
#   debian [SUITE]  all tests in a root directory of another Debian system (default: trixie, Debian 13); needs root
#   big-endian  what the program reads and writes on an emulated big-endian processor; needs root
#   wayland    the viewer on the screen of a Wayland compositor, in a Debian 13 root directory; needs root
#
# Installs missing packages (Debian, Ubuntu). docs/LANES.md describes what each lane can find.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=tools/setup.sh
source "$root/tools/setup.sh"
cd "$root"

usage() {
    sed -n '3,/^# Installs/s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"
}

[[ $# -gt 0 ]] || { usage >&2; exit 2; }
lane=$1
shift

with_display() {
    QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe \
        xvfb-run -a -s "-noreset -screen 0 1280x1024x24" "$@"
}

# build PRESET ROOMS [TARGET ...]
# ROOMS are the test folders of the lane's own build. The build "dev" is shared with test.sh and is not changed.
build() {
    local choice=(-DKV3DVIEWER_BUILD_APPS=OFF "-DKV3DVIEWER_TEST_ROOMS=$2")
    [[ $1 != dev ]] || choice=()
    cmake --preset "$1" "${choice[@]}"
    cmake --build --preset "$1" ${3:+--target "${@:3}"}
}

# Sources of the library and the program, or the given ones.
sources() {
    if [[ $# -gt 0 ]]; then
        printf '%s\n' "$@"
    else
        find viewer widgets quick annotation glwindow scene gamut platform engine apps -name '*.cpp' | sort
    fi
}
analyse() {
    local command=$1
    shift
    # each source by itself; without precompiled headers, because Clang cannot read those of GCC
    cmake --preset dev -B build/analysis -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON -DKV3DVIEWER_UNITY=OFF \
        -DKV3DVIEWER_TEST_ROOMS= >/dev/null
    # the files that moc generates are included by the sources
    cmake --build build/analysis \
        --target KVCoreCommon_autogen KV3DViewerObjects_autogen KVGamutDesktop_autogen >/dev/null
    # shellcheck disable=SC2016 # the inner shell expands it
    sources "$@" | xargs --max-procs="$(nproc)" --max-args=1 bash -c "$command"' "$0"'
}

case $lane in
asan)
    kv_set_up "$root" test
    build asan "platform;engine;annotation;scene;glwindow;gamut;viewer;lanes" KVLogicTests
    ctest --preset asan --parallel "$(nproc)" --no-tests=error
    ;;
tsan)
    kv_set_up "$root" test
    build tsan "platform;gamut;viewer;lanes" test_completion_protocol racy_on_purpose
    ctest --preset tsan --no-tests=error -R '^(test_completion_protocol|lane_finds_a_race)$'
    ;;
valgrind)
    kv_set_up "$root" test
    kv_install valgrind
    sample=(test_completion_protocol test_camera test_input test_scene_object)
    build dev "platform;scene;glwindow" "${sample[@]}"
    export QT_QPA_PLATFORM=offscreen
    # allocations are not counted in the heap of memcheck
    printf 'build/dev/bin/%s\n' "${sample[@]}" | xargs --max-procs="$(nproc)" -I{} \
        valgrind --quiet --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=definite \
        --suppressions=tools/lanes/valgrind.supp {} --gtest_brief=1 '--gtest_filter=-Batch.steadySceneAllocatesNothing'
    ;;
tidy)
    kv_set_up "$root" test
    kv_install clang-tidy
    analyse 'clang-tidy -p build/analysis --quiet' "$@"
    ;;
libcxx)
    kv_set_up "$root" test
    kv_install clang libc++-dev libc++abi-dev
    cmake --preset release -B build/libcxx -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS=-stdlib=libc++ \
        -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON -DKV3DVIEWER_UNITY=OFF \
        -DCMAKE_BUILD_TYPE=Debug -DKV3DVIEWER_STRICT=ON -DKV3DVIEWER_WIDGETS=ON -DKV3DVIEWER_QUICK=ON
    # not the program: Qt has some functions with types of its own standard library
    cmake --build build/libcxx --target KV3DViewer KV3DViewerWidgets KV3DViewerQuick KVGamutModel KVGamutDesktop
    echo "The libraries, the program's model and its window compile with Clang and libc++."
    ;;
clazy)
    kv_set_up "$root" test
    kv_install clazy
    export CLAZY_HEADER_FILTER='/(include|viewer|widgets|quick|scene|glwindow|gamut|platform|engine|apps)/'
    analyse 'clazy-standalone -p build/analysis -checks=level1 --extra-arg=-Werror' "$@"
    ;;
soak | soak-asan)
    kv_set_up "$root" test
    preset=dev
    [[ $lane == soak ]] || preset=asan
    build "$preset" soak soak
    [[ $# -gt 0 ]] || set -- --calls 100000
    export ASAN_OPTIONS=detect_leaks=0:quarantine_size_mb=16
    with_display "build/$preset/bin/soak" "$@"
    with_display "build/$preset/bin/soak" --lose-contexts "$@"
    ;;
faults)
    kv_set_up "$root" test
    build dev "" test_kvgamut_faults
    KV_FAULT_POSITIONS=${1:-100} ctest --preset dev --no-tests=error -R '^test_kvgamut_faults$'
    ;;
idle)
    kv_set_up "$root" test
    build dev "" bench_idle
    with_display build/dev/bin/bench_idle "$@"
    ;;
fuzz)
    kv_set_up "$root" test
    tools/lanes/fuzz.sh "$@"
    ;;
oss-fuzz)
    kv_set_up "$root" test
    kv_install patchelf zip unzip
    tools/lanes/oss_fuzz.sh
    ;;
source-package)
    kv_set_up "$root" test
    kv_install "${kv_package_packages[@]}"
    tools/lanes/source_package.sh
    ;;
reproducible)
    kv_set_up "$root" test
    kv_install "${kv_package_packages[@]}"
    tools/lanes/reproducible.sh "$@"
    ;;
windows)
    kv_install g++-mingw-w64-x86-64-posix
    tools/lanes/windows.sh
    ;;
debian)
    kv_install debootstrap
    tools/lanes/debian.sh "$@"
    ;;
big-endian)
    kv_set_up "$root" run
    kv_install debootstrap
    tools/lanes/big_endian.sh "$@"
    ;;
wayland)
    kv_install debootstrap
    tools/lanes/wayland.sh "$@"
    ;;
*)
    usage >&2
    exit 2
    ;;
esac
