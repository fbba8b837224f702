#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Tests the Debian packages in a minimal Debian:  clean_root.sh BUILD CONSUMER WORK CACHE
#
# Builds packages of the build folder BUILD, creates a minimal Debian of this system's release in WORK, installs the
# packages there and uses them: the program without a display, an X server and fonts, then with the recommended
# packages; the Python module if the build has it; the host CONSUMER, built with CMake and with pkg-config. Finally it
# removes the packages.
#
# Needs root (for chroot) and, the first time, the package archive of this system's apt. Downloads are kept in CACHE.
# Exits with 77 and prints the reason if it cannot run.
set -euo pipefail

PATH=$PATH:/usr/sbin:/sbin
build=$1 consumer=$2 work=$3 cache=$4
root=$work/root

cannot_run() {
    echo "NOT RUN: $1"
    echo "$1" >"$work.not_run" # test.sh prints it
    exit 77
}

fail() {
    echo "FAILED: $1"
    exit 1
}

step() {
    echo "--- $1 (after $SECONDS s)"
}

inside() {
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe "$@"
}

install_inside() {
    inside apt-get -q -y -o Dpkg::Use-Pty=0 install --no-install-recommends "$@" >"$work/apt.log" 2>&1 ||
        { tail -n 40 "$work/apt.log"; fail "apt-get install $*"; }
}

mkdir -p "$(dirname "$work")"
rm -f "$work.not_run"

# --- Requirements ---------------------------------------------------------------------------------
[[ $EUID -eq 0 ]] || cannot_run "it needs the rights of root"
for tool in debootstrap dh dpkg-shlibdeps unshare; do
    command -v "$tool" >/dev/null || cannot_run "$tool is not installed"
done
if [[ -z ${KV_OWN_MOUNTS:-} ]]; then # mounts are removed when this process ends
    unshare --mount true 2>/dev/null || cannot_run "this system does not let root mount file systems"
    KV_OWN_MOUNTS=1 exec unshare --mount --propagation private "$0" "$@"
fi

# shellcheck source=/dev/null
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
mirror=$(apt-get indextargets --format '$(SITE) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
    awk -v suite="$suite" '$2 == suite && $3 == "main" { print $1; exit }')
[[ -n $mirror ]] || cannot_run "apt has no source for $suite main"
eval "$(apt-config shell http_proxy Acquire::http::Proxy https_proxy Acquire::https::Proxy)"
export http_proxy=${http_proxy:-} https_proxy=${https_proxy:-}

# --- Packages -------------------------------------------------------------------------------------------
rm -rf --one-file-system "$work"
mkdir -p "$work" "$cache/archives/partial"
step "packing"
"$(dirname "$consumer")/../tools/package.sh" "$build" "$work/packages" >"$work/packing.log" 2>&1 ||
    { tail -n 40 "$work/packing.log"; fail "packing"; }
packages=(libkv3dviewer[0-9] libkv3dviewerwidgets libkv3dviewerquick qml6-module-kv3dviewer-quick libkv3dviewer-dev kvgamut)
[[ ! -d $build/python/kvgamut ]] || packages+=(python3-kvgamut)
for package in "${packages[@]}"; do
    compgen -G "$work/packages/$package*.deb" >/dev/null || fail "the package $package was not built"
done

