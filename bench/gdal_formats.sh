#!/usr/bin/env bash
# Times the formats that GDAL writes, each beside GDAL's own tool in the same round: wall and processor
# seconds (which other work on the machine disturbs less), best of the rounds, and the largest memory.
# A GeoTIFF of 12 million values beyond gridding against gdal_translate from our .flt with the same options; a million points with 6
# attributes against ogr2ogr from a FlatGeobuf of them; and the start of the program, with the module beside it and without, and that of
# an older one where BEFORE names it.
#   bench/gdal_formats.sh      needs 1 GB below build/bench, or in the folder that BENCH names
set -euo pipefail
cd "$(dirname "$0")/.."

ROUNDS=5
STARTS=200
scripts/install_packages.sh build bench gdal
TARGETS="VORANT_to_GIS vorant_gdal make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=OFF >/dev/null
program=$PWD/build/release/VORANT_to_GIS
maker=$PWD/build/release/examples/make_parabolic_basin
work=${BENCH:-build/bench}/gdal_formats
mkdir -p "$work"
cd "$work"
echo "$(nproc) cores, load $(cut -d ' ' -f 1-3 /proc/loadavg), $(gdal_translate --version)"

# timed <what> <command...>: keeps the least seconds and the most memory of each kind of run.
lesser() { awk "BEGIN { a = $1; b = $2; print a < b ? a : b }"; }
declare -A least least_processor most
timed() {
    local what=$1 seconds user system kilobytes
    shift
    if ! /usr/bin/time -f '%e %U %S %M' -o time.txt "$@" </dev/null >log.txt 2>&1; then
        tail -n 20 log.txt >&2
        echo "ERROR - Failed: $*" >&2
        exit 1
    fi
    read -r seconds user system kilobytes <time.txt
    least[$what]=$(lesser "${least[$what]:-1e9}" "$seconds")
    least_processor[$what]=$(lesser "${least_processor[$what]:-1e9}" "$user + $system")
    if [ "$((kilobytes / 1024))" -gt "${most[$what]:-0}" ]; then most[$what]=$((kilobytes / 1024)); fi
}
row() { printf '| %-52s | %8s | %9s | %5s |\n' "$@"; }
measured() { row "$1" "${least[$2]}" "${least_processor[$2]}" "${most[$2]}"; }
# derived <what> <form> <formula of the kinds of runs>: of the wall seconds and of the processor seconds.
derived() {
    local kind wall=() processor=()
    for kind in "${!least[@]}"; do
        wall+=(-v "$kind=${least[$kind]}")
        processor+=(-v "$kind=${least_processor[$kind]}")
    done
    row "   $1" "$(awk "${wall[@]}" "BEGIN { printf \"$2\", $3 }")" "$(awk "${processor[@]}" "BEGIN { printf \"$2\", $3 }")" ""
}

# Every cell has a value, as the results carry no flags. The points are a million velocities on a grid.
[ -f m.2dm ] || "$maker" -cells 866 -side 8660 -no-flags -times 5 m >/dev/null
cat m.2dm m_h.dat m_V.dat >/dev/null
threads=$(nproc)
for ((round = 0; round < ROUNDS; round++)); do
    rm -rf out
    mkdir out
    timed flt "$program" -b -jobs"$threads" -flt -grid2.5 -t0.3 -out out/x m_h.dat
    timed gtif "$program" -b -jobs"$threads" -gtif -grid2.5 -t0.3 -out out/x m_h.dat
    timed translate gdal_translate -q -of COG -stats -a_nodata -99999 -co COMPRESS=DEFLATE -co PREDICTOR=FLOATING_POINT -co BLOCKSIZE=512 \
        -co OVERVIEW_RESAMPLING=AVERAGE -co NUM_THREADS="$threads" out/x.flt out/y.tif
    timed points_reading "$program" -b -flt -grid1000 -t0.3 -out out/r m_V.dat
    timed fgb "$program" -b -fgb -grid8.66 -t0.3 -out out/x m_V.dat
    timed gpkg "$program" -b -gpkg -grid8.66 -t0.3 -out out/x m_V.dat
    timed ogr2ogr ogr2ogr -f GPKG out/y.gpkg out/x.fgb
done
objects=$(ogrinfo -ro -so -al out/x.gpkg | awk '/^Feature Count:/ { print $3 }')
attributes=$(ogrinfo -ro -so -al out/x.gpkg | grep -cE '^[A-Za-z_]+: (Real|Integer|String)')

row "" seconds processor MB
row "---" "---" "---" "---"
measured "12 million values to .flt" flt
measured "the same to a GeoTIFF" gtif
derived "beyond reading and gridding (beyond the .flt)" %.2f "gtif - flt"
measured "gdal_translate -of COG of the .flt" translate
derived "GeoTIFF over that (at most 1.1)" %.2f "(gtif - flt) / translate"
measured "reading the velocities" points_reading
measured "$objects points, $attributes attributes, to .gpkg" gpkg
derived "points a second, whole run" %.0f "$objects / gpkg"
derived "points a second beyond reading" %.0f "$objects / (gpkg - points_reading)"
measured "ogr2ogr of the FlatGeobuf to .gpkg" ogr2ogr
derived "points a second (to be no more than ours)" %.0f "$objects / ogr2ogr"

# The start, in milliseconds: a tiny run that asks for no GDAL format, the programs by turns.
"$maker" -cells 2 -times 1 tiny >/dev/null
mkdir -p alone
cp "$program" alone/
alone=$PWD/alone/VORANT_to_GIS
started() {
    local run
    for ((run = 0; run < STARTS; run++)); do "$1" -b -asc -grid1000 -out out/s tiny.2dm </dev/null >/dev/null; done
}
for ((round = 0; round < ROUNDS; round++)); do
    for one in "$program" "$alone" ${BEFORE:+"$BEFORE"}; do
        before=$(date +%s%N)
        started "$one"
        spent=$(awk "BEGIN { printf \"%.2f\", ($(date +%s%N) - $before) / $STARTS / 1e6 }")
        least[$one]=$(lesser "${least[$one]:-1e9}" "$spent")
    done
done
row "start and a tiny grid, milliseconds" "${least[$program]}" "" ""
row "   without the module" "${least[$alone]}" "" ""
[ -z "${BEFORE:-}" ] || row "   of the program before" "${least[$BEFORE]}" "" ""
echo "Load at the end: $(cut -d ' ' -f 1-3 /proc/loadavg)"
rm -rf out alone log.txt time.txt
