#!/usr/bin/env bash
# Times .xmdf against .dat results of the same model: a million cells, wet/dry flags, water levels, gzip level 1 with one chunk a time, to a
# binary grid of 12 million values. Best of three runs, in wall and in processor seconds; the files are in the page cache. Where h5repack
# (Debian hdf5-tools) is at hand the same file is timed uncompressed as well: the difference is decompression.
#   bench/xmdf_results.sh      needs 1 GB below build/bench
set -euo pipefail
cd "$(dirname "$0")/.."

RUNS=3
TIMES=6
scripts/install_packages.sh build bench
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=OFF >/dev/null
program=$PWD/build/release/VORANT_to_GIS
maker=$PWD/build/release/examples/make_parabolic_basin
mkdir -p build/bench/xmdf
cd build/bench/xmdf
if [ ! -f basin.xmdf ]; then
    "$maker" -cells 866 -side 8660 -times $TIMES -xmdf made >/dev/null
    for ending in .2dm _h.dat .xmdf; do mv "made$ending" "basin$ending"; done
    rm -f made*
fi
inputs=(basin_h.dat basin.xmdf)
if command -v h5repack >/dev/null; then
    [ -f plain.xmdf ] || h5repack -f NONE basin.xmdf plain.xmdf
    inputs+=(plain.xmdf)
fi
cat ./*.2dm ./*.dat ./*.xmdf >/dev/null

least() { awk "BEGIN { a = $1; b = $2; printf \"%.2f\", a < b ? a : b }"; }

# best <arguments...>: sets SECONDS_BEST, PROCESSOR and MEGABYTES.
best() {
    local run seconds user system kilobytes
    SECONDS_BEST=1e9
    PROCESSOR=1e9
    MEGABYTES=0
    for ((run = 0; run < RUNS; run++)); do
        if ! /usr/bin/time -f '%e %U %S %M' -o time.txt "$program" -b -flt -grid2.5 -2dm basin.2dm "$@" </dev/null >log.txt 2>&1; then
            tail -n 20 log.txt >&2
            echo "ERROR - Failed: $*" >&2
            exit 1
        fi
        rm -f ./*.flt ./*.hdr
        read -r seconds user system kilobytes <time.txt
        SECONDS_BEST=$(least "$SECONDS_BEST" "$seconds")
        PROCESSOR=$(least "$PROCESSOR" "$user + $system")
        if [ "$((kilobytes / 1024))" -gt "$MEGABYTES" ]; then MEGABYTES=$((kilobytes / 1024)); fi
    done
}
row() { printf '| %-12s | %9s | %9s | %5s | %13s | %9s |\n' "$@"; }

row "" "one time" "processor" "MB" "each further" "processor"
row --- --- --- --- --- ---
for input in "${inputs[@]}"; do
    further=$((TIMES - 1))
    [ "$input" != basin_h.dat ] || further=$TIMES    # its stored maximums are one more grid
    best -t0.3 "$input"
    one=$SECONDS_BEST one_processor=$PROCESSOR one_megabytes=$MEGABYTES
    best -tAll "$input"
    row "$input" "$one" "$one_processor" "$one_megabytes" "$(awk "BEGIN { printf \"%.3f\", ($SECONDS_BEST - $one) / $further }")" \
        "$(awk "BEGIN { printf \"%.3f\", ($PROCESSOR - $one_processor) / $further }")"
done
