#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs test.sh in a root directory of another Debian system:  tools/lane.sh debian [SUITE]
#
# SUITE is a name of Debian's archive: bookworm, trixie (default), sid. The root directory, its packages and the build
# are kept in build/debian. Needs root and, the first time, the package archive of Debian. Exits with 77 and prints
# the reason if it cannot run.
set -euo pipefail

tree=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tools/lanes/debian_root.sh
source "$tree/tools/lanes/debian_root.sh"
suite=${1:-trixie}

kv_own_mounts "$@"
started=$SECONDS
kv_enter_debian "$tree" "$suite"
log=$tree/build/debian/$suite/install.log
kv_set_up_debian test >"$log" 2>&1 || {
    tail -n 5 "$log"
    kv_cannot_run "the packages could not be installed from $kv_mirror"
}
echo "--- Debian $(kv_in_debian cat /etc/debian_version) is there after $((SECONDS - started)) s;" \
    "$(kv_in_debian dpkg-query --show --showformat '${Package} ${Version}, ' qt6-base-dev g++ libgl1-mesa-dri)the tests begin"
kv_in_debian /src/test.sh
