#!/usr/bin/env bash
# Profiles and calibration points, through layers that GDAL writes: the exact solution of the example at every station, the names of
# the files, and what happens to layers that cannot be used.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
command -v ogr2ogr >/dev/null || { echo "No ogr2ogr: left out."; exit 77; }

# layer <file> <type>: the rows of standard input, "name|text of the shape", as a layer with a field Name; points have a field Obs too.
layer() {
    { echo "Name,Obs,WKT"; sed 's/|/,/; s/|\(.*\)/,"\1"/'; } >../layer.csv
    printf '"String","Real","WKT"\n' >../layer.csvt
    local fields=Name
    [ "$2" != POINT ] || fields=Name,Obs
    ogr2ogr -f "$([ "${1##*.}" = mif ] && echo "MapInfo File" || echo "ESRI Shapefile")" "$1" ../layer.csv -nlt "$2" -select "$fields"
}
# exact <profile> <column> <quantity> <hours> <tolerance>: a column of a profile against the exact solution, by the rules of basin.awk.
exact() {
    awk -F, -v c="$2" 'NR > 1 && $4 != "C" { print $2, $3, $c == "" ? -99999 : $c }' "$1" >../profile.xyz
    check "$1, column $2 is not the exact solution ($3 at $4 h)" awk -f "$here/basin.awk" -v quantity="$3" -v hours="$4" \
        -v tolerance="$5" -v steps="${6:-}" -v side=8000 -v x0=300000 -v y0=6200000 -v mesh=150 ../profile.xyz
}
line() { check "$1 has no line: $2" grep -qxF -- "$2" "$1"; }

make_model -times 4 -xmdf -rotate 33 -distort 0.2 basin
layer river.shp LINESTRING <<'ROWS'
Long|0|LINESTRING (300100 6200150,307900 6207700)
Bend/1|0|LINESTRING (301000 6204000,304000 6206500,304000 6206500,307000 6202000,302000 6203000)
ROWS
ogr2ogr -f "MapInfo File" river.mif river.shp
layer marks.mif POINT <<'ROWS'
"Bridge, old"|22|POINT (304030 6204000)
Mill|0|POINT (304500 6204450)
Hill|30|POINT (304000 6200700)
ROWS
ogr2ogr -f "ESRI Shapefile" -a_srs EPSG:28356 gauges.shp marks.mif

# 1. A file a line; every station within the water holds the exact level, to the printed digits.
row 0 "basin_h_Long.csv basin_h_Bend_1.csv" -b -lp river.shp -tAll basin_h.dat
for tenth in 0 1 2 3; do
    exact basin_h_Long.csv $((6 + tenth)) h 0.$tenth 0.00006
    exact basin_h_Bend_1.csv $((6 + tenth)) h 0.$tenth 0.00006
done
exact basin_h_Long.csv 10 h 0 0.02 4                     # highest of each node: no plane
check "header" grep -qx "Chainage,X,Y,Type,Elevation,Water_Level_t000.00,.*_t000.30,Water_Level_Max,Label,Offset" basin_h_Long.csv
said "stations at 5 times..."
row 0 "basin_V_t000.10_Long.csv basin_V_t000.10_Bend_1.csv" -b -lp river.shp -lpmd500 -t0.1 basin_V.dat
exact basin_V_t000.10_Long.csv 6 speed 0.1 0.00006
exact basin_V_t000.10_Long.csv 7 direction 0.1 0.001
check "Along is not the component along the line" awk -F, 'NR > 1 && $6 != "" { n++; d = $6 * cos(($7 - atan2(7550, 7800) * 45 / atan2(1, 1)) * atan2(1, 1) / 45) - $8
    if (d > 0.0002 || d < -0.0002) exit wrong = 1 } END { exit wrong || n < 20 }' basin_V_t000.10_Long.csv
check "markers" [ "$(grep -c ',M,' basin_V_t000.10_Long.csv)" -eq 21 ]
row 0 "basin_Long.csv basin_Bend_1.csv" -b -lp river.shp basin.2dm
row 0 "basin_Long.csv basin_Bend_1.csv" -b -lp river.shp -typeAll -max basin.xmdf
check "datasets" grep -q "Elevation,Depth_Max,Water_Level_Max,Magnitude_Max,Angle_Max,Along_Max,Label" basin_Long.csv

# 2. Calibration points: along the profiles, in a copy of their layer, as time series, against what was recorded.
row 0 "basin_h_Long.csv basin_h_Bend_1.csv basin_h_cp.csv $(for t in 00 10 20 30; do echo basin_h_t000.${t}_cp.mif basin_h_t000.${t}_cp.mid; done)" \
    -b -lp river.mif -cp marks.mif -cpsd100 -tAll -typeh basin.xmdf
