#!/usr/bin/env bash
# All tests of a Windows build under wine: those of ctest, the archive, and the outputs of many command lines beside those of this machine's program.
#   tests/windows/all.sh <build folder> <archive>
set -euo pipefail
cd "$(dirname "$0")/../.."
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=ON
. scripts/windows/environment.sh
# Started by a test, wine's own servers would keep that test's output open until they end.
/usr/lib/wine/wine64 wineboot </dev/null >/dev/null 2>&1 || true
ctest --test-dir "$1" --output-on-failure --parallel "$(nproc)"
tests/windows/terminal.py "$1/VORANT_to_GIS.exe" "$1/tests/hold.exe" "$1/examples/example" "$1/scratch/terminal"
tests/windows/archive.sh "$2" "$1/scratch/archive folder"
tests/windows/compare.sh build/release/VORANT_to_GIS "$1/VORANT_to_GIS.exe" build/release/examples/make_parabolic_basin "$1/scratch/compared"
