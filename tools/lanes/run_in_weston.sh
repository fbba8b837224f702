#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a program in a Wayland compositor without a screen:  run_in_weston.sh pixman|gl PROGRAM [argument ...]
#
# The compositor is weston, whose renderer is chosen. Its options allow screenshots. Exits with the program's exit code.
set -euo pipefail

renderer=$1
shift
XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR
log=$XDG_RUNTIME_DIR/log
# also understood by weston 10, which is that of Debian 12
weston --backend=headless-backend.so "--use-$renderer" --width=1024 --height=768 --no-config --debug --idle-time=0 \
    --socket=kv --log="$log" >"$XDG_RUNTIME_DIR/out" 2>&1 &
weston=$!
end() {
    kill "$weston" 2>/dev/null || true
    wait "$weston" || true
    rm -rf "$XDG_RUNTIME_DIR"
}
trap end EXIT
until [[ -S $XDG_RUNTIME_DIR/kv ]] && grep -q 'desktop-shell' "$log"; do
    kill -0 "$weston" 2>/dev/null || { cat "$log" >&2; exit 1; }
    sleep 0.1
done
env -u DISPLAY WAYLAND_DISPLAY=kv QT_QPA_PLATFORM=wayland "$@"
