#!/usr/bin/env bash
# Builds the program for 64-bit Windows on Debian: one .exe without DLLs of its own, in build/windows/VORANT_to_GIS-<version>-windows.zip with
# the documents, the licences and the example. With --test it also runs the tests of that build and of the archive under wine.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh build windows
. scripts/windows/environment.sh
build=$PWD/build/windows
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
hdf5=$(scripts/windows/hdf5.sh)
tests=OFF
targets=(VORANT_to_GIS example)
if [ "${1:-}" = --test ]; then
    scripts/install_packages.sh tests
    tests=ON
    targets+=(unit_tests routines_c xmdf_absent_test hold)
fi

echo "Building (windows)..."
cmake --preset windows "-DHDF5_DIR=$hdf5/share/cmake" -DBUILD_TESTS=$tests -DBUILD_ROUTINES=$tests >/dev/null
cmake --build --preset windows --parallel "$(nproc)" --target "${targets[@]}"

# What the system brings is all that it may need.
foreign=$(x86_64-w64-mingw32-objdump -p "$build/VORANT_to_GIS.exe" | sed -n 's/.*DLL Name: //p' | grep -viE '^(kernel32|user32|shell32|advapi32|msvcrt|ws2_32)\.dll$' || true)
[ -z "$foreign" ] || { echo "ERROR - The program needs these beside it: $foreign" >&2; exit 1; }

name=VORANT_to_GIS-$version-windows
folder=$build/archive/$name
rm -rf "$build/archive"
mkdir -p "$folder/licences" "$folder/workflow"
x86_64-w64-mingw32-strip -o "$folder/VORANT_to_GIS.exe" "$build/VORANT_to_GIS.exe"
cp -R README.md CHANGELOG.md docs "$folder/"
cp workflow/README.md "$folder/workflow/"  # what it does: its rules need Linux
rm -f "$folder"/docs/*.sh "$folder"/docs/*.awk
cp -R "$build/examples/example" "$folder/examples"
sed 's/$/\r/' scripts/windows/convert.bat >"$folder/examples/convert.bat"
sed 's/$/\r/' scripts/windows/licence.txt >"$folder/licences/VORANT_to_GIS.txt"
cp "$hdf5/COPYING" "$folder/licences/HDF5.txt"
cp /usr/share/doc/libz-mingw-w64-dev/copyright "$folder/licences/zlib.txt"
cp /usr/share/doc/gcc-mingw-w64-base/copyright "$folder/licences/compiler_library.txt"
cp /usr/share/doc/mingw-w64-common/copyright "$folder/licences/mingw_w64.txt"
(cd "$build/archive" && cmake -E tar cf "../$name.zip" --format=zip "$name")
ls -l "$build/$name.zip"
[ "${1:-}" != --test ] || tests/windows/all.sh "$build" "$build/$name.zip"
