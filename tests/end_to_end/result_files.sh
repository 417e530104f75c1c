#!/usr/bin/env bash
# Results as files that are read back (-dat, -xmdf), models for 3D viewers (-ensight) and listings (-xnfo).
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
make_model -cells 10 -times 3 -xmdf run_1
hdf5=$([ -f run_1.xmdf ] && echo yes)
header=100        # bytes of a scalar .dat of the example program; ours has a time unit as well
cells=$((($(stat -c %s run_1_h.dat) - header - 4) / 4 - 9 - 4 * 121))

# A .dat in our own words: the same times, flags and values, byte for byte, whatever -sec says.
row 0 "run_1_h_out_h.dat" -b -dat -tAll run_1_h.dat
check "steps differ" cmp -s -i $header:$((header + 8)) run_1_h.dat run_1_h_out_h.dat
mv run_1_h_out_h.dat ../h.dat
row 0 "mine.dat" -b -dat -tAll -sec -out mine.dat run_1_h.dat
check "-sec changes a file" cmp -s mine.dat ../h.dat
row 0 "run_1_h_out_h.dat" -b -dat -max -rmp "East Bank" run_1_h.dat
flags=$(od -An -v -tu1 -j $((header + 8 + 9)) -N "$cells" run_1_h_out_h.dat | tr -s ' ' '\n' | grep -c '^1$')
check "$flags cells of $cells are wet without the eastern part" [ "$flags" -gt 10 -a "$flags" -lt "$cells" ]
row 0 "run_1_V_out_v.dat" -b -dat -t0.2 run_1_V.dat
did_not_say "1D water level lines"

if [ -n "$hdf5" ]; then
    row 0 "run_1_h_out.xmdf" -b -xmdf -tAll run_1_h.dat
    cp run_1_h_out.xmdf ../first.xmdf
    outputs=()
    sleep 1
    row 0 "" -b -xmdf -tAll run_1_h.dat
    said "Check - Replacing run_1_h_out.xmdf."
    check "equal runs leave different bytes" cmp -s run_1_h_out.xmdf ../first.xmdf
    row 0 "back.dat" -b -dat -tAll -typeAll -out back -2dm run_1.2dm run_1_h_out.xmdf
    check "a .dat differs behind the way through an .xmdf" cmp -s back.dat ../h.dat
    rm run_1_h_out.xmdf

    # One file a dataset; stored minimums before, maximums behind the times.
    row 0 "run_1_out_Time_of_Peak_h.dat run_1_out_d.dat run_1_out_h.dat run_1_out_v.dat" -b -dat -tAll -typeAll -out name run_1.xmdf
    said "WARNING - Several outputs are written"
    row 0 "name.dat" -b -dat -tAll -typeh -out name run_1.xmdf
    times=$(for step in 0 1 2 3 4; do od -An -tf4 -j $((header + 13 + step * (9 + cells + 4 * 121))) -N 4 name.dat; done | awk '{ printf "%g ", $1 }')
    check "times are $times" [ "$times" = "-99999 0 0.1 0.2 99999 " ]
    # whatever folder comes first in the file
    row 0 "name.dat" -b -dat -tAll -Folderrun_1 -typeh -out name run_1.xmdf
    check "folders are taken in another order" [ "$(od -An -tf4 -j $((header + 13)) -N 4 name.dat | tr -d ' ')" = -99999 ]
    row 0 "run_1_out.xmdf" -b -xmdf -tAll -typeAll run_1.xmdf
    # of a difference too, each against its own kind
    row 0 "run_1_minus_run_1_out.xmdf" -b -xmdf -tAll -typeh -dif run_1.xmdf run_1.xmdf
    outputs=()
    row 0 "run_1_minus_run_1_out_xmdf_info.txt" -b -xnfo run_1_minus_run_1_out.xmdf
    said "/run_1_minus_run_1/Maximums/Water Level" "/run_1_minus_run_1/Minimums/Water Level" "   Number of times: 3" "   Largest value: 0"
    rm run_1_minus_run_1_out.xmdf
    row 3 "run_1_minus_run_1_h_out_h.dat" -b -dat -tAll -typeh -dif run_1_h.dat run_1.xmdf
    said "Warning - Datasets without a partner in run_1_h.dat are left out: /run_1/Minimums/Water Level, /run_1/Maximums/Water Level"
    row 3 "run_1_h_minus_run_1_out_h.dat" -b -dat -tAll -typeh -dif run_1.xmdf run_1_h.dat
    row 1 "" -b -xmdf -max -typeh -out RUN_1 run_1.xmdf
    said "ERROR - RUN_1.xmdf is read by this run, -out has to name another file."
    ln -s run_1.xmdf link.xmdf
    row 1 "" -b -xmdf -max -typeh -out link run_1.xmdf

    # What cannot be written ends in the ERROR, without a crash when the library is left.
    if [ -z "$on_windows" ] && unshare -rm true 2>/dev/null; then
        mkdir small
        for size in 8 60; do
            command_line="VORANT_to_GIS -xmdf, on a disk of $size kB"
            start
            PROGRAM=$PROGRAM SIZE=$size unshare -rm sh -c 'mount -t tmpfs -o size="$SIZE"k tmpfs small &&
                "$PROGRAM" -b -xmdf -tAll -typeAll -out small/full run_1.xmdf; status=$?
                [ -z "$(ls -A small)" ] || echo "left behind: $(ls -A small)"; exit $status' </dev/null >../console.txt 2>&1
            finished_with 1 $?
            said "ERROR - Could not write small/full.xmdf. The file is incomplete." "No space left on device"
            did_not_say "left behind"
        done
    else
        echo "No file systems of one's own: the full disk is left out for .xmdf."
    fi
