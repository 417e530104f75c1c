#!/usr/bin/env bash
# GeoTIFFs, GeoPackages, FlatGeobufs and coordinate systems, from the command line to what GDAL's tools read; and the same command
# lines where there is no GDAL module.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
command -v ogr2ogr >/dev/null || { echo "No ogr2ogr: left out."; exit 77; }
module=$(dirname "$PROGRAM")/libvorant_gdal.so
make_model -times 3 -cells 10 -xmdf -side 8000 basin

refused() {
    local status=$1 text=$2
    shift 2
    row "$status" "" "$@"
    said "$text"
}

# 1. Without the module: every switch that needs it says so, before anything is written; a .prj file and our own templates need none.
mkdir ../alone
ln "$PROGRAM" ../alone/program 2>/dev/null || cp "$PROGRAM" ../alone/program
with=$PROGRAM
PROGRAM=$(cd .. && pwd)/alone/program
none="ERROR - No GDAL module found" where="it (Debian: package vorant-to-gis-gdal)"
[ -z "$on_windows" ] || none="ERROR - The Windows build has no GDAL module" where="the Linux build"
while read -r switch arguments; do
    # shellcheck disable=SC2086  # the arguments are words
    refused 1 "$none; $switch needs $where." -b $arguments
done <<'ROWS'
-gtif -gtif -grid400 -max basin_h.dat
-gpkg -gpkg -vector -grid400 -max basin_V.dat
-fgb -fgb -grid400 -max basin_h.dat
-crs -asc -grid400 -max -crs EPSG:28355 basin_h.dat
-like -asc -max -like dem.tif basin_h.dat
-gpkg -lp basin.mif -gpkg -max basin_h.dat
ROWS
echo 'PROJCS["somewhere",UNIT["metre",1]]' >some.prj
row 0 "basin_g400.asc basin_g400.prj"      -b -asc -grid400 -crs some.prj basin.2dm
check "the .prj is not that of -crs" cmp -s some.prj basin_g400.prj
refused 1 "ERROR - -crs is given twice and different: some.prj and EPSG:28355." -b -asc -grid400 -crs some.prj -crs EPSG:28355 basin.2dm
refused 1 "needs ${where%% *}"             -b -mif -grid400 -max -crs some.prj basin_h.dat
PROGRAM=$with
if [ ! -f "$module" ]; then
    echo "This build has no GDAL module: what it writes is not tested."
    finish
fi
mkdir -p ../tree/bin ../tree/lib/vorant-to-gis
ln "$PROGRAM" ../tree/bin/program 2>/dev/null || cp "$PROGRAM" ../tree/bin/program
cp "$module" ../tree/lib/vorant-to-gis/
PROGRAM=$(cd .. && pwd)/tree/bin/program
row 0 "basin_h_Max_g400.tif"               -b -gtif -grid400 -max basin_h.dat
PROGRAM=$with

# 2. A GeoTIFF holds what the .flt holds, says what it is, and depends on nothing but what shapes it.
row 0 "basin_h_t000.10_g200.flt basin_h_t000.10_g200.hdr" -b -flt -grid200 -t0.1 basin_h.dat
keep basin_h_t000.10_g200.flt basin_h_t000.10_g200.hdr
row 0 "basin_h_t000.10_g200.tif"           -b -gtif -grid200 -t0.1 -crs EPSG:28355 basin_h.dat
same_values basin_h_t000.10_g200.tif ../kept/basin_h_t000.10_g200.flt 0
info basin_h_t000.10_g200.tif "LAYOUT=COG" "GDA94 / MGA zone 55" "NoData Value=-99999" "Block=512x512 Type=Float32" "COMPRESSION=DEFLATE" \
    "Description = Water Level, m, 0.1 h" "Unit Type: m" "INPUT=basin_h.dat" "SWITCHES=-gtif -grid200 -crs EPSG:28355" "TIME=0.1 h" \
    "TIFFTAG_SOFTWARE=VORANT_to_GIS " "STATISTICS_MAXIMUM="
