#!/usr/bin/env bash
# Which files a command line leaves, under which names, and what their headers say.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

make_model -times 3 -cells 20 basin    # quads of 400 m; the western 13 columns
make_model -times 1 -cells 20 single

# Names: base, time, component, cell size.
#   status  files                                              arguments
row 0 "basin_h_t000.20_g200.asc"                               -b -asc -grid200 -t0.2 basin_h.dat
said "Wrote basin_h_t000.20_g200.asc" "1 output"
cp ../console.txt ../first.txt
row 0 "basin_h_t000.20_g200.asc"                               -b -asc -grid200 -t0.2 basin_h.dat
check "two equal runs do not say the same" cmp -s ../first.txt ../console.txt
outputs=()
row 0 ""                                                       -b -asc -grid200 -t0.2 basin_h.dat
said "Check - Replacing basin_h_t000.20_g200.asc."
rm basin_h_t000.20_g200.asc
row 0 "basin_h_t000.20_g200.asc"                               -b -asc -grid200 -t0.2 -cc basin_h.dat
said "WARNING - The values of the .dat file are at nodes, not at cell centres as -cc says." "1 warning"
row 0 "basin_h_t000.20_g012.5.asc"                             /b /ASC /Grid12.5 /T0.2 basin_h.dat
row 0 "basin_h_t000.20_g1000.asc"                              -b "${on_windows:+$'\xc2'}"$'\x96asc' $'\xe2\x80\x93grid1000' -t0.2 basin_h.dat   # en dashes
row 0 "basin_h_t000360_g200.asc"                               -b -asc -grid200 -sec -t360.2 -dttol2 basin_h.dat
row 0 "basin_h_t000.20.asc"                                    -b -asc -grid200 -t0.2 -sgs basin_h.dat
row 0 "basin_h_t000.20_g400.asc"                               -b -asc -t0.2 basin_h.dat                # the usual side of a quad
row 0 "basin_V_t000.20_Vdir_g200.asc"                          -b -asc -grid200 -t0.2 -vdir basin_V.dat
row 0 "mine.asc"                                               -b -asc -grid200 -t0.2 -out mine basin_h.dat
row 0 "mine.flt mine.hdr"                                      -b -flt -grid200 -t0.2 -out mine.FLT basin_h.dat
row 0 "new/deep/mine.asc"                                      -b -asc -grid200 -t0.2 -out new/deep/mine.asc basin_h.dat
row 0 "basin_d_t000.00_g400.asc basin_d_t000.10_g400.asc basin_d_t000.20_g400.asc" -b -asc -grid400 -tAll -out mine basin_d.dat
said "WARNING"
row 0 "basin_d_t000.00_g400.asc basin_d_t000.10_g400.asc basin_d_t000.20_g400.asc" -b -asc -grid400 -tAll -t0.1 basin_d.dat
row 0 "mine.asc"                                               -b -asc -grid400 -tAll -out mine single_d.dat
row 0 "new2/mine.asc"                                          -b -asc -grid400 -tAll -out 'new2\mine' single_d.dat
row 0 "single_d_t000.00_g400.asc"                              -b -asc -grid400 single_d.dat            # one time needs no switch
row 0 "basin_g400.flt basin_g400.hdr"                          -b -flt -grid400 basin.2dm
mkdir -p elsewhere
cp basin_h.dat elsewhere/other.dat
row 0 "elsewhere/other_t000.20_g400.asc"                       -b -asc -grid400 -t0.2 -2dm basin.2dm elsewhere/other.dat
row 0 "elsewhere/other_t000.20_g400.asc"                       -b -asc -grid400 -t0.2 -2dm "$PWD/basin.2dm" "$PWD/elsewhere/other.dat"
cp basin_h.dat basin_run_1_h.dat                               # the mesh is basin.2dm, two underscores back
row 0 "basin_run_1_h_t000.20_g400.asc"                         -b -asc -grid400 -t0.2 basin_run_1_h.dat
rm -r basin_run_1_h.dat elsewhere

# Nothing is overwritten within a run: neither the template grid that was read nor an earlier output.
run 0 -b -asc -grid400 -t0.2 -out template basin_h.dat
keep template.asc
cp ../kept/template.asc template.asc
row 0 "template_2.asc"                                         -b -asc -like template.asc -t0.2 -out template basin_h.dat
said "WARNING"
same_values template_2.asc template.asc 0
rm template.asc

# A template grid gives corner, counts and cell size.
cat >frame.asc <<'END'
NCOLS 7
NROWS 5
XLLCORNER 303000.5
YLLCORNER 6203000.25
CELLSIZE 30
NODATA_value -1
END
for ((line = 0; line < 5; line++)); do echo "1 1 1 1 1 1 1"; done >>frame.asc
row 0 "basin_h_t000.20_g030.flt basin_h_t000.20_g030.hdr"      -b -flt -like frame.asc -t0.2 basin_h.dat
info basin_h_t000.20_g030.flt "Size is 7, 5" "Origin = (303000.500000000000000,6203150.250000000000000)" "Pixel Size = (30.000000000000000,-30.000000000000000)"
row 0 "basin_h_t000.20_g030.asc"                               -b -asc -like frame.asc -grid99 -t0.2 basin_h.dat
said "WARNING"

