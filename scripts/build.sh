#!/usr/bin/env bash
# Configures and builds one preset with all cores: scripts/build.sh release -DBUILD_TESTS=OFF
# The words behind the preset go to the configuration; TARGETS in the environment limits what is built.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=$1
shift
targets=()
[ -z "${TARGETS:-}" ] || read -r -a targets <<<"--target $TARGETS"

echo "Building ($preset)..."
cmake --preset "$preset" "$@" >/dev/null
cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}"
