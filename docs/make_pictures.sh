#!/usr/bin/env bash
# Makes the pictures of docs/ from the bundled example, with GDAL's command-line tools: a water-level grid, arrows over the depths of the cells,
# a profile, and what a scheme changes.
#   docs/make_pictures.sh      after ./demo.sh; writes docs/*.png
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh build tests
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=OFF >/dev/null
program=$PWD/build/release/VORANT_to_GIS
docs=$PWD/docs
work=build/pictures
rm -rf "$work"
mkdir -p "$work"
examples=$PWD/build/release/examples
"$examples/make_parabolic_basin" -cells 40 -cell-depths "$work/basin"
cd "$work"

TIME=-t0.3
PIXELS="-ts 640 640"
EXTENT="-te 300000 6200000 308000 6208000"

# Colours of a quantity: value and red, green, blue; dry ground (no value) is light.
cat >level.txt <<COLOURS
nv 238 235 226
-1 8 29 88
0 34 94 168
1 65 182 196
2 199 233 180
COLOURS
cat >depth.txt <<COLOURS
nv 238 235 226
0 222 235 247
1 158 202 225
3 66 146 198
10 8 48 107
COLOURS

"$program" -b -asc -grid20 $TIME basin_h.dat >log.txt
"$program" -b -shp -region -cc $TIME basin_cells_d.dat >>log.txt
"$program" -b -shp -vector -grid320 -sf0.6 -ttf.08 $TIME basin_V.dat >>log.txt
level=basin_h_t000.30_g020.asc
regions=basin_cells_d_t000.30
arrows=basin_V_t000.30_g320

# Colour scale that spans what the grid holds, from its own statistics.
stretch() {
    local low high
    low=$(gdalinfo -stats "$1" | sed -n 's/.*STATISTICS_MINIMUM=//p')
    high=$(gdalinfo -stats "$1" | sed -n 's/.*STATISTICS_MAXIMUM=//p')
    awk -v low="$low" -v high="$high" '$1 == "nv" { print; next } { n++; line[n] = $2 " " $3 " " $4 }
        END { for (i = 1; i <= n; i++) print low + (high - low) * (i - 1) / (n - 1), line[i] }' "$2"
}
stretch "$level" level.txt >level_scale.txt
gdaldem color-relief -q "$level" level_scale.txt level.tif
gdalwarp -q -overwrite $EXTENT $PIXELS level.tif level_map.tif

gdal_rasterize -q -a Depth -init -99999 -a_nodata -99999 -ot Float32 $EXTENT $PIXELS -l "$regions" "$regions.shp" depth_values.tif
stretch depth_values.tif depth.txt >depth_scale.txt
gdaldem color-relief -q depth_values.tif depth_scale.txt depth.tif
# The outlines of the cells, thin and dark.
ogr2ogr -q -nlt MULTILINESTRING outlines.shp "$regions.shp"
gdal_rasterize -q -b 1 -b 2 -b 3 -burn 120 -burn 150 -burn 180 -l outlines outlines.shp depth.tif

cp depth.tif arrows.tif
gdal_rasterize -q -at -b 1 -b 2 -b 3 -burn 190 -burn 30 -burn 30 -l "$arrows" "$arrows.shp" arrows.tif

# A profile: its .csv as shapes of a chart, drawn at twice the size, so that the edges come out smooth.
printf 'Version 300\nDelimiter ","\nColumns 1\n  Name Char(40)\nData\nPline 3\n300900 6202900\n304000 6204000\n307300 6205000\n' >river.mif
echo '"River"' >river.mid
"$program" -b -lp river.mif -tAll basin_h.dat >>log.txt
awk -f "$docs/profile_chart.awk" -v width=1800 -v height=840 -v columns="Water_Level_t000.00|12,74,138|0 h;Water_Level_t000.20|61,143,198|0.2 h;\
Water_Level_t000.40|90,190,170|0.4 h;Water_Level_Max|192,57,43|maximum" basin_h_River.csv >chart.csv
ogr2ogr -q chart.shp chart.csv -oo AUTODETECT_TYPE=YES
for band in R G B; do
    gdal_rasterize -q -a "$band" -init 255 -ot Byte -te 0 0 1800 840 -ts 1800 840 -l chart chart.shp "chart_$band.tif"
done
gdalbuildvrt -q -separate chart.vrt chart_R.tif chart_G.tif chart_B.tif
gdal_translate -q -r average -outsize 900 420 chart.vrt chart.tif

# What a scheme changes: the same flood on ground that was moved north by 300 m, shallower red and deeper blue.
"$examples/make_parabolic_basin" -cells 40 -origin 300000,6200300 scheme >>log.txt
"$program" -b -flt -grid20 -max -dif basin_d.dat scheme_d.dat >>log.txt
printf 'nv 238 235 226\n-0.5 178 24 43\n0 247 247 247\n0.5 33 102 172\n' >change.txt
gdaldem color-relief -q scheme_d_minus_basin_d_Max_g020.flt change.txt change.tif
gdalwarp -q -overwrite -te 300000 6200400 308000 6208000 -ts 640 608 change.tif change_map.tif

for picture in level_map:water_level arrows:arrows chart:profile change_map:difference; do
    gdal_translate -q -of PNG "${picture%%:*}.tif" "$docs/${picture##*:}.png"
    rm -f "$docs/${picture##*:}.png.aux.xml"
    echo "wrote docs/${picture##*:}.png"
done
