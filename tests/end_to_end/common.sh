# What every end-to-end script uses. A script runs in an empty folder of its own, $SCRATCH/data, holds a row a command line, and ends
# with `finish`. Its environment: PROGRAM (the converter), MAKER (make_parabolic_basin), SHARED_DATA, SCRATCH.
set -u
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
rm -rf "$SCRATCH"
mkdir -p "$SCRATCH/data" || exit 1
cd "$SCRATCH/data" || exit 1

# A Windows program under wine has another name for this folder, and no terminal of this system's.
case $PROGRAM in
    */run_VORANT_to_GIS) on_windows=yes slash=\\ folder=Z:${PWD//\//\\} ;;
    *) on_windows="" slash=/ folder=$PWD ;;
esac

checks=0
failures=0
command_line="(before the first run)"
outputs=()

fail() {
    failures=$((failures + 1))
    echo "FAILED: $*"
    echo "    after: $command_line"
}

# check <what is wrong when it fails> <command...>
check() {
    local what=$1
    shift
    checks=$((checks + 1))
    "$@" || fail "$what"
}

# make_model <options and name>: without HDF5 there is no .xmdf, and the script is left out.
make_model() {
    if [[ " $* " == *" -xmdf "* ]] && "$PROGRAM" -version </dev/null 2>&1 | grep -q "^HDF5 none"; then
        echo "The program was built without HDF5: skipped."
        exit 77
    fi
    check "make_parabolic_basin $*" "$MAKER" "$@" >/dev/null
}

files_here() { find . -type f -o -type l | sed 's|^\./||' | sort; }

# start: forgets the files that the run before has written; finished_with <status> <real status>: looks at how a run ended.
start() {
    [ "${#outputs[@]}" -eq 0 ] || rm -f -- "${outputs[@]}"
    files_here >../before.txt
}
finished_with() {
    check "exit status $2, expected $1; it said: $(tail -n 3 ../console.txt)" [ "$1" -eq "$2" ]
    check "a sanitizer spoke: $(grep -m 1 -E 'Sanitizer|runtime error:' ../console.txt)" not grep -qE 'Sanitizer|runtime error:' ../console.txt
    mapfile -t outputs < <(files_here | comm -13 ../before.txt -)
}
not() { ! "$@"; }

# run <status> <arguments...>: runs the program without a terminal; what it says is kept in ../console.txt.
run() {
    local expected=$1
    shift
    command_line="VORANT_to_GIS $*"
    start
    timeout 120 "$PROGRAM" "$@" </dev/null >../console.txt 2>&1
    finished_with "$expected" $?
}

# answered <status> <answers> <arguments...>: the same with lines to read, as when a script feeds the prompts.
answered() {
    local expected=$1 answers=$2
    shift 2
    command_line="VORANT_to_GIS $* (answers: $answers)"
    start
    printf '%b' "$answers" | timeout 120 "$PROGRAM" "$@" >../console.txt 2>&1
    finished_with "$expected" $?
}

# wrote <names...>: these files are new, and no others.
wrote() {
    local expected
    expected=$(printf '%s\n' "$@" | sort)
    check "wrote: ${outputs[*]:-nothing}; expected: ${*:-nothing}" [ "$(printf '%s\n' "${outputs[@]}")" = "$expected" ]
}

# row <status> "<names of what it writes>" <arguments...>
row() {
    local status=$1 names=$2
    shift 2
    run "$status" "$@"
    # shellcheck disable=SC2086  # the names are words
    wrote $names
}

# said <texts...>: the console holds each.
said() {
    local text
    for text in "$@"; do check "did not say: $text" grep -qF -- "$text" ../console.txt; done
}
did_not_say() { check "said: $1" not grep -qF -- "$1" ../console.txt; }

# An .asc or .flt of the last run, to be compared with a later one: it is moved to ../kept.
keep() {
    mkdir -p ../kept
    mv -- "$@" ../kept/
    outputs=()
}

# cells <grid>: "x y value" of every cell, at the centre that GDAL gives it.
cells() { gdal_translate -q -of XYZ "$1" /vsistdout/; }

# same_values <grid> <grid> <tolerance>: as GDAL reads them, cell by cell.
same_values() { check "$1 and $2 differ by more than $3" equal_grids "$@"; }
equal_grids() {
    cells "$1" >../first.xyz
    cells "$2" >../second.xyz
    paste -d ' ' ../first.xyz ../second.xyz | awk -v tolerance="$3" '
        function far(a, b) { return a - b > tolerance || b - a > tolerance }
        NF != 6 || far($1, $4) || far($2, $5) || far($3, $6) { wrong++ }
        END { exit NR == 0 || wrong > 0 }'
}

# value_at <grid> <x> <y> <expected> <tolerance>
value_at() {
    local value
    value=$(gdallocationinfo -valonly -geoloc "$1" "$2" "$3")
    check "$1 holds ${value:-nothing} at $2 $3, expected $4" within "${value:-nan}" "$4" "$5"
}
within() { awk -v a="$1" -v b="$2" -v t="$3" 'BEGIN { d = a - b; exit !(a != "nan" && d <= t && d >= -t) }'; }

# info <grid> <texts...>: gdalinfo -stats prints each.
info() {
    local grid=$1 text
    shift
    gdalinfo -stats "$grid" >../info.txt 2>&1
    rm -f "$grid.aux.xml" "${grid%.*}.stx"
    for text in "$@"; do check "gdalinfo does not say \"$text\" of $grid" grep -qF -- "$text" ../info.txt; done
}

finish() {
    echo "$checks checks, $failures failed"
    [ "$failures" -eq 0 ] && [ "$checks" -gt 0 ]
    exit
}