# --- A minimal Debian -----------------------------------------------------------------------------
base=$cache/$suite.tar.gz
if [[ ! -f $base ]]; then
    step "fetching $suite from $mirror"
    debootstrap --variant=minbase "$suite" "$root" "$mirror" >"$work/debootstrap.log" 2>&1 || {
        tail -n 5 "$work/debootstrap.log"
        cannot_run "debootstrap could not create $suite from $mirror"
    }
    rm -f "$root"/var/cache/apt/archives/*.deb
    tar -C "$root" -I "gzip -1" -cf "$base.part" . && mv "$base.part" "$base"
else
    step "unpacking $suite"
    mkdir "$root" && tar -C "$root" -xf "$base"
fi
mount -t proc proc "$root/proc" && mount --bind "$cache/archives" "$root/var/cache/apt/archives" ||
    cannot_run "this system does not let root mount file systems"
cp /etc/resolv.conf "$root/etc/"
echo "deb $mirror $suite main" >"$root/etc/apt/sources.list"
[[ -z $http_proxy ]] || echo "Acquire::http::Proxy \"$http_proxy\";" >"$root/etc/apt/apt.conf.d/proxy"
echo 'APT::Keep-Downloaded-Packages "true"; Acquire::Languages "none"; APT::Sandbox::User "root";' \
    >"$root/etc/apt/apt.conf.d/clean-root"
rm -f "$root/etc/apt/apt.conf.d/docker-clean"
echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/clean-root" # the root is deleted afterwards
inside apt-get -q update >"$work/apt.log" 2>&1 || cannot_run "$mirror cannot be reached: $(tail -n 1 "$work/apt.log")"
find "$root" -xdev -iname '*kv3dviewer*' -o -xdev -iname '*kvgamut*' | sort >"$work/before.txt"
mkdir "$root/tmp/kv"
cp -r "$consumer" "$root/tmp/kv/consumer"
cp "$work"/packages/libkv3dviewer[0-9]*.deb "$root/tmp/kv/library.deb"
cp "$work"/packages/libkv3dviewerwidgets[0-9]*.deb "$root/tmp/kv/widgets.deb"
cp "$work"/packages/libkv3dviewerquick[0-9]*.deb "$root/tmp/kv/quick.deb"
cp "$work"/packages/qml6-module-kv3dviewer-quick*.deb "$root/tmp/kv/qml.deb"
cp "$work"/packages/libkv3dviewer-dev*.deb "$root/tmp/kv/development.deb"
cp "$work"/packages/kvgamut*.deb "$root/tmp/kv/program.deb"

# --- The program --------------------------------------------------------------------------------------------
step "installing the program"
install_inside /tmp/kv/library.deb /tmp/kv/program.deb
step "using the program"
inside kvgamut --version | grep -q '^kvgamut [0-9]' || fail "kvgamut --version"
inside kvgamut volume sRGB | tee "$work/volume.txt"
grep -q -E '\b83[23][0-9]{3}\b|\b83[23],[0-9]{3}\b' "$work/volume.txt" || fail "the volume of sRGB is wrong"
inside kvgamut render sRGB --output /tmp/kv/picture.png || fail "kvgamut render needs more than it depends on"
[[ $(stat --format %s "$root/tmp/kv/picture.png") -gt 10000 ]] || fail "kvgamut render draws nothing"
inside kvgamut export sRGB DisplayP3 --output /tmp/kv/page.html || fail "kvgamut export needs more than it depends on"
without_egl=__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent
if inside "$without_egl" kvgamut render sRGB --output /tmp/kv/none.png 2>"$work/errors.txt"; then
    fail "kvgamut render succeeds without EGL and without an X server"
fi
grep -q 'apt-get install xvfb' "$work/errors.txt" || fail "kvgamut render does not name the missing package: $(<"$work/errors.txt")"

step "installing the recommended packages"
recommended=$(inside dpkg-query --show --showformat '${Recommends}, ' 'libkv3dviewer[0-9]*' kvgamut | tr -d ' ' | tr ',' ' ')
# shellcheck disable=SC2086 # one word per package
install_inside $recommended
inside kvgamut render sRGB --output /tmp/kv/picture.png
inside "$without_egl" kvgamut render sRGB --output /tmp/kv/on_xvfb.png
cmp "$root/tmp/kv/picture.png" "$root/tmp/kv/on_xvfb.png" || fail "the picture depends on what it is drawn on"
cp "$root/tmp/kv/picture.png" "$work/picture.png"

installed=('libkv3dviewer*' kvgamut)
# --- The Python module ------------------------------------------------------------------------------------
if compgen -G "$work/packages/python3-kvgamut*.deb" >/dev/null; then
    step "the Python module"
    cp "$work"/packages/python3-kvgamut*.deb "$root/tmp/kv/python.deb"
    install_inside /tmp/kv/python.deb
    installed+=(python3-kvgamut)
    inside python3 -W error -c '
import kvgamut
gamut = kvgamut.Gamut.from_profile("sRGB")
assert 832000 < gamut.volume < 834000, gamut.volume
open("/tmp/kv/from_python.png", "wb").write(kvgamut.render(gamut))
' || fail "the Python module"
    [[ $(stat --format %s "$root/tmp/kv/from_python.png") -gt 10000 ]] || fail "the Python module draws nothing"
fi

# --- Hosts ----------------------------------------------------------------------------------------------------
step "installing the development package"
install_inside /tmp/kv/{development,widgets,quick,qml}.deb g++ cmake make pkg-config xauth # for xvfb-run
installed+=(qml6-module-kv3dviewer-quick)
inside sh -c 'ldd /usr/lib/*/qt6/qml/KV3DViewer/Quick/*.so' >"$work/ldd.txt"
grep -q 'libKV3DViewerQuick.* => /' "$work/ldd.txt" && ! grep -q 'not found' "$work/ldd.txt" ||
    fail "the QML module does not find its libraries: $(<"$work/ldd.txt")"
step "a host with CMake"
inside cmake -S /tmp/kv/consumer -B /tmp/kv/cmake_host >"$work/host.log" 2>&1 &&
    inside cmake --build /tmp/kv/cmake_host >>"$work/host.log" 2>&1 || { tail -n 40 "$work/host.log"; fail "the host with CMake"; }
inside xvfb-run -a -s "-noreset -screen 0 640x480x24" /tmp/kv/cmake_host/bin/consumer
step "a host with pkg-config"
mkdir "$root/tmp/kv/pkgconfig_host"
inside make -C /tmp/kv/pkgconfig_host -f /tmp/kv/consumer/Makefile >"$work/host.log" 2>&1 ||
    { tail -n 40 "$work/host.log"; fail "the host with pkg-config"; }
inside xvfb-run -a -s "-noreset -screen 0 640x480x24" /tmp/kv/pkgconfig_host/bin/consumer

# --- Removal -----------------------------------------------------------------------------------------
step "removing the packages"
inside apt-get -q -y purge "${installed[@]}" >"$work/apt.log" 2>&1 || { tail "$work/apt.log"; fail "purging"; }
rm -rf "$root/tmp/kv"
find "$root" -xdev -iname '*kv3dviewer*' -o -xdev -iname '*kvgamut*' | sort >"$work/after.txt"
diff "$work/before.txt" "$work/after.txt" || fail "the packages leave files behind"
umount "$root/var/cache/apt/archives" "$root/proc"
rm -rf --one-file-system "$root"
step "done"
