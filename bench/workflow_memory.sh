#!/usr/bin/env bash
# What a conversion takes, against what the workflow asks of a scheduler for it: `memory`, 200 MB, of which the engine and
# python take 100 in the same job, and twice the size of the mesh file; for GeoTIFFs 250 MB and half of `memory` more. First a coarse grid, or a layer, of all times of results with wet/dry flags; then large grids of
# a mesh of 14 kB with results, and reading them back as the workflow does.
#   bench/workflow_memory.sh [cells across ...]     PROGRAM, MAKER: other executables; BENCH: the folder of the models
set -euo pipefail
cd "$(dirname "$0")/.."
export GDAL_CACHEMAX=64                                         # as the workflow's jobs set it
program=$(realpath "${PROGRAM:-build/release/VORANT_to_GIS}")
maker=$(realpath "${MAKER:-build/release/examples/make_parabolic_basin}")
work=${BENCH:-build/bench}/memory
rm -rf "$work"
mkdir -p "$work"
cd "$work"
[ $# -gt 0 ] || set -- 100 433 866 1732

# most <command>: MB it takes at most.
most() {
    /usr/bin/time -f %M -o ../kilobytes.txt "$@" </dev/null >../log.txt 2>&1 || { tail -n 3 ../log.txt >&2; exit 1; }
    echo $(($(tail -n 1 ../kilobytes.txt) * 1024 / 1000000))
}

printf '| mesh | what | most memory | asked, beside `memory` |\n|---|---|---|---|\n'
for across in "$@"; do
    "$maker" -cells "$across" -side $((across * 10)) -times 3 -xmdf m >/dev/null
    mesh=$(($(stat -c %s m.2dm) / 1000000))
    for switches in "-flt -grid500 -tAll m_h.dat" "-flt -grid500 -typeAll -tAll m.xmdf" "-gtif -grid500 -max m_V.dat" "-shp -ptsC -grid50 -max m_h.dat" \
        "-gpkg -typed -max m.xmdf" "-xmdf -typeAll -tAll m.xmdf"; do
        # shellcheck disable=SC2086  # the switches are words
        most=$(most "$program" -b -jobs2 -into out $switches)
        printf '| %s MB | `%s` | %s MB | %s |\n' "$mesh" "$switches" "$most" $((200 + 2 * mesh))
        rm -rf out
    done
done
rm -rf m*

printf '\n| what | `memory` | conversion | reading back | asked |\n|---|---|---|---|---|\n'
"$maker" -cells 8 -times 3 m >/dev/null
for row in "100 -flt -grid0.8" "1000 -flt -grid0.8 -tAll" "100 -asc -grid0.8" "100 -gpkg -grid8" "100 -gtif -grid0.8" "540 -gtif -grid0.8 -tAll" \
    "1000 -gtif -grid0.4" "1100 -gtif -grid0.58" "100 -gtif -grid0.8 -multiband -tAll"; do
    memory=${row%% *} switches=${row#* } gdal=0
    [[ $switches == *-tAll* ]] || switches+=" -max"
    [[ $switches != -gtif* ]] || gdal=$((250 + memory / 2))
    # shellcheck disable=SC2086  # the switches are words
    most=$(most "$program" -b -jobs2 "-mem$memory" -into out $switches m_h.dat)
    file=$(find out -name '*.flt' -o -name '*.asc' -o -name '*.tif' -o -name '*.gpkg' | sort | tail -n 1)
    look=(gdalinfo --config GDAL_PAM_ENABLED NO -json -stats "vrt://$file")
    [[ $file != *.gpkg ]] || look=(ogrinfo -ro -so -al "$file")
    printf '| `%s` | %s MB | %s MB | %s MB | %s MB |\n' "$switches" "$memory" "$most" "$(most "${look[@]}")" $((memory + 200 + gdal))
    rm -rf out
done
rm -rf m*
