#!/usr/bin/env bash
# From a fresh clone to maps: installs what is missing, builds, makes the example flood and converts it. Everything it writes stands in
# build/ and example_output/.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install_packages.sh build gdal
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=OFF

program=$PWD/build/release/VORANT_to_GIS
out=example_output
rm -rf "$out"
mkdir "$out"
echo
echo "Making the example: a flood that circles a parabolic basin, on a mesh of triangles and quads."
build/release/examples/make_parabolic_basin -xmdf "$out/basin"

# Runs one conversion in the output folder and names the files it left. What the program said is kept in log.txt.
convert() {
    local what=$1 before after
    shift
    echo
    echo "$what"
    echo "  VORANT_to_GIS $*"
    before=$(ls "$out")
    if ! (cd "$out" && "$program" "$@" </dev/null >>log.txt 2>&1); then
        tail -n 20 "$out/log.txt" >&2
        echo "ERROR - The conversion failed; all it said is in $out/log.txt" >&2
        exit 1
    fi
    after=$(ls "$out")
    comm -13 <(echo "$before") <(echo "$after") | grep -v '^log.txt$' | sed "s|^|    wrote $out/|"
}

convert "Highest water level, as an ASCII grid of 20 m cells:" -b -asc -grid20 -max basin_h.dat
convert "Water level after half an hour, as a binary grid:" -b -flt -grid20 -t0.5 basin_h.dat
convert "Depth at every output time, 50 m cells:" -b -asc -grid50 -tAll basin_d.dat
convert "Speed of the water after half an hour:" -b -asc -grid20 -t0.5 basin_V.dat
convert "Highest water level, depth and velocity, out of one .xmdf:" -b -flt -grid50 -typeAll -max basin.xmdf
convert "Velocity arrows after half an hour, as a shapefile:" -b -shp -vector -grid200 -t0.5 basin_V.dat
convert "Highest water level at points 100 m apart, for MapInfo:" -b -mif -grid100 -max basin_h.dat
printf 'Version 300\nDelimiter ","\nColumns 1\n  Name Char(40)\nData\nPline 3\n300900 6202900\n304000 6204000\n307300 6205000\n' >"$out/river.mif"
echo '"River"' >"$out/river.mid"
convert "Bed and water level along the line of river.mif at every output time:" -b -lp river.mif -tAll basin_h.dat
convert "What the .xmdf holds, as a list:" -b -xnfo basin.xmdf
convert "Depths at every output time, for ParaView:" -b -ensight -typed -tAll basin.xmdf
convert "Water levels and depths as one .xmdf of their own:" -b -xmdf -FolderTemporal -tAll basin.xmdf
build/release/examples/make_parabolic_basin -origin 300000,6200300 "$out/shifted"
convert "Where the water stands deeper or shallower than in a flood 300 m further north, and what is newly wet or dry:" \
    -b -flt -grid50 -max -dif shifted_d.dat basin_d.dat
convert "The bed, from the mesh alone:" -b -asc -grid20 basin.2dm
convert "Highest water level, as a Cloud Optimized GeoTIFF with its coordinate system:" -b -gtif -grid20 -max -crs EPSG:28356 basin_h.dat
convert "Velocity arrows at every output time, in one GeoPackage with dates:" -b -gpkg -vector -grid200 -tAll -epoch2024-01-01 -crs EPSG:28356 basin_V.dat

cat <<EOF

Done. Next:
  - open $out/basin_h_River.csv in a spreadsheet and plot its columns over the first.
  - open the grids and layers of $out/ in a GIS, or look at one with: gdalinfo -stats $out/basin_h_Max_g020.asc
  - convert a model of your own: build/release/VORANT_to_GIS -b -asc -grid5 -max your_run_h.dat
    (the mesh your_run.2dm is looked for beside it; all switches: build/release/VORANT_to_GIS)
  - README.md tells which switch does what.
EOF
