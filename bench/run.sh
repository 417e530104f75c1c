#!/usr/bin/env bash
# Times the release build on models of 0.25, 1 and 4 million cells (triangles and quads) and prints a table: the median of five runs in
# wall seconds and in processor seconds (which other work on the machine disturbs less), and the largest memory of the five. The files
# are in the page cache. The results carry no wet/dry flags, so that every grid cell has a value. The last lines show what
# gdal_translate needs to write the same grid.
#   bench/run.sh [million cells ...]      needs 3 GB below build/bench for the first three, 12 for 16 million
set -euo pipefail
cd "$(dirname "$0")/.."

RUNS=5
GRID=2.5      # metres; 12 million values on a model of 8660 m
FURTHER=5     # grids of all times, behind the first: the output times of the model, the stored maximums being the last

scripts/install_packages.sh build bench
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=OFF >/dev/null
program=$PWD/build/release/VORANT_to_GIS
maker=$PWD/build/release/examples/make_parabolic_basin
work=build/bench
mkdir -p "$work"
cd "$work"

cells_across() {
    case $1 in
        0.25) echo 433 ;;
        1) echo 866 ;;
        4) echo 1732 ;;
        16) echo 3464 ;;
        *) echo "Sizes are 0.25, 1, 4 and 16 (million cells)." >&2; return 1 ;;
    esac
}

median() { sort -n | sed -n "$(((RUNS + 1) / 2))p"; }

# timed <command...>: runs it RUNS times and sets SECONDS_TAKEN, PROCESSOR and MEGABYTES.
timed() {
    local run seconds user system kilobytes
    : >times.txt
    MEGABYTES=0
    for ((run = 0; run < RUNS; run++)); do
        rm -rf out
        mkdir out
        if ! /usr/bin/time -f '%e %U %S %M' -o time.txt "$@" </dev/null >log.txt 2>&1; then
            tail -n 20 log.txt >&2
            echo "ERROR - Failed: $*" >&2
            exit 1
        fi
        read -r seconds user system kilobytes <time.txt
        echo "$seconds $user $system" >>times.txt
        if [ "$((kilobytes / 1024))" -gt "$MEGABYTES" ]; then MEGABYTES=$((kilobytes / 1024)); fi
    done
    SECONDS_TAKEN=$(cut -d' ' -f1 times.txt | median)
    PROCESSOR=$(awk '{ printf "%.2f\n", $2 + $3 }' times.txt | median)
}

row() { printf '| %-48s | %7s | %9s | %5s |\n' "$1" "$2" "$3" "$4"; }

# converted <what> <arguments...>: one row for a run of the program on the present model.
converted() {
    local what=$1
    shift
    timed "$program" -b "$@"
    row "$what" "$SECONDS_TAKEN" "$PROCESSOR" "$MEGABYTES"
}

# phases <arguments...>: where the seconds of such a run go.
phases() { "$program" -b -verbose "$@" </dev/null 2>&1 | sed -n 's/^   scan /      &/p'; }

# Seconds for each further time: all times less one time, over the number of further ones.
further() { awk "BEGIN { printf \"%.3f\", ($2 - $1) / $FURTHER }"; }

