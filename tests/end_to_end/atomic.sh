#!/usr/bin/env bash
# What stands under an output's name is whole: an earlier output or the new one, whatever happens to the run.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

make_model -times 3 -cells 10 basin
echo 'GEOGCS["none"]' >Header.prj
host=$(uname -n | tr -c 'A-Za-z0-9\n-' _ | cut -c1-32)
layer=(-b -mif -grid20 -t0.2 -out out basin_h.dat)             # its .mid is larger than what a pipe holds
grid=(-b -asc -grid400 -t0.2 -out out basin_h.dat)

earlier() { for name in "$@"; do echo "earlier" >"$name"; done; }
untouched() { for name in "$@"; do check "$name was touched" [ "$(cat "$name")" = "earlier" ]; done; }
none_left() { check "left: $(echo *.part* *.old*)" [ -z "$(find . -name '*.part*' -o -name '*.old*')" ]; }

run 0 "${layer[@]}"
keep out.mif out.mid
run 0 "${grid[@]}"
keep out.asc out.prj

# A name of as many letters as the disk takes is shortened while it is written.
long=$(printf 'n%.0s' {1..251})
row 0 "$long.asc $long.prj" -b -asc -grid400 -t0.2 -out "$long" basin_h.dat
check "a long name changes the output" cmp -s "$long.asc" ../kept/out.asc

# The rest is of this system's signals, pipes, links and permissions; tests/windows/terminal.py has what Windows has of it.
[ -z "$on_windows" ] || finish

# A run that waits in the middle of its output, since nobody reads its .mid; `pid` is its process.
waiting_run() {
    command_line="VORANT_to_GIS ${layer[*]} (nobody reads its .mid)"
    rm -f out.mid
    mkfifo out.mid
    env --default-signal=INT,TERM,HUP "$PROGRAM" "${layer[@]}" </dev/null >../console.txt 2>&1 &
    pid=$!
    for ((i = 0; i < 600; i++)); do
        [ ! -e "out.$host-$pid.part.mif" ] || return
        sleep 0.1
    done
    fail "there is no out.$host-$pid.part.mif"
}

# ended_by <signal> <status>
ended_by() {
    earlier out.mif
    waiting_run
    kill -s "$1" "$pid"
    wait "$pid" 2>/dev/null
    check "status of SIG$1 is not $2" [ $? -eq "$2" ]
    untouched out.mif
}
for signal in INT:130 TERM:143 HUP:129; do
    ended_by "${signal%:*}" "${signal#*:}"
    none_left
done

# What a killed run leaves is removed by the next that writes the same, but not what a live one or another machine writes.
ended_by KILL 137
left=out.$host-$pid.part.mif
others=("out.$host-$$.part.mif" "out.elsewhere-$pid.part.mif" "outer.$host-$pid.part.mif" "out.$host-$pid.part.shp")
check "$left is not there" [ -e "$left" ]
earlier "${others[@]}"
waiting_run
check "$left is still there" [ ! -e "$left" ]
untouched "${others[@]}"
rm -f "${others[@]}"
# The run that waits goes on beside another, and writes its pipe and its file.
run 0 -b -asc -grid400 -t0.2 -out other basin_h.dat
check "two runs disturb each other" cmp -s other.asc ../kept/out.asc
cat out.mid >../piped.mid
wait "$pid"
check "the waiting run failed" [ $? -eq 0 ]
check "the pipe got something else" cmp -s ../piped.mid ../kept/out.mid
check "out.mif differs" cmp -s out.mif ../kept/out.mif
check "the pipe is gone" [ -p out.mid ]
rm -f out.mif
head -c 1 out.mid >/dev/null &
timeout 30 "$PROGRAM" "${layer[@]}" </dev/null >../console.txt 2>&1
finished_with 1 $?
said "out.mid: Broken pipe"
rm -f out.mid out.mif
none_left

# A full disk in the second file of a set, a limit of the file size, and the third of three times.
earlier out.mif out.flt out.hdr out.asc
ln -s /dev/full out.mid
row 1 "" "${layer[@]}"
said "out.mid: No space left on device"
rm out.mid
earlier out.mid
limited() { (ulimit -f 8 && exec "$PROGRAM" "$@" </dev/null) 2>&1 | head -c 4000 >../console.txt; return "${PIPESTATUS[0]}"; }
for format in mif shp flt asc; do
    command_line="VORANT_to_GIS -$format (8 kB at most)"
    start
    limited -b "-$format" -grid20 -t0.2 -out out basin_h.dat
    finished_with 1 $?
    wrote
    said "ERROR" "File too large"
