#!/usr/bin/env bash
# One thread or several: the same files to the byte, the same words, the same end, whatever stands in the mesh.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# both <status> <arguments...>: by one job and by three.
both() {
    local status=$1 file
    shift
    run "$status" -jobs1 "$@"
    sed 's/-jobs1/-jobs/' ../console.txt >../console_one.txt
    rm -rf ../one
    mkdir ../one
    [ "${#outputs[@]}" -eq 0 ] || mv -- "${outputs[@]}" ../one/
    outputs=()
    run "$status" -jobs3 "$@"
    check "the words differ: $(sed 's/-jobs3/-jobs/' ../console.txt | diff - ../console_one.txt | head -n 4)" \
        cmp -s <(sed 's/-jobs3/-jobs/' ../console.txt) ../console_one.txt
    check "other files: ${outputs[*]:-none}" [ "$(printf '%s\n' "${outputs[@]}")" = "$(ls ../one)" ]
    for file in "${outputs[@]}"; do check "$file differs" cmp -s "$file" "../one/$file"; done
}

make_model -cells 150 -times 3 -rotate 20 -distort 0.2 -no-flags -xmdf m

both 0 -b -flt -grid25 -tAll m_h.dat
head -c "$(($(wc -c <m_h.dat) - 100))" m_h.dat >cut.dat  # it ends while the time before is still being written
both 3 -b -flt -grid25 -tAll -2dm m.2dm cut.dat
rm cut.dat
if [ -z "$on_windows" ]; then    # a limit of Linux, which would end wine
    limit=$(ulimit -S -f)
    ulimit -S -f 64  # kB; the first grid does not fit, which its writer finds out beside the second
    both 1 -b -flt -grid15 -tAll m_h.dat
    ulimit -S -f "$limit"
    said "ERROR - Could not write m_h_t000.00_g015.flt: File too large"
    check "words of a later time" [ "$(grep -c "Reading data for time" ../console.txt)" = 1 ]
fi
both 0 -b -asc -grid25 -prec6.2 -max m_d.dat
both 0 -b -asc -grid40 -t0.1 -va m_V.dat
both 0 -b -flt -grid60 -typeAll -tAll m.xmdf
both 0 -b -xmdf -tAll -typeAll m.xmdf     # chunks of several pieces; the library unpacks them as its own
mv m_out.xmdf copy.xmdf
for file in m copy; do
    row 0 "$file.dat" -b -dat -tAll -typeV -2dm m.2dm -out $file $file.xmdf
    mv $file.dat ../$file.dat
done
check "values differ behind their way through an .xmdf" cmp -s ../m.dat ../copy.dat
rm copy.xmdf
both 0 -b -shp m.2dm
both 0 -b -mif -vector -grid300 -tAll -nth2 m_V.dat

# Meshes that are read in blocks of 256 KiB: parts and line ends across them, and what must be refused as one reader does.
awk 'NR == 2 { print "MESHPART \"first\"" } /^E/ && !parted { parted = 1; print "MESHPART \"banks\"" }
    /^E/ && ++elements == 9000 { print "MESHPART \"channel\"" } elements == 20000 && !again++ { print "MESHPART \"banks\"" } { print }' \
    m.2dm >parts.2dm
both 0 -b -asc -grid40 -rmp banks parts.2dm
sed 's/$/\r/' parts.2dm >crlf.2dm
both 0 -b -asc -grid40 -rmp channel crlf.2dm
{ head -n 5000 m.2dm; head -c 400000 /dev/zero | tr '\0' 'x'; echo; tail -n +5001 m.2dm; } >long.2dm
both 0 -b -asc -grid40 long.2dm
last=$(tail -n 1 m.2dm)
refused() {     # refused <what the message says> <last line>
    { sed '$d' m.2dm; printf '%s\n' "$2"; } >broken.2dm
    both 1 -b -asc -grid40 broken.2dm
    said "$1"
}
refused "Line $(wc -l <m.2dm) of broken.2dm: a value is missing" "${last%% *} 22500"
refused "this node was given before" "$(tail -n 2 m.2dm | head -n 1)"
refused "a value cannot be read" "${last% *} x"

# A file that becomes shorter while its next time is read ahead: nobody reads the first output until then.
shortened() {   # shortened <first output> <what the message says> <arguments...>
    local first=$1 text=$2
    shift 2
    start
    command_line="VORANT_to_GIS $*"
    mkfifo "$first"
    timeout 60 "$PROGRAM" "$@" </dev/null >../console.txt 2>&1 &
    sleep 0.5
    truncate -s 250000 "${@: -1}"
    timeout 60 cat "$first" >/dev/null
    wait $!
    finished_with 1 $?
    said "$text"
    rm "$first"
}
if [ -z "$on_windows" ]; then
    cp m_h.dat cut.dat
    shortened cut_t000.00_g060.asc "cut.dat: it has become shorter" -b -jobs3 -asc -grid60 -tAll -2dm m.2dm cut.dat
    [ ! -e m.xmdf ] || cp m.xmdf cut.xmdf
    [ ! -e m.xmdf ] || shortened cut_h_t000.00_g060.asc "while reading cut.xmdf" -b -jobs3 -asc -grid60 -tAll -typeh -2dm m.2dm cut.xmdf
    rm -f cut*
fi

for jobs in -jobs0 -jobs-2 -jobs -jobs2.5; do
    row 1 "" -b $jobs -asc -grid40 m.2dm
    said "ERROR"
done
row 0 "m_g040.asc" -b -jobs100000 -asc -grid40 m.2dm
if command -v taskset >/dev/null; then
    taskset -c 0 "$PROGRAM" -b -jobs3 -asc -grid40 -out one m.2dm >../console.txt 2>&1 </dev/null
    check "three threads on one processor" cmp -s one.asc m_g040.asc
fi

finish
