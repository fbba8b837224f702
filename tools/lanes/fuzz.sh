#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The lane "fuzz" (tools/lane.sh fuzz [--seconds N] [READER ...]): runs the fuzzers of these readers, by default of
# all, for N seconds each (3600), as many at a time as there are processors. They are built by Clang with the address
# and undefined-behaviour sanitizers, in build/fuzz. A run continues with the inputs of the run before
# (build/fuzz/corpus). Inputs that failed are in build/fuzz/found. Fails if there is one, or a leak.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
build=$root/build/fuzz
seconds=3600
readers=()
while [[ $# -gt 0 ]]; do
    case $1 in
    --seconds)
        seconds=$2
        shift 2
        ;;
    *)
        readers+=("$1")
        shift
        ;;
    esac
done

# fuzz READER: one line with the result
fuzz() {
    local reader=$1 log=$build/log/$1 status=0
    local options=(-max_total_time="$seconds" -max_len=20000 -timeout=300 -detect_leaks=0 -rss_limit_mb=2048
        -print_final_stats=1 "-artifact_prefix=$build/found/$reader/")
    local dictionary=$root/tests/fuzz/$reader.dict
    [[ ! -f $dictionary ]] || options+=("-dict=$dictionary")
    mkdir -p "$build/corpus/$reader" "$build/found/$reader" "$build/log"
    # one caller of each allocation: keeping whole stacks takes a quarter of the time
    ASAN_OPTIONS=malloc_context_size=1 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 "$build/bin/fuzz_$reader" "${options[@]}" \
        "$build/corpus/$reader" "$build/seeds/$reader" >"$log" 2>&1 || status=$?
    local inputs
    inputs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    printf '%-12s %12s inputs  exit code %d\n' "$reader" "${inputs:-?}" "$status"
    grep -aE '^(violated|the input takes|SUMMARY|most heap)' "$log" | sed 's/^/    /' || true
    return "$status"
}
export -f fuzz
export root build seconds

cd "$root"
cmake --preset fuzz
cmake --build --preset fuzz
if [[ ${#readers[@]} -eq 0 ]]; then
    for fuzzer in "$build"/bin/fuzz_*; do
        readers+=("${fuzzer##*/fuzz_}")
    done
fi
for reader in "${readers[@]}"; do
    [[ -x $build/bin/fuzz_$reader ]] || { echo "There is no fuzzer of '$reader'." >&2; exit 2; }
done
printf '%s\n' "${readers[@]}" | xargs --max-procs="$(nproc)" -I{} bash -c 'fuzz "$1" || exit 1' _ {}
