#!/usr/bin/env bash
# Builds for a big-endian machine and runs there, under an emulator: a conversion to each format, whose files must be those of
# this machine byte for byte, and the unit tests. Without HDF5 and GDAL, which Debian has for this machine only.
#   NATIVE=<folder with this machine's programs> (build/release), tests/big_endian.sh
set -euo pipefail
cd "$(dirname "$0")/.."
compiler=powerpc64-linux-gnu-g++
emulator=qemu-ppc64
native=$(realpath "${NATIVE:-build/release}")
if ! command -v $compiler >/dev/null || ! command -v $emulator >/dev/null; then
    echo "ERROR - Please install g++-powerpc64-linux-gnu and qemu-user."
    exit 77
fi

build=build/big_endian
mkdir -p $build/headers
ln -sfn /usr/include/doctest $build/headers/doctest
cmake -S . -B $build -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=ppc64 -DCMAKE_CXX_COMPILER=$compiler -DCMAKE_CROSSCOMPILING_EMULATOR=$emulator \
    -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -Wno-psabi" -DCMAKE_EXE_LINKER_FLAGS=-static -DWITH_HDF5=OFF -DWITH_GDAL=OFF -DBUILD_ROUTINES=OFF \
    "-DDOCTEST_INCLUDE_DIR=$PWD/$build/headers" >/dev/null
cmake --build $build --parallel "$(nproc)" --target VORANT_to_GIS make_parabolic_basin
build=$(realpath $build)

# convert <folder> <folder of the programs> [emulator]: a model and its conversions
convert() {
    local folder=$1 programs=$2 words
    shift 2
    local maker=("$@" "$(find "$programs" -name make_parabolic_basin -type f)") converter=("$@" "$programs/VORANT_to_GIS")
    rm -rf "$here/$folder" && mkdir -p "$here/$folder" && cd "$here/$folder"
    "${maker[@]}" -times 2 -cells 7 -rotate 20 -distort 0.2 m >/dev/null
    printf 'Version 300\nCoordSys NonEarth Units "m"\n' >Header.mif
    echo 'PROJCS["plane",UNIT["metre",1]]' >Header.prj
    for words in "-asc -grid400 m_h.dat" "-flt -grid400 m_V.dat" "-mif -grid900 m_V.dat" "-shp -grid900 m_h.dat" "-shp -vector m_V.dat" \
        "-txt m_V.dat" "-cp m_h_t000.10_g900.shp m_d.dat" "-ensight m_V.dat" "-dat -out again m_V.dat" "-xnfo m_h.dat"; do
        # shellcheck disable=SC2086  # the switches are words
        "${converter[@]}" -b -tAll $words </dev/null >"console.txt" || { cat console.txt; exit 1; }
    done
    rm console.txt
}
here=$build/converted
(convert native "$native")
(convert big "$build" $emulator)
diff -r "$here/native" "$here/big"
echo "$(find "$here/big" -type f | wc -l) files are those of this machine"

cmake --build "$build" --parallel "$(nproc)" --target unit_tests
cd "$build" && $emulator tests/unit_tests
