#!/usr/bin/env bash
# Fails each open, write, close, rename and allocation of a small conversion to each format in turn. What stands under the names of
# the outputs afterwards is what stood there before or all of the new, and the console says what happened.
#   FAULT_SECONDS   when given, allocations and GeoPackages too, of which some still end in an abort or a torn set: how long the
#                   allocations may take; what is left out is evenly spread and told. 0: all of them.
set -u
seconds=${FAULT_SECONDS:-40}   # shared by the formats
export ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1  # the libraries lose some when they run out of memory
export OGR_CURRENT_DATE=2020-01-01T00:00:00.000Z                # which a GeoPackage holds
rm -rf "$SCRATCH"
mkdir -p "$SCRATCH/inputs" && cd "$SCRATCH/inputs" || exit 1
"$MAKER" -times 1 -cells 3 b >/dev/null || exit 1
cat >Header.prj <<'END'
PROJCS["WGS 84 / UTM zone 55S",GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563]],PRIMEM["Greenwich",0],UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",147],PARAMETER["scale_factor",0.9996],PARAMETER["false_easting",500000],PARAMETER["false_northing",10000000],UNIT["metre",1]]
END
cd ..

kinds=(open write close rename)
conversions=(asc:-grid900 flt:-grid900 mif:-grid900 shp:-grid900 dat: xmdf: ensight: xnfo: gtif:-grid900)
if [ -n "${FAULT_SECONDS:-}" ]; then
    kinds+=(alloc)
    conversions+=(gpkg:-grid900)
fi
arguments() { words=(-b "-${1%%:*}" ${1#*:} -t0); [ "${1%%:*}" = xnfo ] || words+=(-out o); words+=(b_h.dat); }

# convert <folder> <fault>: sets `status`; what it said is in <folder>.txt
convert() {
    rm -rf "$1"
    cp -r "$before" "$1"
    (cd "$1" && FAULT=$2 exec timeout 60 "$PROGRAM" "${words[@]}" </dev/null >"../$1.txt" 2>&1)
    status=$?
}
same() { diff -rq --exclude=*.part* --exclude=*.old* "$1" "$2" >/dev/null; }

wrong() { echo "FAILED: $name, $kind $n: $1 (status $status)"; head -c 600 "$worker.txt" | tail -n 6; : >>failed; }

# Looks at what the run in the folder $worker has come to.
judge() {
    local said
    said=$(<"$worker.txt")
    case $said in *Sanitizer*|*"runtime error:"*) wrong "a sanitizer spoke" ;; esac
    if [ "$kind" = alloc ] && [ "${name%%:*}" = xmdf ]; then  # HDF5 may end the process itself
        same "$worker" "$before" || same "$worker" "$after" || wrong "torn"
        return
    fi
    [ -z "$(find "$worker" -name '*.part*' -o -name '*.old*')" ] || wrong "temporaries are left"
    case $status in
        0) same "$worker" "$after" || { [[ $said = *WARNING* ]] || wrong "another output without a word"; } ;;
        1) same "$worker" "$before" || same "$worker" "$after" || wrong "torn: $(diff -rq "$worker" "$after" | head -n 3)"
           [[ $said =~ (^|$'\n')"ERROR" ]] || wrong "no ERROR" ;;
        *) wrong "an unknown end" ;;
    esac
}

# every <step> <first>: of the kind's calls, by one of two workers
every() {
    local n
    for ((n = $2; n <= count; n += $1)); do
        [ "$kind" != alloc ] || [ "$seconds" -eq 0 ] || [ $SECONDS -lt "$until" ] || return
        convert "$worker" "$kind:$n"
        judge
        echo "$n" >>"done.$worker"
    done
}

start=$SECONDS
for ((i = 0; i < ${#conversions[@]}; i++)); do
    name=${conversions[i]}
    arguments "$name"
    before=inputs
    after=after.${name%%:*}
    convert "$after" none:0
    [ "$status" -eq 0 ] || { echo "$name is left out: $(tail -n 2 "$after.txt" | head -n 1)"; continue; }
    before=before.${name%%:*}
    cp -r "$after" "$before"
    for file in "$before"/*; do [ -e "inputs/${file##*/}" ] || echo earlier >"$file"; done
    share=$(((seconds - (SECONDS - start)) / (${#conversions[@]} - i)))
    for kind in "${kinds[@]}"; do
        (cd inputs && mkdir -p ../scratch)
        count=0
        FAULT_COUNT=$PWD/count convert scratch "$kind:0"
        count=$(<count)
        until=$((SECONDS + share))
        rm -f done.*
        # Allocations in a spread order, so that a short time still reaches every part of the run.
        step=2
        [ "$kind" != alloc ] || [ "$seconds" -eq 0 ] || step=$((2 * (count / 60 + 1)))
        (worker=one every $step 1) & 
        (worker=two every $step $((1 + step / 2))) &
        wait
        echo "$name: $(cat done.* 2>/dev/null | wc -l) of $count calls to $kind"
    done
done
[ ! -e failed ]
