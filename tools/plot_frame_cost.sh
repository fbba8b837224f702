#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Measures and plots the cost of a frame against the size of the scene:  tools/plot_frame_cost.sh [bench_scene]
#
# Writes docs/pictures/frame-cost.svg and prints the table rows of docs/PERFORMANCE.md. Needs gnuplot.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
bench=${1:-$root/build/dev/bin/bench_scene}
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT

# "frameFromANewEye/objects:10/vertices:10000  0.286 ms  0.094 ms ..." -> kind objects vertices cpu
"$bench" --benchmark_filter='^frame' 2>/dev/null |
    sed -nE 's|^(frame[A-Za-z]+)/objects:([0-9]+)/vertices:([0-9]+) +[0-9.e+-]+ ms +([0-9.e+-]+) ms.*|\1 \2 \3 \4|p' \
        >"$data/all"
for objects in 1 1000; do
    for kind in frameFromANewEye frameAfterAChange frameFromTheSameEye; do
        awk -v k="$kind" -v o="$objects" '$1 == k && $2 == o { print $3, $4 }' "$data/all" >"$data/$kind-$objects"
    done
done

gnuplot <<PLOT
set terminal svg size 720,420 font "sans,12" background "white"
set output "$root/docs/pictures/frame-cost.svg"
set logscale xy
set xlabel "vertices of translucent surfaces"
set ylabel "processor time of a frame, ms"
set format x "10^{%L}"
set key left top
set grid
plot "$data/frameFromANewEye-1" w lp lw 2 pt 7 t "the camera moved, 1 object", \
     "$data/frameFromANewEye-1000" w lp lw 2 pt 6 t "the camera moved, 1,000 objects", \
     "$data/frameAfterAChange-1" w lp lw 2 pt 5 t "something changed, 1 object", \
     "$data/frameAfterAChange-1000" w lp lw 2 pt 4 t "something changed, 1,000 objects", \
     "$data/frameFromTheSameEye-1" w lp lw 2 pt 9 t "nothing changed, 1 object", \
     "$data/frameFromTheSameEye-1000" w lp lw 2 pt 8 t "nothing changed, 1,000 objects"
PLOT

awk '{ cost[$1, $2, $3] = $4 }
    END {
        split("frameFromANewEye frameAfterAChange frameFromTheSameEye", kinds)
        split("1 10 100 1000", objects)
        split("10000 100000 1000000 10000000", vertices)
        for (k = 1; k <= 3; ++k)
            for (o = 1; o <= 4; ++o) {
                row = "| " kinds[k] " | " objects[o]
                for (v = 1; v <= 4; ++v)
                    row = row " | " cost[kinds[k], objects[o], vertices[v]]
                print row " |"
            }
    }' "$data/all"