check "the nearer points are not on the profile" [ "$(grep -c ',C,' basin_h_Long.csv)" -eq 2 ]
said "2 of 3 points have a value." "Calibration: 1 of 3 points have a recorded and a modelled value, 1 stayed dry." "   dry: Hill" \
    "Check - 1 points with 0 in field Obs are taken as not recorded"
check "time series" [ "$(grep -c '^Mill,304500.000,6204450.000,.*,0.[0-3]0,' basin_h_cp.csv)" -eq 4 ]
ogrinfo -al basin_h_t000.30_cp.mif >../layer.txt
check "the layer does not read back" grep -q "Water_Level (Real) = -99999" ../layer.txt
row 0 "basin_V_t000.20_cp.shp basin_V_t000.20_cp.shx basin_V_t000.20_cp.dbf basin_V_t000.20_cp.prj basin_V_t000.20_cp.cpg basin_V_cp.csv basin_V.wor basin_V_input_layers.mif basin_V_input_layers.mid" \
    -b -cp gauges.shp -t0.2 -verbose basin_V.dat
did_not_say "Calibration:"
check "the coordinate system is not that of the layer" cmp -s gauges.prj basin_V_t000.20_cp.prj

# Degrees are told by the mesh: a marker 0.0002 degrees behind an edge is not on it.
make_model -plane -triangles 0 -cells 40 -side 1 -origin 150,-33 plane
echo "P|0|LINESTRING (149.95 -32.95,151.05 -32.95)" | layer across.shp LINESTRING
row 0 "plane_P.csv" -b -lp across.shp -lpmd0.0502 plane.2dm
check "not a row for both ends, 41 edges and 21 markers" [ "$(wc -l <plane_P.csv)" -eq 65 ]
line plane_P.csv "0.05000000,150.00000000,-32.95000000,E,-179.5000,,"
echo "a|1|POINT (150.5 -32.5)" | layer a.shp POINT
run 0 -b -lp across.shp -cp a.shp plane.2dm
said "WARNING - The mesh is in degrees: markers along profiles are every 100. degrees, give -lpmd for another distance." \
    "WARNING - The mesh is in degrees: profiles take calibration points within 100. degrees, give -cpsd for another distance."
run 0 -b -lp across.shp -cpsd1 -lpmd1 -obsx plane.2dm
said "WARNING - Recorded values (-obs) are those of calibration points (-cp), -obs ignored."
did_not_say "mesh is in degrees"

# 3. Layers that cannot be used leave nothing behind.
echo "x|0|LINESTRING (-60 30,-59 30)" | layer degrees.shp LINESTRING
echo "x|0|POINT (-60 30)" | layer far.shp POINT
mv river.mid ../river.mid
head -c 150 river.shp >cut.shp
cp river.shx cut.shx
cp river.dbf cut.dbf
while IFS='|' read -r text arguments; do
    # shellcheck disable=SC2086  # the arguments are words
    row 1 "" -b $arguments
    said "$text"
done <<'ROWS'
ERROR - No profile lies within the mesh; check the projection.|-lp degrees.shp -max basin_h.dat
ERROR - No polylines found in marks.mif|-lp marks.mif -max basin_h.dat
ERROR - No points found in river.shp|-cp river.shp -max basin_h.dat
ERROR - Long profile layer nowhere.shp (-lp) does not exist.|-lp nowhere.shp -max basin_h.dat
ERROR - Long profile layer river.mid (-lp) does not exist.|-lp river.mif -max basin_h.dat
ERROR 04|-lp cut.shp -max basin_h.dat
ERROR - No layer specified after -cp.|-max basin_h.dat -cp
ERROR - Field level (-obs) is not in marks.mif|-cp marks.mif -obslevel -max basin_h.dat
are laid.|-lp river.shp -lpmd0.0001 -max basin_h.dat
must be above zero|-lp river.shp -lpmd0 -max basin_h.dat
ROWS
run 0 -b -cp far.shp -t0.2 -fso basin_h.dat
said "WARNING - No calibration point lies within the mesh; check the projection." "0 of 1 points have a value." \
    "WARNING - Obvert levels not available, -fso has no effect."

# A disk that fills up: no torn profile stands under its name.
(trap '' XFSZ; ulimit -f 4; "$PROGRAM" -b -lp river.shp -lpmd1 -max basin_h.dat >../full.txt 2>&1) && fail=0 || fail=$?
check "a profile that could not be written ends in $fail" [ "$fail" = 1 ]
check "a torn profile is left" [ ! -e basin_h_Max_Long.csv ]

finish
