#!/usr/bin/env bash
# The workflow: what it refuses is named and the rest is done, parts hold every time once, and the demonstration with few models.
set -u
cd "$(dirname "$0")/../.." || exit 1
command -v snakemake >/dev/null || { echo "No snakemake: left out."; exit 77; }
flow=$PWD/workflow
export PROGRAM=${PROGRAM:-$PWD/build/release/VORANT_to_GIS} MAKER=${MAKER:-$PWD/build/release/examples/make_parabolic_basin}
failures=0 passes=0
fail() {
    failures=$((failures + 1))
    echo "FAILED: $*"
}
box=$(mktemp -d)
trap 'rm -rf "$box"' EXIT
cd "$box" || exit 1
mkdir a b
(cd a && "$MAKER" -cells 8 -times 5 "river's north" && "$MAKER" -cells 8 -times 5 lower && "$MAKER" -cells 8 -times 1 alone && rm alone.2dm) >/dev/null
cp a/lower* b
head -c 1000 a/lower_d.dat >"a/river's north_d.dat"        # some whole times, and a part of the next
{ echo name,mesh,results; echo "two,a/lower.2dm,a/lower_h.dat"; echo "two,b/lower.2dm,b/lower_h.dat"; echo "three,a/none.2dm,a/lower_h.dat"; echo ",a/lower.2dm,a/lower_d.dat"; } >runs.csv

# row <name of the row> <status> <runs> <products> <texts on the console or in the summary, between "|"> [folder]
row() {
    local what=$1 status=$2 text texts
    printf '%s\n' "program: $PROGRAM" "output: ${6:-$what}" "memory: ${MEMORY:-100}" "threads: 1" "runs: $3" "products: $4" >"$what.yaml"
    snakemake -s "$flow/Snakefile" --configfile "$what.yaml" --profile "$flow/profiles/local" >"$what.txt" 2>&1 </dev/null
    [ $(($? != 0)) -eq "$status" ] || fail "$what: exit status, expected $status: $(tail -n 3 "$what.txt")"
    cat "$what/summary.csv" >>"$what.txt" 2>/dev/null
    IFS='|' read -ra texts <<<"$5"
    for text in "${texts[@]}"; do grep -qE -- "$text" "$what.txt" || fail "$what: nothing says: $text"; done
}
good='{max: "-flt -grid400 -max"}'
: >file
row names 1 "['a/*_d.dat', 'no/*.dat']" "$good" "^river_s_north_d,max,failed|^lower_d,max,done,1,|no_.*no file is found by no/\*.dat|no mesh beside a/alone_d.dat"
row table 1 runs.csv "$good" "several runs are called two: b/lower_h.dat|three is left out: the mesh a/none.2dm does not exist|line 5 of runs.csv has no name|Nothing is left to convert"
row products 1 "['a/lower_d.dat']" '{max: "-flt -grid400 -max", typo: "-flt -gird5", asks: "-flt -prec", mine: "-flt -out x", both: "-flt -asc", noval: "-gtif -cp",
        stray: "-flt x.dat", like: "-flt -like x.tif", glued: "-flt -tal"}' \
    "^lower_d,max,done|typo,not converted,.*did you mean -grid|asks,.*-prec: asks a question: Enter precision|mine,.*-out belongs to the workflow|both,.*-flt -asc: .*More than one output format|noval,.*Nothing specified after -cp|stray,.*x.dat is no switch|like,.*-like: the file x.tif does not exist|glued,.*from argument -tal did you mean -tAll"
row cut 1 "['a/river*_d.dat']" '{all: "-flt -grid400 -tAll"}' "_d,all,incomplete,[1-4],.*WARNING - "
row tiles 1 "['a/*_d.dat']" '{max: {switches: "-flt -grid400 -max", merge: vrt}, all: {switches: "-flt -grid400 -tAll", merge: vrt}}' \
    "^\(merged\),max,incomplete,1,.*river_s_north_d are missing[.].*alone_d are missing|^\(merged\),all,incomplete,5,.*river_s_north_d are missing in 3 of 5, t000.20_g400.vrt"
