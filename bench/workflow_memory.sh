#!/usr/bin/env bash
# What a conversion takes beside its grids, against what the workflow asks of a scheduler for it: 100 MB and twice the size of the mesh
# file. A coarse grid, or a layer, of all times of results with wet/dry flags.
#   bench/workflow_memory.sh [cells across ...]     PROGRAM, MAKER: other executables; BENCH: the folder of the models
set -euo pipefail
cd "$(dirname "$0")/.."
program=$(realpath "${PROGRAM:-build/release/VORANT_to_GIS}")
maker=$(realpath "${MAKER:-build/release/examples/make_parabolic_basin}")
work=${BENCH:-build/bench}/memory
rm -rf "$work"
mkdir -p "$work"
cd "$work"
[ $# -gt 0 ] || set -- 100 433 866 1732

printf '| mesh | what | most memory | 100 MB + 2 x mesh |\n|---|---|---|---|\n'
for across in "$@"; do
    "$maker" -cells "$across" -side $((across * 10)) -times 3 -xmdf m >/dev/null
    mesh=$(($(stat -c %s m.2dm) / 1000000))
    for switches in "-flt -grid500 -tAll m_h.dat" "-flt -grid500 -typeAll -tAll m.xmdf" "-gtif -grid500 -max m_V.dat" "-shp -ptsC -grid50 -max m_h.dat" \
        "-gpkg -typed -max m.xmdf" "-xmdf -typeAll -tAll m.xmdf"; do
        # shellcheck disable=SC2086  # the switches are words
        /usr/bin/time -f %M -o ../kilobytes.txt "$program" -b -jobs2 -into out $switches </dev/null >../log.txt 2>&1 || { tail -n 3 ../log.txt; exit 1; }
        printf '| %s MB | `%s` | %s MB | %s |\n' "$mesh" "$switches" $(($(tail -n 1 ../kilobytes.txt) * 1024 / 1000000)) $((100 + 2 * mesh))
        rm -rf out
    done
done
rm -rf m*
