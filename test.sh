#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds everything and runs all tests, without a display:  ./test.sh
#
# Installs missing packages (Debian, Ubuntu). The exit code is 0 if all tests pass.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tools/setup.sh
source "$root/tools/setup.sh"

started=$SECONDS
elapsed() {
    echo "$(((SECONDS - started) / 60)) min $(((SECONDS - started) % 60)) s"
}

kv_set_up "$root" test
unset DISPLAY WAYLAND_DISPLAY

cd "$root"
if ! { cmake --preset dev && cmake --build --preset dev; }; then
    echo "FAILED: the build did not succeed ($(elapsed))."
    exit 1
fi
# One job more than there are processors, because tests of windows wait for their timers.
if ! ctest --preset dev --parallel $(($(nproc) + 1)) --no-tests=error; then
    echo "FAILED: some tests did not pass, see above ($(elapsed))."
    exit 1
fi
for reason in build/dev/tests/*/*.not_run; do
    if [[ -e $reason ]]; then
        echo "Not run: test_$(basename "$reason" .not_run): $(<"$reason")"
    fi
done
echo "All tests passed ($(elapsed))."
