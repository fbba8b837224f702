# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# Root directories of Debian systems, in which lanes build and test. To be sourced by a script that is run by itself.
#
# They need the rights of root (for chroot and mounts) and, the first time, Debian's package archive. They are kept in
# build/debian. What is mounted in them is gone when the script ends.

kv_mirror=http://deb.debian.org/debian

# kv_cannot_run REASON: ends the script as not run.
kv_cannot_run() {
    echo "NOT RUN: $1"
    exit 77
}

# kv_own_mounts [argument ...]: starts the script again, with its arguments, so that its mounts end with it.
kv_own_mounts() {
    PATH=$PATH:/usr/sbin:/sbin
    [[ $EUID -eq 0 ]] || kv_cannot_run "it needs the rights of root"
    local tool
    for tool in debootstrap unshare; do
        command -v "$tool" >/dev/null || kv_cannot_run "$tool is not installed"
    done
    [[ -z ${KV_OWN_MOUNTS:-} ]] || return 0
    unshare --mount true 2>/dev/null || kv_cannot_run "this system does not let root mount file systems"
    KV_OWN_MOUNTS=1 exec unshare --mount --propagation private "$0" "$@"
}

# kv_enter_debian TREE SUITE [NAME]: makes the root directory if it does not exist. In it, the tree is /src, and the
# tree's folder "build" is another one, which belongs to the root directory. NAME is that of its folder, if it is not
# the usual one of the suite.
kv_enter_debian() {
    local tree=$1 suite=$2
    local work=$tree/build/debian/${3:-$suite}
    kv_debian_root=$work/root
    mkdir -p "$work/build"
    if [[ ! -f $work/fetched ]]; then
        echo "--- fetching Debian $suite"
        rm -rf --one-file-system "$kv_debian_root"
        debootstrap --variant=minbase "$suite" "$kv_debian_root" "$kv_mirror" >"$work/debootstrap.log" 2>&1 || {
            tail -n 5 "$work/debootstrap.log"
            kv_cannot_run "debootstrap could not create $suite from $kv_mirror"
        }
        echo 'Acquire::Languages "none"; APT::Sandbox::User "root";' >"$kv_debian_root/etc/apt/apt.conf.d/lane"
        echo force-unsafe-io >"$kv_debian_root/etc/dpkg/dpkg.cfg.d/lane"
        touch "$work/fetched"
    fi
    cp /etc/resolv.conf "$kv_debian_root/etc/"
    mkdir -p "$kv_debian_root/src"
    { mount --bind "$tree" "$kv_debian_root/src" && mount --bind "$work/build" "$kv_debian_root/src/build" &&
        mount -t proc proc "$kv_debian_root/proc" && mount -t sysfs -o ro sysfs "$kv_debian_root/sys" &&
        mount -t tmpfs tmpfs "$kv_debian_root/dev/shm" &&
        mount -t devpts -o newinstance,ptmxmode=0666 devpts "$kv_debian_root/dev/pts" &&
        mount -t tmpfs tmpfs "$kv_debian_root/tmp"; } ||
        kv_cannot_run "this system does not let root mount file systems"
}

# kv_in_debian COMMAND [argument ...]: runs a command in the root directory that was entered.
kv_in_debian() {
    chroot "$kv_debian_root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe "$@"
}

# kv_set_up_debian run|test [package ...]: installs the project's packages and further ones in it.
kv_set_up_debian() {
    # shellcheck disable=SC2016 # the inner shell expands it
    kv_in_debian bash -c 'source /src/tools/setup.sh; kv_set_up /src "$1"; shift; kv_install "$@"' install "$@"
}
