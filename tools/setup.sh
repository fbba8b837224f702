# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# Shared by run.sh, test.sh and tools/lane.sh: installs packages and sets the folders of caches.
# To be sourced; call kv_set_up.

# Packages of Debian 12 and Ubuntu 24.04 (or newer) that the program needs to build and run.
kv_run_packages=(
    g++ cmake ninja-build pkg-config
    qt6-base-dev qt6-base-private-dev qt6-svg-dev libqt6opengl6-dev libgl-dev libopengl-dev libegl-dev
    qt6-tools-dev qt6-l10n-tools qt6-translations-l10n
    liblcms2-dev libpolyclipping-dev libmeshoptimizer-dev libexpected-dev libcli11-dev libxcb1-dev libfontconfig-dev
    libpng-dev libjpeg-dev libtiff-dev libwebp-dev libvips-dev libjs-three
    libgl1-mesa-dri libglx-mesa0 libegl-mesa0 xvfb xauth fonts-liberation
)
# Packages that the Python module needs to build and run (the preset "python").
kv_python_packages=(pybind11-dev python3-dev python3-numpy)
# Packages that the module KV3DViewer.Quick needs to build and run.
kv_quick_packages=(qt6-declarative-dev qt6-declarative-dev-tools qml6-module-qtquick qml6-module-qtqml
    qml6-module-qtqml-models qml6-module-qtqml-workerscript)
# Packages that the tests need: Qhull to compare hulls with, ICC profiles, a window manager, tools that send
# real input, the accessibility bus and its client library, Clang for the fuzzers, shells whose completions are tested, the sources of locales,
# pytest, and PyQt, whose windows the Python module must not disturb; Qt Quick.
kv_test_packages=(make libgtest-dev libgmock-dev libbenchmark-dev libqhull-dev
    colord-data libgs-common openbox xdotool libxcb-xtest0-dev at-spi2-core dbus-daemon libatspi2.0-dev clang libclang-rt-dev zsh fish appstream
    debootstrap debhelper dh-python dpkg-dev desktop-file-utils doxygen jq locales parallel
    "${kv_python_packages[@]}" python3-pytest python3-pyqt6 "${kv_quick_packages[@]}")
# Packages with which the source package is built and checked, beside those for tests.
kv_package_packages=(debhelper dh-python lintian)
# Packages that some of these systems do not have. The test that needs one says why it is skipped.
kv_optional_test_packages=(clang-format-14 chromium)

kv_is_installed() {
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# Runs apt-get as root, without questions. Only sudo may ask for a password, and only at a terminal.
kv_apt_get() {
    local as_root=()
    if [[ $EUID -ne 0 ]]; then
        as_root=(sudo)
        [[ -t 0 ]] || as_root+=(--non-interactive)
    fi
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive NEEDRESTART_SUSPEND=1 \
        apt-get -q -y -o DPkg::Lock::Timeout=600 -o Dpkg::Use-Pty=0 "$@" </dev/null >&2
}

# kv_set_up ROOT run|test: prepares the tree at ROOT for running, or for testing too.
kv_set_up() {
    local packages=("${kv_run_packages[@]}")
    [[ $2 != test ]] || packages+=("${kv_test_packages[@]}")
    kv_install "${packages[@]}"
    [[ $2 != test ]] || kv_install_optional "${kv_optional_test_packages[@]}"
    kv_stay_in_tree "$1/build/cache"
    [[ $2 != test ]] || export LC_ALL="${LC_ALL:-C.UTF-8}"
}

# Installs the named packages that are missing.
kv_install() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        kv_check_without_apt
        return
    fi
    local package missing=()
    for package in "$@"; do
        kv_is_installed "$package" || missing+=("$package")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0

    if [[ $EUID -ne 0 ]] && ! command -v sudo >/dev/null; then
        echo "Please install as root, then try again: apt-get install ${missing[*]}" >&2
        return 1
    fi
    echo "Installing: ${missing[*]}" >&2
    if ! { kv_apt_get update && kv_apt_get install --no-install-recommends "${missing[@]}"; }; then
        echo "These packages could not be installed: ${missing[*]}" >&2
        return 1
    fi
}

# Installs the named packages that are missing and that this system offers. Reports what is not available.
kv_install_optional() {
    command -v apt-cache >/dev/null && command -v dpkg-query >/dev/null || return 0
    local package
    for package in "$@"; do
        kv_is_installed "$package" && continue
        if apt-cache show "$package" >/dev/null 2>&1; then
            kv_install "$package"
        else
            echo "Not available on this system: $package" >&2
        fi
    done
}

# Checks on systems without apt that the most important tools exist, and names what to install otherwise.
kv_check_without_apt() {
    local tool
    for tool in c++ cmake ninja pkg-config; do
        if ! command -v "$tool" >/dev/null; then
            echo "Please install a C++20 compiler, CMake 3.25, Ninja, pkg-config, Qt 6.4 (base, OpenGL, SVG and Linguist tools)," \
                "Little CMS 2, Clipper (polyclipping), meshoptimizer, tl-expected, CLI11, libxcb, Fontconfig, libpng, libjpeg-turbo, libtiff, libwebp, libvips, three.js, Xvfb with xauth, Mesa and the Liberation" \
                "fonts; for the tests also GoogleTest and Google Benchmark. ($tool was not found.)" >&2
            return 1
        fi
    done
}

# Makes all programs that are started keep caches and run-time files in the given folder.
kv_stay_in_tree() {
    local cache=$1
    mkdir -p "$cache/mesa" "$cache/runtime"
    chmod 700 "$cache/runtime"
    export XDG_CACHE_HOME="$cache"
    export MESA_SHADER_CACHE_DIR="$cache/mesa"
    export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$cache/runtime}"
    # a compiler cache is used if the user has named its folder
    [[ -n ${CCACHE_DIR:-} ]] || export CCACHE_DISABLE=1
}
