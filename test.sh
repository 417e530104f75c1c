#!/usr/bin/env bash
# The demo, then every test: the end-to-end tests on the release executable, those of several threads under the sanitizer
# of threads, and all tests under the other sanitizers.
# With --long also those of tests/long/tests.txt; ./test.sh --long NAME... runs rows of it alone. With --windows the
# program for Windows is built and tested under wine, with --cluster the workflow on a Slurm of one node, and nothing else.
set -euo pipefail
cd "$(dirname "$0")"

[ "${1:-}" != --windows ] || exec scripts/build_windows.sh --test
if [ "${1:-}" = --cluster ]; then
    scripts/install_packages.sh build gdal workflow cluster
    TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh release
    exec workflow/slurm_demo.sh
fi
if [ "${1:-}" = --long ] && [ $# -gt 1 ]; then
    shift
    exec tests/long/run.sh "$@"
fi

scripts/install_packages.sh build gdal tests
scripts/install_packages.sh fuzz || echo "No clang with a fuzzer: the fuzz tests are left out."
scripts/check_folders.sh
scripts/check_format.sh
./demo.sh

cores=$(nproc)
TARGETS="VORANT_to_GIS make_parabolic_basin example" scripts/build.sh release -DBUILD_TESTS=ON
ctest --preset release --label-regex end_to_end --parallel "$cores"

TARGETS="VORANT_to_GIS make_parabolic_basin" scripts/build.sh tsan -DBUILD_TESTS=ON
ctest --preset tsan --tests-regex end_to_end_jobs

scripts/build.sh dev
ctest --preset dev --parallel "$cores"

[ "${1:-}" != --long ] || tests/long/run.sh
