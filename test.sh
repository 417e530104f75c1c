#!/usr/bin/env bash
# The demo, then every test: the end-to-end tests on the release executable, and all tests under the sanitizers.
# With --long also the builds without HDF5 and without GDAL, and the Debian packages.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install_packages.sh build gdal tests
scripts/install_packages.sh fuzz || echo "No clang with a fuzzer: the fuzz tests are left out."
scripts/check_folders.sh
scripts/check_format.sh
./demo.sh

cores=$(nproc)
TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release -DBUILD_TESTS=ON
ctest --preset release --label-regex end_to_end --parallel "$cores"

scripts/build.sh dev
ctest --preset dev --parallel "$cores"

[ "${1:-}" = --long ] || exit 0
for without in WITH_HDF5 WITH_GDAL; do
    cmake --preset dev -B "build/$without" "-D$without=OFF" >/dev/null
    cmake --build "build/$without" --parallel "$cores"
    ctest --test-dir "build/$without" --output-on-failure --parallel "$cores"
done
scripts/install_packages.sh packages
scripts/build_deb.sh --test
