#!/usr/bin/env bash
# The archive as a user unpacks it: the batch file of the example runs by the command interpreter and leaves its maps.
#   tests/windows/archive.sh <archive> <scratch folder>
set -euo pipefail
. "$(dirname "$0")/../../scripts/windows/environment.sh"
archive=$(realpath "$1")
rm -rf "$2"
mkdir -p "$2"
cd "$2"
cmake -E tar xf "$archive"
cd VORANT_to_GIS-*-windows
for file in README.md docs/guide/first_map.md licences/HDF5.txt licences/zlib.txt; do [ -s "$file" ]; done
/usr/lib/wine/wine64 cmd /c examples\\convert.bat -b </dev/null >../console.txt 2>&1
# That of the guide, in the folder of the example.
sed -n '/^```bat/,/^```$/p' docs/guide/many_runs.md | sed '/^```/d; s/$/\r/' >examples/many.bat
(cd examples && /usr/lib/wine/wine64 cmd /c many.bat </dev/null >>../../console.txt 2>&1)
for file in basin_h_Max_g050.asc basin_h_Max_g050.prj basin_V_t000.30.shp maps/basin_h_Max_g050.flt maps/scheme_h_Max_g050.flt; do
    [ -s "examples/$file" ] || { echo "FAILED: a batch file left no $file:"; cat ../console.txt; exit 1; }
done
echo "The archive unpacks and converts."