keep basin_h_t000.10_g200.tif
mkdir deep
cp basin.2dm basin_h.dat deep
run 0 -gtif -verbose -grid200 -tAll -crs EPSG:28355 deep/basin_h.dat
check "a run of all times does not give the same bytes" cmp -s deep/basin_h_t000.10_g200.tif ../kept/basin_h_t000.10_g200.tif
row 0 "basin_V_t000.10_Vdir_g400.tif"      -b -gtif -grid400 -t0.1 -vdir -compass basin_V.dat
info basin_V_t000.10_Vdir_g400.tif "Description = Vector Velocity bearing, degrees, 0.1 h"
row 0 "basin_g400.tif"                     -b -gtif -grid400 basin.2dm
info basin_g400.tif "Description = Bathymetry, m"
did_not_say "WARNING"
row 0 "basin_h_g400.tif"                   -b -gtif -multiband -grid400 -tAll basin_h.dat
info basin_h_g400.tif "INTERLEAVE=BAND" "Band 3 Block" "Description = Water Level, m, 0.2 h" "Description = Max"
gdal_translate -q -b 2 basin_h_g400.tif ../band.tif
row 0 "mine.tif"                           -b -gtif -sec -t360 -grid400 -out mine.tif basin_h.dat
info mine.tif "Description = Water Level, m, 360 s"
same_values mine.tif ../band.tif 0
row 0 "mine.tif"                           -b -gtif -multiband -tAll -grid400 -out mine basin_h.dat
row 0 "basin_h_t000.10_g400.tif"           -b -gtif -t0.1 -grid400 -co compress=lzw -co BLOCKSIZE=256 basin_h.dat
info basin_h_t000.10_g400.tif "COMPRESSION=LZW" "Block=256x256"
row 0 "basin_h_g400.tif"                   -b -gtif -multiband -from0.1 -grid400 basin_h.dat
check "not the two later times" [ "$(gdalinfo basin_h_g400.tif | grep -o 'Description = .*' | tr '\n' ';')" = "Description = Water Level, m, 0.1 h;Description = Water Level, m, 0.2 h;" ]
gdal_translate -q -b 1 basin_h_g400.tif ../first_band.tif
same_values ../first_band.tif ../band.tif 0
refused 1 "ERROR - -multiband needs -gtif and -tAll."      -b -gtif -multiband -grid400 -t0.1 basin_h.dat
refused 1 "ERROR - -multiband needs -gtif and -tAll."      -b -asc -multiband -grid400 -tAll basin_h.dat
refused 1 "COG has no option COLOUR; the valid ones are "  -b -gtif -co COLOUR=red -grid400 basin.2dm
refused 1 "ERROR - -co needs a format that takes driver options: -gtif, -gpkg, -fgb." -b -asc -co COMPRESS=LZW -grid400 basin.2dm
refused 1 "The switch for a GeoTIFF is -gtif."             -b -tif -grid400 basin.2dm
refused 1 "ERROR - Invalid flag combination"               -b -gtif -region basin.2dm
refused 2 "ERROR - More than one output format specified." -b -gtif -gpkg -grid400 basin.2dm
refused 2 "ERROR - More than one output format specified." -b -fgb -cp some.mif basin_h.dat

