#!/usr/bin/env bash
# Times layers of a million objects: the mesh's nodes and cells, water levels and velocities at the nodes, arrows. Best of three runs in wall
# seconds, what that is beyond reading the inputs, and the largest memory of the three. Files are in the page cache. Beneath each layer stands
# what ogr2ogr needs to write the same layer from a finished one.
#   bench/vector_layers.sh      needs 2 GB below build/bench
set -euo pipefail
cd "$(dirname "$0")/.."

RUNS=3
scripts/install_packages.sh build bench
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release >/dev/null
program=$PWD/build/release/VORANT_to_GIS
maker=$PWD/build/release/examples/make_parabolic_basin
mkdir -p build/bench/layers
cd build/bench/layers

# best <command...>: runs it RUNS times and sets SECONDS_BEST and MEGABYTES.
best() {
    local run seconds kilobytes
    SECONDS_BEST=
    MEGABYTES=0
    for ((run = 0; run < RUNS; run++)); do
        rm -rf out
        mkdir out
        if ! /usr/bin/time -f '%e %M' -o time.txt "$@" </dev/null >log.txt 2>&1; then
            tail -n 20 log.txt >&2
            echo "ERROR - Failed: $*" >&2
            exit 1
        fi
        read -r seconds kilobytes <time.txt
        if [ -z "$SECONDS_BEST" ] || awk "BEGIN { exit !($seconds < $SECONDS_BEST) }"; then SECONDS_BEST=$seconds; fi
        if [ "$((kilobytes / 1024))" -gt "$MEGABYTES" ]; then MEGABYTES=$((kilobytes / 1024)); fi
    done
}
row() { printf '| %-44s | %9s | %8s | %8s | %6s |\n' "$@"; }

# reading <arguments...>: the same input to a grid of a few cells.
reading() {
    best "$program" -b -flt -out out/x "$@"
    read_seconds=$SECONDS_BEST
}
# layers <what> <arguments...>: in both formats, and ogr2ogr's time for each.
layers() {
    local what=$1 format driver objects
    shift
    for format in shp mif; do
        best "$program" -b -$format -out out/x "$@"
        objects=$(awk '/ objects written\./ { print $1 }' log.txt)
        row "$what to .$format" "$objects" "$SECONDS_BEST" "$(awk "BEGIN { printf \"%.2f\", $SECONDS_BEST - $read_seconds }")" "$MEGABYTES"
        rm -rf kept
        mv out kept
        driver=(-f "ESRI Shapefile" out/y.shp)
        [ $format = shp ] || driver=(-f "MapInfo File" -dsco FORMAT=MIF out/y.mif)
        best ogr2ogr "${driver[@]}" kept/x.$format
        row "   ogr2ogr of that layer" "$objects" "" "$SECONDS_BEST" "$MEGABYTES"
    done
}

model() { [ -f "$1.2dm" ] || "$maker" -cells "$2" -times 1 -xmdf "${@:3}" "$1" >/dev/null; }
model square 999          # a million nodes; the water covers a part of them
model flooded 1525        # 2.3 million nodes, of which the water covers a million
cat ./*.2dm ./*.dat ./*.xmdf >/dev/null

row "" objects seconds "writing" MB
row "---" "---" "---" "---" "---"
reading -grid1000 square.2dm
layers "nodes of the mesh, 4 attributes" -verbose square.2dm
layers "cells of the mesh, 3 attributes" -region square.2dm
reading -grid1000 -typeh -t0 flooded.xmdf
layers "water levels, 7 attributes" -typeh -t0 -verbose flooded.xmdf
reading -grid1000 -t0 flooded_V.dat
layers "arrows, 8 attributes" -vector -t0 flooded_V.dat
rm -rf out kept log.txt time.txt
