#!/usr/bin/env bash
# Fails each open, write, close, rename and allocation of a small conversion to each format in turn, and asks the run to end at each. What stands under the names of
# the outputs afterwards is what stood there before or all of the new, and the console says what happened.
#   FAULT_SECONDS   how long it may take (30): a share of the allocations, of the requests to end, and of the calls of GDAL's formats is
#                   taken, evenly spread, and told. 0: all of them, of the allocations of a library 2000.
set -u
seconds=${FAULT_SECONDS:-30}
export ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1:exitcode=99  # the libraries lose some when they run out of memory
export OGR_CURRENT_DATE=2020-01-01T00:00:00.000Z                # which a GeoPackage holds
rm -rf "$SCRATCH"
mkdir -p "$SCRATCH/inputs" && cd "$SCRATCH/inputs" || exit 1
"$MAKER" -times 1 -cells 3 b >/dev/null || exit 1
cat >Header.prj <<'END'
PROJCS["WGS 84 / UTM zone 55S",GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563]],PRIMEM["Greenwich",0],UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",147],PARAMETER["scale_factor",0.9996],PARAMETER["false_easting",500000],PARAMETER["false_northing",10000000],UNIT["metre",1]]
END
printf 'VERSION 300\nDELIMITER ","\nCOLUMNS 1\n  Name Char(8)\nDATA\n' | tee points.mif >line.mif
echo 'POINT 304000 6204000' >>points.mif
printf 'PLINE 2\n301000 6204000\n307000 6205000\n' >>line.mif
echo '"a"' | tee points.mid >line.mid
printf '!table\n  Type "RASTER"\n  (500,1000) (0,0),\n  (700,800) (100,100)\n' >screen.tab
mkdir ../large && "$MAKER" -times 2 -cells 90 ../large/b >/dev/null || exit 1  # enough for several threads to share
cd ..

kinds=(open write close rename renames term alloc)
conversions=(asc:-grid900 flt:-grid900 threads: mif:-grid900 shp:-grid900 dat: xmdf: ensight: xnfo: txt: cp:points.mif lp:line.mif dif: wld: gtif:-grid900 gpkg:-grid900 fgb:-grid900)
arguments() {
    words=(-b -flt -grid90 -jobs3 -tAll b_h.dat)
    [ "${1%%:*}" != threads ] || return
    words=(-b -wld screen.tab)
    [ "${1%%:*}" != wld ] || return
    words=(-b -flt -grid900 -t0 -out o -dif b_h.dat b_h.dat)
    [ "${1%%:*}" != dif ] || return
    words=(-b "-${1%%:*}" ${1#*:} -t0)
    [ "${1%%:*}" = xnfo ] || words+=(-out o)
    words+=(b_h.dat)
}

# convert <folder> <fault>: sets `status`; what it said is in <folder>.txt
convert() {
    rm -rf "$1"
    cp -r "$before" "$1"
    { (cd "$1" && FAULT=$2 exec timeout 60 "$PROGRAM" "${words[@]}" </dev/null >"../$1.txt" 2>&1); } 2>/dev/null
    status=$?
}
# The bytes of what a library writes may depend on a call that it repeats; what is in it may not.
contents() {
    case ${name%%:*} in
        gpkg | fgb) ogrinfo -ro -al "$1/o.${name%%:*}" 2>&1 | tail -n +3 ;;
        xmdf) cp "$1/o.xmdf" read.$worker.xmdf && (cd "$1" && FAULT=none:0 "$PROGRAM" -b -asc -grid300 -t0 -2dm b.2dm -out "../read.$worker" "../read.$worker.xmdf") </dev/null >/dev/null 2>&1 && cat read.$worker.asc ;;
        *) echo "$1" ;;
    esac
}
equal() { same "$1" "$2" || [ "$(contents "$1" | md5sum)" = "$(contents "$2" | md5sum)" ]; }
# Of a run of several outputs those that were finished before stay: the files of each are all the earlier ones or all the new ones.
each() {
    local file
    case ${name%%:*} in threads | cp | dif) ;; *) return 1 ;; esac
    for file in "$after"/*; do
        file=${file##*/}
        one_of "$before" "$1" "${file%.*}" || one_of "$after" "$1" "${file%.*}" || return 1
    done
}
one_of() {
    local file
    for file in "$1/$3".*; do cmp -s "$file" "$2/${file##*/}" || return 1; done
}
# A WARNING that the run says otherwise not names each file that differs or is missing.
excused() {
    local warnings file
    warnings=$(grep WARNING "$1.txt" | grep -vxFf "$after.txt")
    [ -n "$warnings" ] || return 1
    for file in "$after"/* "$1"/*; do
        file=${file##*/}
        cmp -s "$after/$file" "$1/$file" || [[ $warnings = *"$file"* ]] || return 1
    done
}
# The ERROR, or the line above one with a number, names a file; or the ERROR tells of the memory.
names_what() {
    local file='[A-Za-z0-9_]\.[a-z0-9]{2,4}' line=$'[^\n]*' end=$'\n'
    [[ $end$1 =~ ${end}ERROR$line(emory|$file) || $1 =~ $file$line": "$line${end}"ERROR "[0-9]{4} ]]
}
same() { diff -rq --exclude=*.part* --exclude=*.old* "$1" "$2" >/dev/null; }