# 3. Coordinate systems: of every format, before the work, and compared as systems.
row 0 "basin_g400.asc basin_g400.prj"      -b -asc -grid400 -crs epsg:28355 -crs EPSG:28355 basin.2dm
check "no ESRI text" grep -q '^PROJCS\["GDA_1994_MGA_Zone_55",GEOGCS\["GCS_GDA_1994"' basin_g400.prj
cp basin_g400.prj Header.prj
row 0 "basin_g400.tif"                     -b -gtif -grid400 basin.2dm
info basin_g400.tif "GDA94 / MGA zone 55"
row 0 "basin_g400.asc basin_g400.prj"      -b -asc -grid400 -crs EPSG:28355 basin.2dm
did_not_say "WARNING"
row 0 "basin_g400.asc basin_g400.prj"      -b -asc -grid400 -crs EPSG:28356 basin.2dm
said "WARNING - The coordinate system of Header.prj is not that of -crs, which is used."
row 0 "basin_g400.asc basin_g400.prj"      -b -asc -grid400 -crs Header.prj basin.2dm
rm Header.prj
row 0 "basin.mif basin.mid"                -b -mif -region -crs EPSG:28355 basin.2dm
check "CoordSys" grep -q '^CoordSys Earth Projection 8, 116, "m", 147, 0, 0.9996, 500000, 10000000' basin.mif
did_not_say "Header"
no_form="ERROR - The coordinate system has no exact .mif form, give a Header.mif."
refused 1 "$no_form"                                       -b -mif -region -crs EPSG:3035 basin.2dm
refused 1 "$no_form"                                       -b -mif -region -crs EPSG:3413 basin.2dm
refused 1 "ERROR - -crs EPSG:1: "                          -b -asc -grid400 -crs EPSG:1 basin.2dm
refused 1 "ERROR - -crs PROJCS[\"half: "                   -b -asc -grid400 -crs 'PROJCS["half' basin.2dm
refused 1 "ERROR - -crs is given twice and different"      -b -asc -grid400 -crs EPSG:28355 -crs EPSG:28356 basin.2dm
refused 1 "ERROR - No coordinate system specified after"   -b -asc -grid400 basin.2dm -crs
export PROJ_DATA=/nowhere PROJ_LIB=/nowhere
refused 1 "the data of the PROJ library (proj.db) were not found" -b -asc -grid400 -crs EPSG:28355 basin.2dm
unset PROJ_DATA PROJ_LIB
row 0 "basin_g400.asc basin_g400.prj"      -b -asc -grid400 -crs EPSG:32633 basin.2dm
said "WARNING - The mesh lies outside the area that EPSG:32633 (WGS 84 / UTM zone 33N) is meant for."

# The same mesh near the origin and moved to where the system is meant for.
make_model -cells 4 -times 1 -side 800 -origin 0,0 near
make_model -cells 4 -times 1 -side 800 -origin 500000,4200000 moved
row 0 "near_g400.tif"                      -b -gtif -grid400 -crs EPSG:32610 near.2dm
said "WARNING - The mesh lies outside the area that EPSG:32610 (WGS 84 / UTM zone 10N) is meant for."
row 0 "moved_g400.tif"                     -b -gtif -grid400 -crs EPSG:32610 moved.2dm
did_not_say "WARNING"

# 4. Any raster as a template: the same place to the last bit; layers line up with it too.
gdal_translate -q -of GTiff -a_srs EPSG:28355 -a_ullr 300100.1 6207000.7 304300.1 6203500.7 -outsize 42 35 ../kept/basin_h_t000.10_g200.flt dem.tif
place() { gdalinfo -json "$1" | tr -d ' \n' | grep -o '"size":[^]]*\]\|"geoTransform":[^]]*\]'; }
row 0 "basin_h_Max_g100.tif"               -b -gtif -max -like dem.tif basin_h.dat
check "not the place of dem.tif" [ "$(place basin_h_Max_g100.tif)" = "$(place dem.tif)" ]
info basin_h_Max_g100.tif "GDA94 / MGA zone 55"
row 0 "basin_h_Max_g100.asc basin_h_Max_g100.prj" -b -asc -max -like dem.tif basin_h.dat
for code in 28355 28356; do
    gdalsrsinfo -o wkt_esri --single-line "EPSG:$code" >Header.prj
    run 0 -b -asc -max -like dem.tif basin_h.dat
    check "a WARNING of Header.prj with $code" [ "$(grep -c "WARNING - The coordinate system of dem.tif is not that of the projection file, which is used." ../console.txt)" = "$((code - 28355))" ]
