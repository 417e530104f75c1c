#!/usr/bin/env bash
# Times 1,000 profiles of 1 km and 10,000 calibration points on a million cells at 8 times: wall and processor seconds, best of three runs,
# what that is beyond reading the same inputs (a grid of a few cells at all times), and the largest memory. Files are in the page cache.
#   bench/profiles.sh      needs 0.5 GB below build/bench, or in the folder that BENCH names
set -euo pipefail
cd "$(dirname "$0")/.."

RUNS=3
runs=0
scripts/install_packages.sh build bench
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release >/dev/null
program=$PWD/build/release/VORANT_to_GIS
maker=$PWD/build/release/examples/make_parabolic_basin
work=${BENCH:-build/bench}/profiles
mkdir -p "$work"
cd "$work"

if [ ! -f p.done ]; then
    "$maker" -cells 866 -side 8660 -times 7 p >/dev/null    # and the stored maximums
    touch p.done
fi
# Lines of 1 km and points, spread over the mesh in all directions; half of the points have a recorded level.
head='Version 300\nCharset "WindowsLatin1"\nDelimiter ","\nColumns'
awk -v head="$head" 'BEGIN { print head " 1\n  Name Char(20)\nData" >"lines.mif"; print head " 2\n  Name Char(20)\n  Obs Decimal(10,3)\nData" >"points.mif"
    srand(7)
    for (i = 1; i <= 1000; i++) {
        x = 300000 + 1010 + 6640 * rand(); y = 6200000 + 1010 + 6640 * rand(); a = 6.2832 * rand()
        printf "Line %.3f %.3f %.3f %.3f\n", x, y, x + 1000 * cos(a), y + 1000 * sin(a) >"lines.mif"; print "\"L" i "\"" >"lines.mid"
    }
    for (i = 1; i <= 10000; i++) {
        printf "Point %.3f %.3f\n", 300000 + 8660 * rand(), 6200000 + 8660 * rand() >"points.mif"; print "\"P" i "\"," (i % 2 ? 21.5 : "") >"points.mid"
    } }'
cat p.2dm p_h.dat >/dev/null

# best <arguments...>: runs the program RUNS times and sets WALL, PROCESSOR and MEGABYTES.
best() {
    local run wall user system kilobytes
    WALL=1e9
    PROCESSOR=1e9
    MEGABYTES=0
    for ((run = 0; run < RUNS; run++)); do
        # Put aside and not deleted: a disk may take its time to hand out again what it has just been given back.
        mkdir -p "old/$((++runs))"
        find . -maxdepth 1 -name 'p_h_*' -exec mv -t "old/$runs" {} +
        if ! /usr/bin/time -f '%e %U %S %M' -o time.txt "$program" -b "$@" </dev/null >log.txt 2>&1; then
            tail -n 20 log.txt >&2
            echo "ERROR - Failed: $*" >&2
            exit 1
        fi
        read -r wall user system kilobytes <time.txt
        WALL=$(awk "BEGIN { a = $WALL; print a < $wall ? a : $wall }")
        PROCESSOR=$(awk "BEGIN { a = $PROCESSOR; b = $user + $system; print a < b ? a : b }")
        if [ "$((kilobytes / 1024))" -gt "$MEGABYTES" ]; then MEGABYTES=$((kilobytes / 1024)); fi
    done
}
row() { printf '| %-34s | %7s | %9s | %13s | %5s |\n' "$@"; }

row "8 times" "seconds" "processor" "beyond reading" "MB"
row "---" "---" "---" "---" "---"
best -flt -grid1000 -tAll p_h.dat
reading=$PROCESSOR
row "reading (a coarse grid)" "$WALL" "$PROCESSOR" "" "$MEGABYTES"
while IFS='|' read -r what arguments; do
    # shellcheck disable=SC2086  # the arguments are words
    best $arguments -tAll p_h.dat
    row "$what" "$WALL" "$PROCESSOR" "$(awk "BEGIN { printf \"%.2f\", $PROCESSOR - $reading }")" "$MEGABYTES"
done <<'ROWS'
1,000 profiles of 1 km|-lp lines.mif
10,000 points|-cp points.mif
both, points within 20 m joined|-lp lines.mif -cp points.mif -cpsd20
ROWS
echo "Stations: $(sed -n 's/.*memory for \([0-9]*\) stations.*/\1/p' log.txt)"
rm -rf old p_h_* log.txt time.txt