# A removed part takes its nodes out of the extent: 13 columns of 400 m stay.
row 0 "basin_h_t000.20_g400.asc"                               -b -asc -grid400 -t0.2 -rmp "East Bank" basin_h.dat
info basin_h_t000.20_g400.asc "Size is 14, 21"
row 0 "basin_g400.asc"                                         -b -asc -grid400 -rmp "West Bank" basin.2dm
info basin_g400.asc "Size is 8, 21" "Origin = (305200.000000000000000,6208400.000000000000000)"
row 0 "basin_g400.asc"                                         -b -asc -grid400 -rmp "west bank" basin.2dm    # letter case counts
said 'WARNING - Meshpart "west bank" was not found in .2dm file and cannot be removed.'
info basin_g400.asc "Size is 21, 21"

# Triangles of a second domain beside quads: 1D water level lines, unless told otherwise. Grids hold them either way.
printf '%s\n' "MESH2D    0 0 0 0 0 0 0" "ND 1 0 0 1" "ND 2 9 0 1" "ND 3 9 5 1" "ND 4 0 5 1" "ND 5 20 0 1" "ND 6 29 0 1" "ND 7 20 5 7" \
    "E4Q 1 1 2 3 4 1 0 0" "E3T 2 5 6 7 1 0 0" >two.2dm
row 0 "two.mif two.mid"                                        -b -mif -region two.2dm
said "WARNING - 1 triangles share no edge with a quad and are taken as 1D water level lines; -no1d takes them as 2D cells." "1 objects written."
row 0 "two.mif two.mid"                                        -b -mif -region -no1d two.2dm
said "2 objects written."
did_not_say "1D water level lines"
row 0 "two_g001.asc"                                           -b -asc -grid1 two.2dm
did_not_say "1D water level lines"
value_at two_g001.asc 21.5 2.5 4 0.001
rm two.2dm

# The projection of the folder goes with the grid.
echo 'PROJCS["somewhere",UNIT["metre",1]]' >Header.prj
row 0 "basin_g400.asc basin_g400.prj"                          -b -asc -grid400 basin.2dm
check "the .prj is not the folder's" grep -q '^PROJCS\["somewhere"' basin_g400.prj
rm Header.prj
row 0 "basin_g400.asc"                                         -b -asc -grid400 basin.2dm

# A node without a value takes nothing but the points around it. Node 221 is the middle one; flags and the values before it are skipped.
cp basin_d.dat basin_hole.dat
elements=540
printf '\x00\x00\xc0\x7f' | dd of=basin_hole.dat bs=1 seek=$((100 + 9 + elements + 4 * 220)) conv=notrunc status=none
row 0 "basin_hole_t000.00_g100.asc"                            -b -asc -grid100 -t0 basin_hole.dat
value_at basin_hole_t000.00_g100.asc 304050 6204050 -99999 0
value_at basin_hole_t000.00_g100.asc 303950 6203950 -99999 0
value_at basin_hole_t000.00_g100.asc 304450 6204050 1.3 0.1
rm basin_hole.dat

# The text itself.
row 0 "basin_g2000.asc"                                        -b -asc -grid2000 -prec3.5 basin.2dm
check "-prec3.5 is not five decimals" grep -qE '^( {1,}[0-9]{2}\.[0-9]{5}){4}' basin_g2000.asc

# Prompts: answers from a pipe are taken, their end stops the run, and nothing waits for a key.
if [ -z "$on_windows" ] && command -v script >/dev/null; then
    start
    script -qec "$PROGRAM -asc -b -grid50 basin.2dm" /dev/null </dev/null >../console.txt 2>&1
    finished_with 0 $?
    wrote basin_g050.asc
    check "no percentage moves on a terminal" grep -q $'\r   [0-9]*%' ../console.txt
fi
answered 0 '12,5\n400\nbasin.2dm\n' -asc -grid
wrote basin_g400.asc
said '   "12,5" is not one number above zero, such as 12.5'
printf '!table\n  Type "RASTER"\n  (500,1000) (0,0),\n  (700,800) (100,100)\n' >screen.tab
answered 0 '"screen.tab" \n' -wld
wrote screen.wld
answered 0 '400\n' -asc -grid basin.2dm
wrote basin_g400.asc
said "Press Enter to Close"
answered 0 'nothing.2dm\nbasin.2dm\n' -asc -grid400
wrote basin_g400.asc
mv basin.2dm away.2dm
answered 0 'away.2dm\n' -asc -grid400 -t0.2 basin_h.dat
wrote basin_h_t000.20_g400.asc
said "WARNING - Can't find the mesh of basin_h.dat" "   Looked for basin.2dm, basin_h.2dm in folder $folder"
mv away.2dm basin.2dm
command_line="VORANT_to_GIS -asc -grid400 basin.2dm, standard input closed"
start
timeout 120 "$PROGRAM" -asc -grid400 basin.2dm <&- >../console.txt 2>&1
finished_with 0 $?
wrote basin_g400.asc

finish
