#!/usr/bin/env bash
# All that is installed, in a folder moved since: the program finds its module, and another project finds the library and gets the same map from it.
# BUILD, SOURCE, SCRATCH: folders. CXX, CXXFLAGS: how it was built. MODULE: blank where the build has no GDAL module.
set -euo pipefail
rm -rf "$SCRATCH"
mkdir -p "$SCRATCH/project" "$SCRATCH/data"
cmake --install "$BUILD" --prefix "$SCRATCH/first" >/dev/null
mv "$SCRATCH/first" "$SCRATCH/moved here"
prefix="$SCRATCH/moved here"

cp "$SOURCE/examples/grid_maximums.cpp" "$SCRATCH/project/"
cat >"$SCRATCH/project/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(maximums LANGUAGES CXX)
find_package(vorant_gis $VERSION REQUIRED)
add_executable(maximums grid_maximums.cpp)
target_link_libraries(maximums PRIVATE vorant_gis::vorant_gis)
END
cmake -S "$SCRATCH/project" -B "$SCRATCH/build" "-DCMAKE_PREFIX_PATH=$prefix" >"$SCRATCH/log" 2>&1 &&
    cmake --build "$SCRATCH/build" >>"$SCRATCH/log" 2>&1 || { cat "$SCRATCH/log"; exit 1; }

"$MAKER" -cells 20 "$SCRATCH/data/basin" >/dev/null
cd "$SCRATCH/data"
"$SCRATCH/build/maximums" basin.2dm basin_h.dat 100 library
"$prefix/bin/VORANT_to_GIS" -b -asc -grid100 -max -out program basin_h.dat >"$SCRATCH/log"
cmp library.asc program.asc
[ -z "$MODULE" ] || "$prefix/bin/VORANT_to_GIS" -b -gtif -grid100 -max basin_h.dat >"$SCRATCH/log" || { cat "$SCRATCH/log"; exit 1; }