row tiles 0 "['a/lower_*.dat']" '{max: {switches: "-flt -grid400 -max", merge: vrt}}' "^\(merged\),max,done,1,"       # what was missing is no longer wanted
[ ! -e tiles/merged/max/missing_tiles.txt ] || fail "a whole mosaic lacks tiles: $(cat tiles/merged/max/*.txt)"
everything() { find . "$flow" ! -path '*/.snakemake*' | sort; }
before=$(everything)
snakemake -n -s "$flow/Snakefile" --configfile tiles.yaml --config output=dry >/dev/null 2>&1 || fail "a dry run fails"
diff <(echo "$before") <(everything) || fail "a dry run leaves files"
row deep 1 "['a/lower_d.dat']" "$good" "cannot be made: .*/file is not a folder" file/deep
printf '#!/bin/bash\ncase "$*" in *-max*lower_d.dat) kill -KILL $PPID ;; esac\nexec "%s" "$@"\n' "$PROGRAM" >killer.sh
chmod +x killer.sh
PROGRAM=$box/killer.sh row killed 1 "['a/lower_d.dat', 'a/lower_h.dat']" "$good" "^lower_d,max,failed,.*killed, or lost|^lower_h,max,done"
# A listing of times that is killed, or whose script is, makes one part of its run and stops nobody else's.
printf '#!/bin/bash\ncase "$*" in *-xnfo*lower_d.dat) kill -KILL $PPID ;; *-xnfo*lower_h.dat) kill -TERM $$ ;; esac\nexec "%s" "$@"\n' "$PROGRAM" >killer.sh
PROGRAM=$box/killer.sh row unlisted 0 "['a/lower_[dh].dat', 'b/lower_V.dat']" '{all: {switches: "-flt -grid400 -tAll", split_times: 2}}' \
    "^lower_d,all,done,5,.*listing of its times was killed by signal 9|^lower_h,all,done,6,.*killed by signal 15|^lower_V,all,done,6,.*,1,$"