done
rm Header.prj
row 0 "basin_h_Max_g100.shp basin_h_Max_g100.shx basin_h_Max_g100.dbf basin_h_Max_g100.prj basin_h_Max_g100.cpg" -b -shp -grid -max -like dem.tif basin_h.dat
did_not_say "WARNING"
check "points are not on the template's centres" [ "$(ogrinfo -al basin_h_Max_g100.shp | grep -c 'POINT ([0-9]*50\.1 [0-9]*50\.7)')" -gt 300 ]
row 0 "basin_h_g100.gpkg"                  -b -gpkg -grid25 -max -like dem.tif basin_h.dat
said "WARNING - Grid spacing is taken from the template grid (-like), -grid ignored."
row 0 "dem_2.tif"                          -b -gtif -max -like dem.tif -out dem basin_h.dat
head -c 100 dem.tif >torn.tif
refused 1 "ERROR - Could not take over the grid of torn.tif" -b -gtif -max -like torn.tif basin_h.dat
gdal_translate -q -of VRT -a_ullr 0 0 84 175 dem.tif up.vrt
refused 1 "its geotransform is 0, 2, 0, 0, 0, 5"           -b -gtif -max -like up.vrt basin_h.dat

# 5. A GeoPackage: a layer a dataset, all times in it, the values of the shapefile.
sql() { ogr2ogr -f CSV /vsistdout/ "$1" -dialect sqlite -sql "$2" 2>&1 | tr -d '\r"' | tail -n +2; }
row 0 "basin_V_t000.10.shp basin_V_t000.10.shx basin_V_t000.10.dbf basin_V_t000.10.cpg basin_V_t000.10.prj" -b -shp -grid400 -t0.1 -sgs -crs EPSG:28355 basin_V.dat
for extension in shp shx dbf prj; do cp "basin_V_t000.10.$extension" "../kept/basin_V.$extension"; done
row 0 "basin_V.gpkg"                       -b -gpkg -grid400 -tAll -sgs -epoch2020-12-31T23:54 -crs EPSG:28355 basin_V.dat
check "values differ from those of the shapefile" diff -q \
    <(sql ../kept/basin_V.shp "SELECT ST_X(geometry), ST_Y(geometry), Grid_Ref, Magnitude, Angle, X_component, Y_component, Bearing FROM basin_V") \
    <(sql basin_V.gpkg "SELECT ST_X(geom), ST_Y(geom), Grid_Ref, Magnitude, Angle, X_component, Y_component, Bearing FROM basin_V WHERE Time = 0.1")