[ $# -gt 0 ] || set -- 0.25 1 4
for size in "$@"; do
    across=$(cells_across "$size")
    model=m$size
    if [ ! -f "$model.done" ]; then
        "$maker" -cells "$across" -side 8660 -no-flags -xmdf -times $FURTHER "$model" >/dev/null
        touch "$model.done"
    fi
    echo
    nodes=$(((across + 1) * (across + 1)))
    bytes=$(stat -c %s "$model.2dm")
    echo "$size million cells, $nodes nodes, .2dm of $((bytes / 1000000)) MB, grid of $GRID m (12 million values):"
    echo
    row "" "seconds" "processor" "MB"
    row "---" "---" "---" "---"
    cat "$model.2dm" "$model"_h.dat "$model"_d.dat "$model"_V.dat "$model.xmdf" >/dev/null

    converted "mesh alone to 1000 m cells (reading the .2dm)" -flt -grid1000 -out "out/x" "$model.2dm"
    read_seconds=$SECONDS_TAKEN
    converted "one time to .flt, by one thread" -jobs1 -flt -grid$GRID -t0.3 -out "out/x" "${model}_h.dat"
    phases -jobs1 -flt -grid$GRID -t0.3 -out "out/x" "${model}_h.dat"
    converted "one time to .flt" -flt -grid$GRID -t0.3 -out "out/x" "${model}_h.dat"
    phases -flt -grid$GRID -t0.3 -out "out/x" "${model}_h.dat"
    flt=$SECONDS_TAKEN
    flt_processor=$PROCESSOR
    mv -f "$(ls out/*.flt)" grid.flt
    mv -f "$(ls out/*.hdr)" grid.hdr
    converted "one time to .asc" -asc -grid$GRID -t0.3 -out "out/x" "${model}_h.dat"
    asc=$SECONDS_TAKEN
    asc_processor=$PROCESSOR
    converted "maximum of all times to .flt" -flt -grid$GRID -max -out "out/x" "${model}_d.dat"
    cp "${model}.2dm" "${model}_was.2dm"      # another run of the same mesh has a copy of its own
    cp "${model}_h.dat" "${model}_was_h.dat"
    converted "difference of two .dat, one time to .flt" -flt -grid$GRID -t0.3 -out "out/x" -dif "${model}_was_h.dat" "${model}_h.dat"
    difference=$SECONDS_TAKEN
    row "   times one time to .flt (at most 2)" "$(awk "BEGIN { printf \"%.2f\", $difference / $flt }")" "" ""
    converted "difference, all times, to .flt" -flt -grid$GRID -tAll -dif "${model}_was_h.dat" "${model}_h.dat"
    all_differences=$SECONDS_TAKEN
    rm -f "${model}"_h_minus_*
    converted "velocity, one time to .flt" -flt -grid$GRID -t0.3 -out "out/x" "${model}_V.dat"
    converted "all times, $((FURTHER + 1)) grids, to .flt" -flt -grid$GRID -tAll "${model}_h.dat"
    row "   each further time" "$(further "$flt" "$SECONDS_TAKEN")" "$(further "$flt_processor" "$PROCESSOR")" ""
    phases -flt -grid$GRID -tAll "${model}_h.dat"
    row "   differences over these (at most 2)" "$(awk "BEGIN { printf \"%.2f\", $all_differences / $SECONDS_TAKEN }")" "" ""
    rm -f "${model}"_h_*.flt "${model}"_h_*.hdr
    # The same elements in random order.
    {
        head -n 1 "$model.2dm"
        grep '^E' "$model.2dm" | shuf --random-source="$model.2dm" | awk '{ $2 = NR; print }'
        grep '^ND' "$model.2dm"
    } >"${model}_shuffled.2dm"
    cp "${model}_h.dat" "${model}_shuffled_h.dat"
    converted "elements in random order: one time to .flt" -flt -grid$GRID -t0.3 -out "out/x" "${model}_shuffled_h.dat"
    shuffled=$SECONDS_TAKEN
    shuffled_processor=$PROCESSOR
    converted "elements in random order: all times to .flt" -flt -grid$GRID -tAll "${model}_shuffled_h.dat"
    row "   each further time" "$(further "$shuffled" "$SECONDS_TAKEN")" "$(further "$shuffled_processor" "$PROCESSOR")" ""
    rm -f "${model}"_shuffled*
    converted "all times, $((FURTHER + 1)) grids, to .asc" -asc -grid$GRID -tAll "${model}_h.dat"
    phases -asc -grid$GRID -tAll "${model}_h.dat"
    row "   each further time" "$(further "$asc" "$SECONDS_TAKEN")" "$(further "$asc_processor" "$PROCESSOR")" ""
    rm -f "${model}"_h_*.asc
    converted "one time of an .xmdf (gzip level 1) to .flt" -flt -grid$GRID -typeh -t0.3 -out "out/x" "$model.xmdf"
    xmdf=$SECONDS_TAKEN
    xmdf_processor=$PROCESSOR
    converted "all its times, $FURTHER grids, to .flt" -flt -grid$GRID -typeh -tAll "$model.xmdf"
    row "   each further time" "$(awk "BEGIN { printf \"%.3f\", ($SECONDS_TAKEN - $xmdf) / ($FURTHER - 1) }")" \
        "$(awk "BEGIN { printf \"%.3f\", ($PROCESSOR - $xmdf_processor) / ($FURTHER - 1) }")" ""
    rm -f "$model"_h_*.flt "$model"_h_*.hdr
    row "   MB of .2dm a second (both passes, whole run)" "$(awk "BEGIN { printf \"%.0f\", $bytes / 1e6 / $read_seconds }")" "" ""
    timed gdal_translate -q -of AAIGrid -co DECIMAL_PRECISION=3 grid.flt out/x.asc
    row "gdal_translate of that grid to ASCII" "$SECONDS_TAKEN" "$PROCESSOR" "$MEGABYTES"
    timed gdal_translate -q -of EHdr grid.flt out/x.flt
    row "gdal_translate of that grid to binary" "$SECONDS_TAKEN" "$PROCESSOR" "$MEGABYTES"
done
rm -rf out grid.flt grid.hdr log.txt time.txt times.txt
