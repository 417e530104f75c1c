#!/usr/bin/env bash
# Builds without a library and runs the tests of that build: tests/long/without.sh WITH_HDF5
set -euo pipefail
cmake --preset dev -B "build/$1" "-D$1=OFF" >/dev/null
cmake --build "build/$1" --parallel "$(nproc)"
ctest --test-dir "build/$1" --output-on-failure --exclude-regex "fuzz|^faults" --parallel "$(nproc)"