done
untouched out.mif out.mid out.flt out.hdr out.asc
none_left
earlier d.asc
ln -s /dev/full d_class.asc
make_model -times 3 -cells 10 later
row 1 "" -b -asc -grid400 -t0.2 -out d -dif later_h.dat basin_h.dat
said "d_class.asc: No space left on device"
untouched d.asc
rm d.asc d_class.asc
ln -s /dev/full basin_h_t000.20_g400.asc
row 1 "basin_h_t000.00_g400.asc basin_h_t000.00_g400.prj basin_h_t000.10_g400.asc basin_h_t000.10_g400.prj" \
    -b -asc -grid400 -tAll basin_h.dat
rm basin_h_t000.20_g400.asc
none_left

# Killed amid its moves, a run leaves the earlier set beside its place: it is put back before anything can fail, and removed where the new set stands.
left=out.$host-$pid.old
earlier "$left.mif" "$left.mid"
rm -f out.mif
echo "new" >out.mid
command_line="VORANT_to_GIS -mif (8 kB at most, after a kill)"
limited -b -mif -grid20 -t0.2 -out out basin_h.dat
said "Check - Put back what a run that was killed had moved away from out.mif." "ERROR"
untouched out.mif out.mid
none_left
earlier "$left.mid"
run 0 "${layer[@]}"
check "out.mid differs" cmp -s out.mid ../kept/out.mid
none_left
rm -f out.mif out.mid

# A link is followed.
mkdir deep
earlier deep/real.asc
ln -sf deep/real.asc out.asc
run 0 "${grid[@]}"
check "the link is gone" [ -L out.asc ]
check "the link was not followed" cmp -s deep/real.asc ../kept/out.asc
rm -rf out.asc deep
earlier out.asc
chmod 640 out.asc
run 0 "${grid[@]}"
check "the permissions are gone" [ "$(stat -c %a out.asc)" = 640 ]
rm out.asc

# A folder that takes no new file: what exists is written in place, with a warning; what does not is left out or refused.
user=()
[ "$(id -u)" -ne 0 ] || user=(setpriv --reuid 65534 --regid 65534 --clear-groups)
in_closed_folder() {
    local name=$1 status=$2
    shift 2
    command_line="VORANT_to_GIS $* -out closed/$name"
    ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0" "${user[@]}" "$PROGRAM" -b "$@" -t0.2 -out "closed/$name" basin_h.dat </dev/null >../console.txt 2>&1
    finished_with "$status" $?
}
mkdir closed
earlier closed/{there.asc,shut.asc,shut.prj,s.shp,s.shx,s.dbf,half.shp,half.dbf,m.mif,f.flt,d.asc,e.case,e.geo}
chmod a+rw closed/*
chmod a-w closed/s.dbf closed/shut.prj
chmod a-w closed
in_closed_folder there 0 -asc -grid400
said "WARNING - Folder closed takes no new file, so that closed/there.asc is written in place" "so that closed/there.prj is left out."
check "in place it differs" cmp -s closed/there.asc ../kept/out.asc
in_closed_folder new 1 -asc -grid400
said "ERROR - No permission to write files into folder closed (for closed/new.asc)."
# A set of which not every file can be written is not begun.
while read -r name switches what; do
    # shellcheck disable=SC2086  # the switches are words
    in_closed_folder "$name" 1 ${switches//,/ }
    said "ERROR - $what"
    did_not_say "written in place"
done <<'END'
shut -asc,-grid400 No permission to write file closed/shut.prj.
s -shp,-grid400 No permission to write file closed/s.dbf.
half -shp,-grid400 No permission to write files into folder closed (for closed/half.shx).
m -mif,-grid400 No permission to write files into folder closed (for closed/m.mid).
f -flt,-grid400 No permission to write files into folder closed (for closed/f.hdr).
d -asc,-grid400,-dif,later_h.dat No permission to write files into folder closed (for closed/d_class.asc).
e -ensight No permission to write files into folder closed (for closed/e.*.scl).
END
untouched closed/{shut.*,s.*,half.*,m.mif,f.flt,d.asc,e.*}
chmod u+w closed
none_left

finish