check "times" diff <(sql basin_V.gpkg "SELECT DISTINCT Time, DateTime FROM basin_V ORDER BY fid") - <<'END'
0,2020/12/31 23:54:00+00
0.1,2021/01/01 00:00:00+00
0.2,2021/01/01 00:06:00+00
,
END
ogrinfo -so basin_V.gpkg basin_V >../info.txt 2>&1
check "ogrinfo warns: $(grep -i -m1 warning ../info.txt)" not grep -qi warning ../info.txt
check "no spatial index" [ "$(sql basin_V.gpkg "SELECT HasSpatialIndex('basin_V', 'geom')")" = 1 ]
keep basin_V.gpkg
row 0 "basin_V.gpkg"                       -b -gpkg -grid400 -tAll -sgs -epoch2020-12-31T23:54 -crs EPSG:28355 basin_V.dat
check "equal runs do not give equal bytes" cmp -s basin_V.gpkg ../kept/basin_V.gpkg
row 0 "mine.gpkg"                          -b -gpkg -vector -grid400 -tAll -out mine basin_V.dat
check "arrows" [ "$(sql mine.gpkg "SELECT count(*) > 100, sum(NOT ST_IsValid(geom)) FROM basin_V_g400")" = 1,0 ]
check "srs_id" [ "$(ogr2ogr -f CSV /vsistdout/ mine.gpkg -sql "SELECT srs_id FROM gpkg_contents" | tail -n 1 | tr -d '\r"')" = -1 ]
row 0 "basin_g400.gpkg"                    -b -gpkg -grid400 -typeAll -max basin.xmdf
check "layers" [ "$(ogrinfo -q basin_g400.gpkg | sed 's/^[0-9]*: \([^ ]*\) .*/\1/' | sort | tr '\n' ' ')" = "basin_d_Max_g400 basin_h_Max_g400 basin_v_Max_g400 " ]
row 0 "basin_d_g400.fgb basin_h_g400.fgb basin_v_g400.fgb" -b -fgb -grid400 -typeAll -tAll basin.xmdf
check "order and times of the .fgb" [ "$(sql basin_h_g400.fgb "SELECT group_concat(DISTINCT Time) FROM basin_h_g400")" = "0.0,0.1,0.2" ]
for format in gpkg fgb; do
    run 0 -b -$format -grid400 -tAll -out whole basin_V.dat
    keep whole.$format
    row 0 "basin_V_g400.$format"           -b -$format -grid400 -nth2 basin_V.dat
    values="SELECT Grid_Ref, Elevation, Magnitude, Angle, Time FROM basin_V_g400 WHERE Time"
    check "every second time" diff -q <(sql ../kept/whole.$format "$values IN (0, 0.2)") <(sql basin_V_g400.$format "$values OR 1")
    check "times of the subset" [ "$(sql basin_V_g400.$format "SELECT group_concat(DISTINCT Time) FROM basin_V_g400")" = "0.0,0.2" ]
done
long="it's \"the\" .dam $(printf 'x%.0s' {1..180})"
cp basin_h.dat "$long.dat"
run 0 -b -gpkg -grid400 -max -2dm basin.2dm "$long.dat"
check "the layer's name" grep -qF "$long" <(ogrinfo -q "${long}_g400.gpkg")
rm "$long.dat"
touch basin_h_g400.gpkg-wal
refused 1 "ERROR - basin_h_g400.gpkg is open in another program, as basin_h_g400.gpkg-wal shows" -b -gpkg -grid400 -max basin_h.dat
rm basin_h_g400.gpkg-wal
refused 1 "ERROR reading data"                             -b -gpkg -grid400 -tAll -epoch2021-02-29 basin_h.dat

# 6. Layers that GDAL reads, and what is sampled along them.
printf 'Name,Obs,WKT\nRiver,,"LINESTRING (300100 6200150,307900 6207700)"\n' >line.csv
printf 'Name,Obs,WKT\nBridge,22.5,"POINT (304030 6204000)"\nHill,,"POINT (304000 6200700)"\n' >marks.csv
ogr2ogr -f GPKG in.gpkg line.csv -nln river -a_srs EPSG:28355
ogr2ogr -f GPKG -update in.gpkg marks.csv -nln gauges -a_srs EPSG:28355 -oo AUTODETECT_TYPE=YES
ogr2ogr river.shp in.gpkg river
row 0 "basin_h_Max_River.csv"              -b -lp river.shp -max basin_h.dat
keep basin_h_Max_River.csv
row 0 "basin_h_Max_River.csv"              -b -lp in.gpkg:river -max basin_h.dat
check "another profile than from the .shp" cmp -s basin_h_Max_River.csv ../kept/basin_h_Max_River.csv
refused 1 "it holds several layers, and none is named; put :name behind the file for one of river, gauges" -b -lp in.gpkg -max basin_h.dat
refused 1 "ERROR 0305 - Projection of .gpkg file is different" -b -lp in.gpkg:river -max -crs EPSG:28356 basin_h.dat
row 0 "basin_h_cp.csv basin_h_Max_cp.gpkg" -b -cp in.gpkg:gauges -max basin_h.dat
check "the copy" [ "$(sql basin_h_Max_cp.gpkg "SELECT Name, Obs, \"Water Level\" > 0, Difference < 0 FROM basin_h_Max_cp WHERE Name = 'Bridge'")" = Bridge,22.5,1,1 ]
row 0 "basin_h.gpkg basin_h_cp.csv basin_h_River.csv" -b -gpkg -lp in.gpkg:river -cp in.gpkg:gauges -tAll -crs EPSG:28355 basin_h.dat
check "layers of the package" [ "$(ogrinfo -q basin_h.gpkg | cut -d ' ' -f 2 | sort | tr '\n' ' ')" = "basin_h_cp basin_h_lines basin_h_stations " ]
check "points at times" [ "$(sql basin_h.gpkg "SELECT count(*), sum(Time IS NULL), max(Time) FROM basin_h_cp")" = 8,2,0.2 ]
check "stations" diff <(tail -n +2 basin_h_River.csv | cut -d, -f 1,7) <(sql basin_h.gpkg "SELECT Chainage, \"Water_Level_t000.10\" FROM basin_h_stations" | awk -F, '{ printf "%.3f,%s\n", $1, $2 == "" ? "" : sprintf("%.4f", $2) }')

# 7. What cannot be written leaves nothing under its name.
for format in -gtif -gpkg -fgb; do
    start
    command_line="VORANT_to_GIS $format on a full disk"
    (ulimit -f 8; trap '' XFSZ; exec timeout 120 "$PROGRAM" -b $format -grid20 -max basin_h.dat </dev/null >../console.txt 2>&1)
    finished_with 1 $?
    wrote
    said "ERROR - Could not write basin_h"
    refused 1 "ERROR" -b $format -grid400 -max -out /proc/x basin_h.dat
done

# 8. What a library writes needs a file: a pipe, a device and a ring of links are told of before the work, and stay as they are.
needs="is a pipe or a device; this format needs a file."
while read -r format place text; do
    name=out.${format/gtif/tif}
    [ "$place" = pipe ] && mkfifo "$name" || ln -s "$place" "$name"
    grid=-grid400
    [ "$format" != xmdf ] || grid=-verbose
    refused 1 "$text" -b "-$format" $grid -max -out out basin_h.dat
    did_not_say "Writing"
    check "$name is something else" [ "$(stat -c %F "$name")" = "$([ "$place" = pipe ] && echo fifo || echo symbolic link)" ]
    rm "$name"
done <<ROWS
gtif pipe ERROR - out.tif $needs
gtif /dev/null ERROR - out.tif $needs
gpkg pipe ERROR - out.gpkg $needs
fgb /dev/null ERROR - out.fgb $needs
xmdf pipe ERROR - out.xmdf $needs
gpkg out.gpkg ERROR - Could not open out.gpkg: Too many levels of symbolic links
asc out.asc ERROR - Could not open out.asc: Too many levels of symbolic links
ROWS
mkfifo basin_h_Max_g400.tif
refused 1 "ERROR - basin_h_Max_g400.tif $needs" -b -gtif -grid400 -max basin_h.dat
rm basin_h_Max_g400.tif
user=()
[ "$(id -u)" -ne 0 ] || user=(setpriv --reuid 65534 --regid 65534 --clear-groups)
mkdir closed
formats=(gpkg fgb)
if ! "${user[@]}" test -r "$module"; then
    echo "another user cannot reach the module: formats in a closed folder are not tried"
    formats=()
fi
for format in "${formats[@]}"; do
    echo earlier >closed/there.$format
    chmod a+rw closed/there.$format
    chmod a-w closed
    command_line="VORANT_to_GIS -$format -out closed/there"
    ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0" "${user[@]}" "$PROGRAM" -b -$format -grid400 -max -out closed/there basin_h.dat </dev/null >../console.txt 2>&1
    finished_with 1 $?
    said "ERROR - Folder closed takes no new file, and closed/there.$format can only be made anew."
    did_not_say "in place"
    check "there.$format was touched" [ "$(cat closed/there.$format)" = earlier ]
    chmod u+w closed
done

finish