fi

# Refusals.
row 1 "" -b -dat -max -out run_1_h run_1_h.dat
said "ERROR - run_1_h.dat is read by this run, -out has to name another file."
row 1 "" -b -xmdf run_1.2dm
said "ERROR - A mesh alone holds no results to write into a .xmdf file."
row 2 "" -b -xnfo -asc -grid400 run_1.2dm
said "ERROR - More than one output format specified."
for name in dat:mine.dat ensight:mine.case ensight:mine.geo; do
    ln -s /dev/full "${name#*:}"
    run 1 -b "-${name%:*}" -max -out mine run_1_h.dat
    said "ERROR"
    rm -f mine.*
    outputs=()
done
long=$(printf 'n%.0s' {1..200})
row 0 "$long.dat" -b -dat -max -out "$long" run_1_h.dat

# Some of the times: the files of a run over all of them, under the same names, in a folder of their own.
make_model -cells 6 -times 7 -xmdf many
some="-b -into some -from0.2 -until0.5 -nth2"
same() { local file; for file in "${outputs[@]}"; do check "$file differs" cmp -s "$file" "../whole/${file##*/}"; done; }
run 0 -b -into ../whole -flt -grid400 -tAll many_d.dat
row 0 "$(echo some/many_d_t000.{20,40}_g400.{flt,hdr})" $some -flt -grid400 many_d.dat
said "Converting 2 of 7 output times."
did_not_say "Processing all"
same
[ -z "$hdf5" ] || row 0 "$(echo some/many_d_t000.{20,40}_g400.{flt,hdr})" $some -flt -grid400 -typed many.xmdf
same
run 0 -b -into ../whole -shp -vector -tAll many_V.dat
row 0 "$(echo some/many_V_t000.{20,40}.{shp,shx,dbf,cpg})" $some -shp -vector many_V.dat
same
printf 'VERSION 300\nCOLUMNS 1\n Name Char(8)\nDATA\n\nPLINE 2\n300500 6200600\n307000 6207000\n' >line.mif
echo '"across"' >line.mid
run 0 -b -into ../whole -lp line.mif -tAll many_h.dat
row 0 "some/many_h_across.csv" $some -lp line.mif many_h.dat
check "the profile holds other times" cmp -s some/many_h_across.csv <(cut -d, -f 1-5,8,10,14- ../whole/many_h_across.csv)
printf 'VERSION 300\nCOLUMNS 1\n Name Char(8)\nDATA\n\nPOINT 304100 6204200\nPOINT 302500 6202700\n' >marks.mif
printf '"a"\n"b"\n' >marks.mid
run 0 -b -into ../whole -cp marks.mif -tAll many_h.dat
row 0 "some/many_h_cp.csv $(echo some/many_h_t000.{20,40}_cp.{mif,mid})" $some -cp marks.mif many_h.dat
check "the points hold other times" cmp -s some/many_h_cp.csv <(grep -E '^Label|,0\.[24]0,' ../whole/many_h_cp.csv)
# 0.199 h in place of 0.1, outside by more than a tenth of the smallest step: it is not taken, and the names are as long as for all times
cp many_d.dat odd_d.dat
printf '\250\306\113\076' | dd of=odd_d.dat bs=1 seek=$((header + 5 + ($(stat -c %s many_d.dat) - header - 4) / 7)) conv=notrunc status=none
row 0 "$(echo some/odd_d_t000.{200,400}_g400.{flt,hdr})" $some -flt -grid400 -2dm many.2dm odd_d.dat
check "another time is converted" cmp -s some/odd_d_t000.400_g400.flt ../whole/many_d_t000.40_g400.flt
# Stored extremes do not go along; what a -dif is taken from offers all its times.
row 0 "many_d_out_d.dat" -b -dat -sec -from720 -until1800 -nth2 many_d.dat
cp many_d_out_d.dat ../some_d.dat
cp ../some_d.dat many_some.dat
run 0 -b -into some -dat -tAll -out back many_some.dat
check "a .dat holds other times than those taken" cmp -s some/back.dat ../some_d.dat
row 0 "$(echo many_some_minus_many_d_t000.40_g400{,_class}.asc)" -b -asc -grid400 -nth1 -from0.4 -dif many_d.dat many_some.dat
value_at many_some_minus_many_d_t000.40_g400.asc 304000 6204000 0 0
rm many_some.dat
refused_subset() { row 1 "" -b -flt -grid400 "$@"; }
refused_subset -from0.61 many_d.dat
said "ERROR - -from, -until and -nth leave no output time of many_d.dat, which has times from 0. to 0.6 hours."
[ -z "$hdf5" ] || refused_subset -from0 -path/many/Maximums/Depth many.xmdf
row 0 "new/many_g400.flt new/many_g400.hdr" -b -flt -grid400 -nth2 -into new many.2dm
said "WARNING - A mesh alone has no output times, -from, -until and -nth ignored."
row 0 "new/deep/mine.asc" -b -asc -grid400 -out deep/mine -into new/ many.2dm
row 1 "" -b -asc -grid400 -into many.2dm many.2dm
said "ERROR - many.2dm (-into) is a file, not a folder."
[ ! -d /proc/self ] || row 1 "" -b -asc -grid400 -into /proc many.2dm
did_not_say "Reading"

