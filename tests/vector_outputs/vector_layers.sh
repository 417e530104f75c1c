#!/usr/bin/env bash
# From the command line to map layers, read back with GDAL's vector tools. Skipped, and said so, where they are not at hand.
if ! command -v ogrinfo >/dev/null || ! command -v ogr2ogr >/dev/null; then
    echo "No ogrinfo or no ogr2ogr: skipped."
    exit 77
fi
. "$(dirname "${BASH_SOURCE[0]}")/../end_to_end/common.sh"
basin_awk="$here/basin.awk"      # of the scripts' own folder

# layer <file> <objects> <texts...>: opens without a word of complaint, holds so many objects, and ogrinfo prints each text of it.
layer() {
    local file=$1 objects=$2 text
    shift 2
    ogrinfo -ro -al "$file" >../layer.txt 2>../complaints.txt
    check "ogrinfo on $file: $(head -n 1 ../complaints.txt)" [ ! -s ../complaints.txt ]
    check "$file holds $(grep -c '^OGRFeature' ../layer.txt) objects, expected $objects" [ "$(grep -c '^OGRFeature' ../layer.txt)" = "$objects" ]
    for text in "$@"; do check "ogrinfo does not say \"$text\" of $file" grep -qF -- "$text" ../layer.txt; done
}

# sql <file> <expression> <expected> <tolerance>: one number over all objects of the layer.
sql() {
    local base=${1##*/} value
    value=$(ogrinfo -ro -q -dialect sqlite -sql "select $2 as answer from \"${base%.*}\"" "$1" 2>&1 | awk '/answer/ { print $NF }')
    check "$2 of $1 is ${value:-nothing}, expected $3" within "${value:-nan}" "$3" "$4"
}
all_valid() { sql "$1" "sum(1 - ST_IsValid(geometry))" 0 0; }

# column <file> <name>: "x y value" of every object of a layer of points.
column() {
    ogr2ogr -f CSV /vsistdout/ "$1" -lco GEOMETRY=AS_XY 2>../complaints.txt | tr -d '"\r' |
        awk -F, -v name="$2" 'NR == 1 { for (i = 1; i <= NF; i++) if ($i == name) at = i } NR > 1 { print $1, $2, $at }'
}
# flood <"x y value"> <quantity> <hours>: within a millimetre of the exact solution.
flood() {
    check "$2 is not the exact solution" awk -f "$basin_awk" -v quantity="$2" -v hours="$3" -v tolerance=0.001 -v side=8000 -v x0=300000 \
        -v y0=6200000 -v mesh=200 "$1"
}

shp_files() { local base; for base in "$@"; do printf '%s ' "$base".{shp,shx,dbf,cpg}; done; }
prj='PROJCS["UTM 55S",GEOGCS["GDA94",DATUM["GDA94",SPHEROID["GRS 1980",6378137,298.257222101]],PRIMEM["Greenwich",0],UNIT["degree",0.01745329251994]],
PROJECTION["Transverse_Mercator"],PARAMETER["central_meridian",147],PARAMETER["scale_factor",0.9996],PARAMETER["false_easting",500000],UNIT["metre",1]]'

# The mesh alone.
make_model -cells 40 -times 3 basin
row 0 "$(shp_files basin)" -b -shp basin.2dm
layer basin.shp 1681 "Geometry: Point" "SMS_ID: Integer (8.0)" "PtType: String (2.0)" "Elevation: Real (10.4)" \
    "Extent: (300000.000000, 6200000.000000) - (308000.000000, 6208000.000000)"
