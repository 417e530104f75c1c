#!/usr/bin/env bash
# Times files of results on a million cells at 8 times with wet/dry flags: wall and processor seconds, best of three runs, beside reading
# the same inputs (a grid of a few cells at all times), and the largest memory. Files are in the page cache. Where python3-h5py is at
# hand, an .xmdf of 10 GB is listed too; its values are holes that take no room on the disk.
#   bench/result_files.sh      needs 1 GB below build/bench, or in the folder that BENCH names
set -euo pipefail
cd "$(dirname "$0")/.."

RUNS=3
scripts/install_packages.sh build bench
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=OFF >/dev/null
program=$PWD/build/release/VORANT_to_GIS
maker=$PWD/build/release/examples/make_parabolic_basin
work=${BENCH:-build/bench}/result_files
mkdir -p "$work"
cd "$work"
if [ ! -f r.done ]; then
    "$maker" -cells 866 -side 8660 -times 7 -xmdf r >/dev/null    # and the stored maximums
    touch r.done
fi
cat r.2dm r_h.dat r_V.dat r.xmdf >/dev/null

# best <arguments...>: runs the program RUNS times and sets WALL, PROCESSOR and MEGABYTES.
best() {
    local run wall user system kilobytes
    WALL=1e9
    PROCESSOR=1e9
    MEGABYTES=0
    for ((run = 0; run < RUNS; run++)); do
        if ! /usr/bin/time -f '%e %U %S %M' -o time.txt "$program" -b "$@" </dev/null >log.txt 2>&1; then
            tail -n 20 log.txt >&2
            echo "ERROR - Failed: $*" >&2
            exit 1
        fi
        rm -f ./*_out* ./*.case ./*.geo ./*.scl ./*.vec ./*.flt ./*.hdr
        read -r wall user system kilobytes <time.txt
        WALL=$(awk "BEGIN { a = $WALL; print a < $wall ? a : $wall }")
        PROCESSOR=$(awk "BEGIN { a = $PROCESSOR; b = $user + $system; print a < b ? a : b }")
        if [ "$((kilobytes / 1024))" -gt "$MEGABYTES" ]; then MEGABYTES=$((kilobytes / 1024)); fi
    done
}
row() { printf '| %-42s | %7s | %9s | %5s |\n' "$@"; }

row "8 times" "seconds" "processor" "MB"
row "---" "---" "---" "---"
while IFS='|' read -r what arguments; do
    # shellcheck disable=SC2086  # the arguments are words
    best $arguments
    row "$what" "$WALL" "$PROCESSOR" "$MEGABYTES"
    case $arguments in
        -flt*) reading=$WALL ;;
        -dat* | -xmdf*) row "   times reading (at most 1.5)" "$(awk "BEGIN { printf \"%.2f\", $WALL / $reading }")" "" "" ;;
    esac
done <<'ROWS'
reading the .dat (a coarse grid)|-flt -grid1000 -tAll r_h.dat
.dat to .dat|-dat -tAll r_h.dat
.dat to .xmdf|-xmdf -tAll r_h.dat
.dat to EnSight|-ensight -tAll r_h.dat
reading the .xmdf (a coarse grid)|-flt -grid1000 -tAll -typeh r.xmdf
.xmdf to .dat|-dat -tAll -typeh r.xmdf
.xmdf to .xmdf|-xmdf -tAll -typeh r.xmdf
listing of the .xmdf|-xnfo r.xmdf
ROWS
for python in python3 /usr/bin/python3; do
    "$python" -c 'import h5py' 2>/dev/null || continue
    "$python" - <<'END'
import h5py, numpy
times, nodes, cells = 200, 1000000, 1000000
with h5py.File("large.xmdf", "w") as file:
    for name in "Depth", "Water Level":
        group = file.create_group("run/Temporal/" + name)
        group.attrs["Grouptype"] = numpy.bytes_("DATASET SCALAR")
        group.attrs["TimeUnits"] = numpy.bytes_("Hours")
        group["Times"] = numpy.arange(times) * 0.25
        for member in "Mins", "Maxs":
            group[member] = numpy.arange(times, dtype="f4")
        for member, kind, count in ("Values", "f4", nodes * 6), ("Active", "u1", cells):
            data = group.create_dataset(member, (times, count), kind)
            data[times - 1, count - 1] = 1
END
    ls -l large.xmdf | awk '{ printf "An .xmdf of %.1f GB:\n", $5 / 1e9 }'
    best -xnfo large.xmdf
    row "listing" "$WALL" "$PROCESSOR" "$MEGABYTES"
    rm -f large*
    break
done
