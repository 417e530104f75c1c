#!/usr/bin/env bash
# A grid that is held whole, and one made in bands of rows (-mem): the same files to the byte, the same words.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# banded <arguments...>
banded() {
    local file
    run 0 -mem4000 -b "$@"
    sed 's/-mem4000/-mem/' ../console.txt >../console_whole.txt
    rm -rf ../whole
    mkdir ../whole
    mv -- "${outputs[@]}" ../whole/
    outputs=()
    run 0 -mem16 -b "$@"
    check "the words differ: $(sed 's/-mem16/-mem/' ../console.txt | diff - ../console_whole.txt | head -n 4)" \
        cmp -s <(sed 's/-mem16/-mem/' ../console.txt) ../console_whole.txt
    check "other files: ${outputs[*]:-none}" [ "$(printf '%s\n' "${outputs[@]}")" = "$(ls ../whole)" ]
    for file in "${outputs[@]}"; do check "$file differs" cmp -s "$file" "../whole/$file"; done
}

# 21 million bytes of values at 5.5 m, in cells that lie across the bands; one level that needs a wide field.
make_model -cells 30 -times 2 -side 10000 -rotate 20 -distort 0.2 -xmdf m
make_model -cells 30 -times 2 -side 10000 -rotate 20 -distort 0.2 -no-flags n
make_model -cells 23 -times 2 -side 10000 -rotate 20 w
awk '$1 == "ND" && $2 == 10 { $5 = 123456 } { print }' m.2dm >peak.2dm

banded -asc -grid5.5 peak.2dm
banded -flt -grid5.5 -t0.1 -va -compass m_V.dat
banded -asc -prec6.2 -grid7 -t0.1 -dif w_d.dat -mesh2 w.2dm -jobs3 m_d.dat
banded -flt -grid7 -t0.1 -dif n_h.dat m_h.dat
if [ -e "$(dirname "$PROGRAM")/libvorant_gdal.so" ]; then
    banded -gtif -grid5.5 -t0.1 m_h.dat
    banded -gtif -multiband -grid7 -tAll -typeh -dif m.xmdf m.xmdf
fi
for limit in -mem15 -mem -mem16.5 -memmuch; do
    row 1 "" -b $limit -asc -grid400 m.2dm
    said "ERROR"
done

# What does not fit on the disk is known before the first byte; what could not be known ends where the disk is full.
room() {    # room <megabytes> <what it says> <arguments...>
    local size=$1 text=$2
    shift 2
    command_line="VORANT_to_GIS $* (a disk of $size MB)"
    start
    mkdir -p small
    PROGRAM=$PROGRAM SIZE=$size EARLIER=${EARLIER:-} unshare -rm sh -c 'mount -t tmpfs -o size="$SIZE"m tmpfs small
        [ -z "$EARLIER" ] || { head -c "$EARLIER" /dev/zero >small/x.flt; mkfifo small/x2.flt; }
        "$PROGRAM" "$@"; status=$?
        [ -n "$EARLIER" ] || [ -z "$(ls -A small)" ] || echo "left behind: $(ls -A small)"; exit $status' sh "$@" </dev/null >../console.txt 2>&1
    finished_with 1 $?
    said "$text"
    did_not_say "left behind"
}
if [ -z "$on_windows" ] && unshare -rm true 2>/dev/null; then
    room 32 "MB on the disk, and 33." -b -flt -grid5.5 -t0.1 -dif n_h.dat -out small/x m_h.dat
    room 64 "ERROR - Could not write small/x.asc: No space left on device. The file is incomplete." -b -mem16 -asc -grid5.5 -out small/x peak.2dm
    make_model -cells 20 -times 40 long
    room 4 "Check - The outputs will take at most 9.9 GB on the disk." -b -mif -grid8 -tAll -into small long_h.dat
    # An earlier output stands until the new one is whole; a pipe of another name that begins alike plays no part.
    EARLIER=5000000 room 24 "ERROR - The outputs need 21.7 MB on the disk, and 20." -b -flt -grid5.5 -out small/x m.2dm
fi
ln -s /dev/null m_g000.01.flt
timeout 5 "$PROGRAM" -b -mem16 -flt -grid0.01 m.2dm </dev/null >../console.txt 2>&1
did_not_say "The outputs"
finish