said "1681 objects written."
row 0 "$(shp_files basin)" -b -shp -region basin.2dm
layer basin.shp 2120 "Geometry: Polygon" "MatID: Integer (8.0)"
sql basin.shp "sum(ST_Area(geometry))" 64000000 0.001
all_valid basin.shp
row 0 "basin.mif basin.mid" -b -mif -region -prec5.0 basin.2dm
layer basin.mif 2120 "Elevation: Real (6.0)" "Nonearth"
sql basin.mif "sum(ST_Area(geometry))" 64000000 0.001
all_valid basin.mif
printf '%s\n' "$prj" >Header.prj
row 0 "$(shp_files corners) corners.prj" -b -shp -ptsH -grid5 -out corners basin.2dm
said "WARNING - Grid option not supported when converting .2dm to .mif or .shp"
layer corners.shp "$(grep -c '"H"' <(ogr2ogr -f CSV /vsistdout/ corners.shp -lco STRING_QUOTING=ALWAYS))" 'PROJCRS["UTM 55S"'
sql corners.shp "count(*) between 500 and 1680" 1 0

# Velocity is the same everywhere in the water: every arrow has one length and one area, and -sf scales them.
row 0 "basin_V_t000.10.mif basin_V_t000.10.mid" -b -mif -vector -t0.1 -sf0.5 basin_V.dat
said "Arrow cell size = 200."
layer basin_V_t000.10.mif 685 "Magnitude: Real (10.4)" "Angle (Real) = 126.0000" "Bearing (Real) = 324.0000"
sql basin_V_t000.10.mif "max(abs(ST_Length(geometry) / Magnitude - 194.868330))" 0 0.01      # half a cell, and three times 0.3162 of it
row 0 "$(shp_files basin_V_t000.10) basin_V_t000.10.prj" -b -shp -vector -t0.1 basin_V.dat
sql basin_V_t000.10.shp "max(abs(ST_Area(geometry) / Magnitude / Magnitude - 1480))" 0 0.2   # 0.037 of the length squared
all_valid basin_V_t000.10.shp
row 0 "$(shp_files basin_V_t000.10_Vx_g500) basin_V_t000.10_Vx_g500.prj" -b -shp -vector -vx -sf-300 -ttf-0.1 -grid500 -t0.1 basin_V.dat
sql basin_V_t000.10_Vx_g500.shp "max(abs(ST_Area(geometry) - 13200))" 0 0.001                # 0.7 * 300 * 50 + 0.03 * 300 * 300
sql basin_V_t000.10_Vx_g500.shp "max(abs(X_component + 0.9848))" 0 0.0001
said "Writing gridded .mif or .shp files..."

run 0 -b -mif -vector -ttf1e-9 -t0.1 basin_V.dat
said "WARNING - 685 arrows are too thin for the six decimals of a .mif file and are left out; -shp keeps them"
did_not_say "No wet points"

# Points of a grid, and text.
row 0 "basin_h_t000.10_g100.mif basin_h_t000.10_g100.mid" -b -mif -grid100 -t0.1 -cd0 basin_h.dat
layer basin_h_t000.10_g100.mif "$(wc -l <basin_h_t000.10_g100.mid)" "Grid_Ref: String (16.0)" "Water_Level: Real (10.4)" "Depth: Real (10.4)" "R00041C00027"
flood <(column basin_h_t000.10_g100.mif Water_Level) h 0.1
sql basin_h_t000.10_g100.mif "min(Depth)" 0 0.05
mv basin_h_t000.10_g100.mi[fd] ../ && outputs=()
column ../basin_h_t000.10_g100.mif Depth | sort >../depths.txt
row 0 "basin_d_t000.10_g100.mif basin_d_t000.10_g100.mid" -b -mif -grid100 -t0.1 -cd0 -prec8.6 basin_d.dat
check "the depth beside a level is not the depth" awk '
    NR == FNR { depth[$1 " " $2] = $3; next }
    { n++; d = depth[$1 " " $2] - $3; if (d * d > 1e-6) wrong = 1 }
    END { exit wrong || n < 1000 }' ../depths.txt <(column basin_d_t000.10_g100.mif Depth)