[ -e unlisted/all/lower_d/all_times ] && [ -e unlisted/all/lower_V/times_0003 ] || fail "the parts of runs that were not listed"
printf '#!/bin/bash\ncase "$*" in *-tAll*_d.dat) mkdir once && echo "WARNING - once" && kill -KILL $$ ;; esac\nexec "%s" "$@"\n' "$PROGRAM" >once.sh
chmod +x once.sh
PROGRAM=$box/once.sh row twice 1 "['a/river*_d.dat']" '{all: "-flt -grid400 -tAll"}' "_d,all,incomplete,.*,2,WARNING - a/river's north_d.dat ends inside"
grep -q "^WARNING - once" twice/records/all/*/all.attempt_1.log || fail "the log of the first attempt is lost"
printf '#!/bin/bash\ncase "$*" in *-into*) [ "$GDAL_CACHEMAX" = 64 ] || exit 1 ;; esac\nexec "%s" "$@"\n' "$PROGRAM" >blocks.sh
chmod +x blocks.sh
PROGRAM=$box/blocks.sh row blocks 0 "['a/lower_d.dat']" '{max: "-gtif -grid400 -max", flat: "-flt -grid400 -max"}' "^lower_d,max,done|mem_mb=601,|mem_mb=301,"      # 300 of them GDAL's
# The disk of one node is full.
if unshare -rm true 2>/dev/null; then
    printf '%s\n' '#!/bin/bash' 'case "$*" in *-into*lower_d.dat) ;; *) exec "$REAL" "$@" ;; esac' 'for ((at = 1; at < $#; at++)); do [ "${!at}" != -into ] || next=$((at + 1)); done' \
        'FOLDER=${!next} exec unshare -rm sh -c '"'"'mount -t tmpfs -o size=16k tmpfs "$FOLDER" && exec "$REAL" "$@"'"'"' sh "$@"' >full.sh
    chmod +x full.sh
    REAL=$PROGRAM PROGRAM=$box/full.sh row full 1 "['a/lower_d.dat', 'a/lower_h.dat']" '{max: "-flt -grid20 -max"}' "^lower_d,max,failed,.*ERROR - The outputs need .* on the disk|^lower_h,max,done"
else
    echo "No file systems of one's own: the full disk of a node is left out."
fi
# Another version of the program makes everything new, and nothing else does: not more memory behind a kill.
printf '#!/bin/bash\n[ "$1" != -version ] || { echo "VORANT_to_GIS $(cat version)"; exit; }\nexec "%s" "$@"\n' "$PROGRAM" >versions.sh
chmod +x versions.sh
for pass in "1 rule convert:" "1 Nothing to be done" "2 rule convert:|updated by another job: .*_version.txt" "2 Nothing to be done"; do
    echo "${pass%% *}" >version
    PROGRAM=$box/versions.sh MEMORY=$((100 + ++passes)) row versions 0 "['a/lower_d.dat']" "$good" "${pass#* }"
done
row marks 1 "['a/lower_d.dat']" '{all: {switches: "-gpkg -tAll", split_times: 2}, points: {switches: "-cp x.mif -tAll", split_times: 2}, max: {switches: "-flt -max", split_times: 2},
        no/where: "-flt", layer: {switches: "-shp", merge: vrt}, none: "", layer: "-mif"}' \
    "configuration: product all, switches: .* one file for each time: .*: -gpkg -tAll|points, .*cannot cut -lp and -cp.*x.mif|max, .*cuts -tAll, which is not there: -flt -max|product no/where: a name has|product none: no switches|configuration: layer stands twice in .*marks.yaml"
row merges 1 "[]" '{layer: {switches: "-shp", merge: vrt}, odd: 5}' "configuration: product layer, switches: merge needs rasters: .*: -shp|product odd: switches in quotes|runs: \[\]"
row parts 0 "['a/lower_d.dat']" '{all: {switches: "-flt -grid400 -tAll", split_times: 2}, whole: "-flt -grid400 -tAll"}' "^lower_d,all,done,5,|^lower_d,whole,done,5,"
for file in parts/whole/lower_d/*.flt; do
    [ "$(find parts/all -name "${file##*/}" | wc -l)" -eq 1 ] && cmp -s "$file" parts/all/lower_d/*/"${file##*/}" || fail "${file##*/} is in no part, in two, or differs"
done
# Other parts, none, and parts again: every time once, and nothing of the plan before.
again() {
    row again 0 "['a/lower_d.dat']" "{all: {switches: \"-flt -grid400 -tAll\"$1}}" "^lower_d,all,done,5,$2"
    [ "$(find again -name '*.flt' -printf '%P\n' | xargs -n 1 basename | sort -u | wc -l) $(find again -name '*.flt' | wc -l)" = "5 5" ] || fail "again $1: not every time once"
    [ "$(cd again/records/all/lower_d && echo *.json) $(find again/all/lower_d -maxdepth 1 -name "*.hdr" | wc -l)" = "$3" ] || fail "again $1: $(ls again/records/all/lower_d again/all/lower_d)"
}
again ", split_times: 2" "" "times_0001.json times_0002.json times_0003.json 0"
again ", split_times: 3" ".*,NOTE - Removed what an earlier plan left: times_0003$" "times_0001.json times_0002.json 0"
again "" "" "all.json 5"
again ", split_times: 4" ".*,\"NOTE - Removed what an earlier plan left: lower_.*[.]flt.*[.]flt, ... [(]5[)]\"$" "times_0001.json times_0002.json 0"
# Every time of a file of many goes to one part, and where datasets have nearly the same times none is on both sides of an end.
# The mesh is the one that the program takes for each kind of results.
touch q.2dm q_1.2dm R.2DM
"$MAKER" -cells 2 -times 1003 many >/dev/null && python3 -B "$flow/scripts/parts.py" "$PROGRAM" many_d.dat many.json && python3 -B - "$flow/scripts" <<'END' || fail "the parts"
import json, sys
sys.path.insert(0, sys.argv[1])
from parts import cut
from runs import mesh_beside
assert [mesh_beside(results) for results in ("q_1.xmdf", "q_1.dat", "q_1_h.dat", "r_V.dat")] == ["q_1.2dm", "q.2dm", "q_1.2dm", "R.2DM"]
tenths, seconds = [0, 0.1, 0.2, 0.3], [i / 3600 for i in range(600)]
ends = lambda hours, most: [sorted(float(s[7 if "-until" in s else 5:]) for s in part) for part in cut({"hours": hours, "extremes": [], "whole": True}, most).values()]
many = list(cut(json.load(open("many.json")), 100).values())
assert (len(many), many[10]) == (11, ["-from99.95"]), many
assert ends([tenths, [0, 0.1000001, 0.2, 0.3]], 2) == [[0.15000005], [0.15000005]]
for part in ends([tenths, seconds], 90):
    assert all(abs(end - time) > 0.001 for end in part for time in tenths), part
END
MODELS=4 DEMO=$box/demo "$flow/demo.sh" || fail "the demonstration"
echo "$failures failed"
[ $failures -eq 0 ]