wrong() { echo "FAILED: $name, $kind $n: $1 (status $status)"; grep -E -A3 "Sanitizer|runtime error" "$worker.txt" | cut -c1-200; tail -n 3 "$worker.txt"; : >>failed; }

# What cannot be put back is beside its place, and the ERROR names the first of it.
stays_aside() {
    local aside
    aside=$(cd "$worker" && ls -d *.old* 2>/dev/null)
    [ "$status" -eq 1 ] && [ "$(grep -lx earlier "$worker"/* | wc -l)" -eq "$(grep -lx earlier "$before"/* | wc -l)" ] || return 1
    [ -z "$aside" ] || [[ $said = *"could not be put back: o."*.old* ]]
}

# Looks at what the run in the folder $worker has come to.
judge() {
    local said
    said=$(<"$worker.txt")
    # Without memory GDAL and HDF5 end the process themselves, HDF5 once by calling itself for ever.
    if [ "$kind" = alloc ] && [ "$library" = yes ]; then
        case $status:$said in
            134:* | 255:* | 99:*stack-overflow* | 99:*libhdf5*) same "$worker" "$before" || wrong "torn"; return ;;
        esac
    fi
    case $said in *Sanitizer*|*"runtime error:"*) wrong "a sanitizer spoke" ;; esac
    if [ "$kind" = renames ]; then
        stays_aside || wrong "an earlier file is neither at its place nor told"
        return
    fi
    [ -z "$(find "$worker" -name '*.part*' -o -name '*.old*')" ] || wrong "temporaries are left"
    case $status in
        0) equal "$worker" "$after" || excused "$worker" || wrong "another output without a word of it: $(diff -rq "$worker" "$after" | head -n 3)" ;;
        1) same "$worker" "$before" || same "$worker" "$after" || each "$worker" || wrong "torn: $(diff -rq "$worker" "$after" | head -n 3)"
           names_what "$said" || wrong "no ERROR of a file or the memory" ;;
        143) [ "$kind" = term ] && { same "$worker" "$before" || equal "$worker" "$after" || each "$worker"; } || wrong "torn by a signal" ;;
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
    case $name in xmdf*|gtif*|gpkg*|fgb*) library=yes ;; *) library=no ;; esac
    inputs=inputs
    [ "$name" != threads: ] || inputs=large
    before=$inputs
    after=after.${name%%:*}
    convert "$after" none:0
    if [ "$status" -ne 0 ]; then
        echo "$name is left out: $(tail -n 2 "$after.txt" | head -n 1)"
        grep -q "No GDAL module found\|made without the HDF5 library" "$after.txt" || : >failed
        continue
    fi
    before=before.${name%%:*}
    cp -r "$after" "$before"
    for file in "$before"/*; do [ -e "$inputs/${file##*/}" ] || echo earlier >"$file"; done
    share=$(((seconds - (SECONDS - start)) / (${#conversions[@]} - i)))
    for kind in "${kinds[@]}"; do
        [ "$name" != threads: ] || [[ $kind = write || $kind = alloc || $kind = term ]] || continue
        [ "$kind" != renames ] || [[ $name = shp* ]] || continue
        count=0
        FAULT_COUNT=$PWD/count convert scratch "$kind:0"
        count=$(<count)
        until=$((SECONDS + share))
        rm -f done.*
        # How many of the calls are taken: in a spread order, so that a short time still reaches every part of the run.
        calls=$count
        if [ "$seconds" -gt 0 ]; then
            case $kind:$name in
                alloc:threads:) calls=30 ;;
                term:threads:) calls=8 ;;
                alloc:*) calls=60 ;;
                term:gtif* | term:gpkg* | term:fgb*) calls=$((count / 16)) ;;
                write:fgb*) ;;  # every one, since GDAL does not notice
                term:* | *:gtif* | *:gpkg* | *:fgb*) calls=$((count / 4)) ;;
            esac
        elif [ "$kind:$library" = alloc:yes ] && [ "$count" -gt 2000 ]; then
            calls=2000
        fi
        [ "$calls" -gt 0 ] || calls=1
        step=$((2 * ((count + calls - 1) / calls)))
        [ "$step" -gt 0 ] || step=2
        (worker=one every $step 1) & 
        (worker=two every $step $((1 + step / 2))) &
        wait
        echo "$name: $(cat done.* 2>/dev/null | wc -l) of $count calls to $kind"
    done
done
[ ! -e failed ]