row 0 "basin_d_t000.10_g100.mif basin_d_t000.10_g100.mid" -b -mif -grid100 -t0.1 -cd0.5 basin_d.dat
sql basin_d_t000.10_g100.mif "min(Depth)" 0.5 0.02
row 0 "basin_h_t000.20.txt" -b -txt -t0.2 basin_h.dat
check "the text's header is wrong" [ "$(head -n 1 basin_h_t000.20.txt)" = "SMS_ID,X,Y,Elevation,Water_Level,Depth" ]
flood <(awk -F, 'NR > 1 { print $2, $3, $5 }' basin_h_t000.20.txt) h 0.2

# Names: a file that was read is never written over, and several outputs take no -out.
cp basin.2dm Projection.2dm
printf 'Version 300\nCoordSys Earth Projection 8, 116, "m", 147, 0, 0.9996, 500000, 10000000\nColumns 1\n  a Integer\nData\n' >Projection.mif
row 0 "Projection_2.mif Projection_2.mid" -b -mif Projection.2dm
said "WARNING - Projection.mif has been read or written by this run; writing Projection_2.mif instead."
layer Projection_2.mif 1681 'DATUM["GDA94"' 'natural origin",147'
printf 'CoordSys Earth Projection 1, 104\n' >Projection.mif
run 0 -b -mif -vector -tAll -out all basin_V.dat
said "WARNING - Several outputs are written, output filename (-out) ignored." "WARNING - Arrows are drawn in map units; use a projected mesh."
check "not 8 files: ${outputs[*]}" [ "${#outputs[@]}" -eq 8 ]
rm Header.prj
row 0 "basin_h_t000.20.txt" -b -txt -t0.2 basin_h.dat
check "degrees have not 8 decimals" grep -qE '^[0-9]+,[0-9]+\.[0-9]{8},[0-9]+\.[0-9]{8},-?[0-9]+\.[0-9]{4},' basin_h_t000.20.txt
rm Projection.*
row 1 "" -b -shp -t0.1 basin_h.dat
said "ERROR - mif or shp option only for cell centred .dat files"

if [ -d "${SHARED_DATA:-}/sacramento" ]; then
    cp "$SHARED_DATA"/sacramento/*.2dm "$SHARED_DATA"/sacramento/*.dat "$SHARED_DATA"/reach/reach.2dm .
    chmod u+w -- *
    row 0 "$(shp_files sacramento)" -b -shp -region sacramento.2dm
    layer sacramento.shp 5036                   # every one of its 3,808 triangles is a 2D cell
    all_valid sacramento.shp
    row 0 "reach.mif reach.mid" -b -mif -region reach.2dm
    layer reach.mif 245
    all_valid reach.mif
    row 0 "sacramento_V_t002.00.mif sacramento_V_t002.00.mid" -b -mif -vector -sf0.5 -t2 sacramento_V.dat
    layer sacramento_V_t002.00.mif 1254
    run 0 -b -shp -vector -grid25 -tAll sacramento_V.dat
    layer sacramento_V_t000.00_g025.shp 0 "Geometry: Polygon"
    said "WARNING - No wet points to output at this time."
    all_valid sacramento_V_Max_g025.shp
    row 0 "$(shp_files sacramento)" -b -shp -rmp "Lower Reach" sacramento.2dm
    layer sacramento.shp 2560
fi

# Scalars at nodes come from an .xmdf; a build without HDF5 makes and reads none.
if "$MAKER" -cells 40 -times 3 -xmdf basin >/dev/null 2>&1; then
    row 1 "" -b -mif -vector -typeh -t0.1 basin.xmdf
    said "ERROR - No data processed"
    row 0 "$(shp_files basin_h_t000.10)" -b -shp -typeh -t0.1 -cd0 basin.xmdf
    flood <(column basin_h_t000.10.shp Water_Level) h 0.1
    row 0 "basin_v_t000360.mif basin_v_t000360.mid" -b -mif -typev -t360 -sec -verbose -prec6.2 basin.xmdf
    layer basin_v_t000360.mif 685 "Magnitude: Real (9.2)" "Bearing (Real) = 324.00" "Time (Real) = 360.00" "MatID (Integer) = 1"
fi
finish