# Listings need no mesh.
mkdir alone
cp run_1_h.dat alone/
row 0 "alone/run_1_h_dat_info.txt" -b -xnfo alone/run_1_h.dat
said "   Smallest value: -" "   Number of times: 4" "   Last time: maximums (stored as 99999)" "      2  0.1 h (stored as 0.1)"
row 0 "run_1_2dm_info.txt" -b -xnfo run_1.2dm
said "   Area: 64000000.00 (square map units)" "      West Bank" "   Nodes: 121"
if [ -n "$hdf5" ]; then
    cp run_1.xmdf alone/
    row 0 "alone/run_1_xmdf_info.txt" -b -xnfo alone/run_1.xmdf
    said "XMDF Version: 2.1" "1 S /run_1/Maximums/Depth" "   Unit of time: Hours" "   Smallest value: -"
    row 0 "alone/run_1_xmdf_info.txt" -b -xnfo -verbose alone/run_1.xmdf
    did_not_say "Smallest value: -"
    row 1 "" -b -asc -grid400 -typeNothing -max run_1.xmdf
    said "-xnfo lists the datasets of the file."
fi

# EnSight Gold: names without blanks, one file a dataset and time, extremes without a TIME section.
row 0 "my_run.case my_run.geo my_run.Depth_000000.scl my_run.Depth_000001.scl my_run.Depth_000002.scl" -b -ensight -tAll -out "my run" run_1_d.dat
row 0 "run_1.case run_1.geo" -b -ensight run_1.2dm
check "a mesh alone has variables" not grep -q VARIABLE run_1.case
row 0 "run_1_V.case run_1_V.geo run_1_V.Vector_Velocity_Max.vec" -b -ensight -max run_1_V.dat
check "maximums have times" not grep -q TIME run_1_V.case
run 0 -b -ensight -tAll run_1_V.dat
said "WARNING - Stored maximums and the like have no output time"
for python in python3 /usr/bin/python3; do
    "$python" -c 'import vtkmodules.vtkIOEnSight' 2>/dev/null && break
    python=
done
if [ -n "$python" ]; then
    # The reader's values against those of the .dat: node 61 is the middle one, 3 times, the last maximums left out.
    "$python" - run_1_V.case <<'END' >../vtk.txt
import sys
from vtkmodules.vtkIOEnSight import vtkGenericEnSightReader
reader = vtkGenericEnSightReader()
reader.SetCaseFileName(sys.argv[1])
reader.ReadAllVariablesOn()
reader.UpdateInformation()
times = reader.GetTimeSets().GetItem(0)
reader.SetTimeValue(times.GetValue(2))
reader.Update()
block = reader.GetOutput().GetBlock(0)
vector = block.GetPointData().GetArray("Vector_Velocity").GetTuple(60)
print(block.GetNumberOfPoints(), block.GetNumberOfCells(), *("%.1f" % times.GetValue(i) for i in range(times.GetNumberOfTuples())))
print(*("%.6g" % value for value in vector), "%.1f %.1f" % block.GetPoint(60)[:2])
END
    x=$(od -An -tf4 -j $((108 + 3 * (9 + cells + 8 * 121) - 8 * 61)) -N 8 run_1_V.dat | awk '{ printf "%.6g %.6g", $1, $2 }')
    check "ParaView's reader finds $(head -n 1 ../vtk.txt)" [ "$(head -n 1 ../vtk.txt)" = "121 $cells 0.0 0.1 0.2" ]
    check "ParaView's reader finds $(tail -n 1 ../vtk.txt), the .dat holds $x" [ "$(tail -n 1 ../vtk.txt)" = "$x 0 4000.0 4000.0" ]
else
    echo "No python3-vtk9: the EnSight files are not opened with ParaView's reader."
fi
finish
