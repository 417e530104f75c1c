#!/usr/bin/env bash
# Differences of two floods whose water levels are planes: every cell is what the grids of both runs give alone, on one mesh, on two, and
# from either kind of file.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

make_model -times 4 -cells 40 -xmdf now
make_model -times 4 -cells 33 -side 7000 -rotate 20 -origin 301000,6200400 was

# subtracted <depths: 1 or 0> <names of the difference, now and was, without extension>: and the meshes "now" and "was" as masks.
subtracted() {
    local grid
    for grid in "$2" "$2_class" "$3" "$4" frame mask; do cells "$grid.flt" >"../$grid.xyz"; done
    check "$2 is not $3 less $4" awk -v depths="$1" -v areas="$(sed -n 's/^   was .*: \(.*\) m2$/\1/p' ../console.txt | xargs)" '
        { row = FNR; value[FILENAME, row] = $3 }
        FILENAME ~ /mask/ {
            d = value[ARGV[1], row]; class = value[ARGV[2], row]; a = value[ARGV[3], row]; b = value[ARGV[4], row]; none = -99999
            if (value[ARGV[5], row] == none || $3 == none || (a == none && b == none)) { k = none; e = none }
            else if (a != none && b != none) { k = 1; e = a - b }
            else { k = a != none ? 2 : 3; e = !depths ? none : a != none ? a : -b }
            if (class != k || d - e > 0.00001 || e - d > 0.00001) wrong++
            count[k]++
        }
        END { split(areas, area, " "); exit wrong > 0 || count[1] < 100 || count[2] < 100 ||
            area[1] != count[2] * 1600 || area[2] != count[3] * 1600 }' \
        "../$2.xyz" "../$2_class.xyz" "../$3.xyz" "../$4.xyz" ../frame.xyz ../mask.xyz
}
run 0 -b -flt -grid40 -out frame now.2dm
outputs=()
run 0 -b -flt -like frame.flt -out mask was.2dm
outputs=()
for row in "1 d -t0.2" "0 h -max" "0 V -t0.1" "0 V -t0.3 -vx"; do
    read -r depths quantity switches <<<"$row"
    # shellcheck disable=SC2086  # the switches are words
    for side in now was; do
        run 0 -b -flt -like frame.flt $switches -out "$side" "${side}_$quantity.dat"
        outputs=()
    done
    # shellcheck disable=SC2086
    row 0 "d.flt d.hdr d_class.flt d_class.hdr" -b -flt -grid40 $switches -out d -dif "was_$quantity.dat" "now_$quantity.dat"
    subtracted "$depths" d now was
done

# Names, and an .xmdf against the .dat of the same run: nothing.
if [ -f now.xmdf ]; then
    row 0 "now_d_minus_now_d_t000.20_g040.flt now_d_minus_now_d_t000.20_g040.hdr now_d_minus_now_d_t000.20_g040_class.flt now_d_minus_now_d_t000.20_g040_class.hdr" \
        -b -flt -grid40 -t0.2 -dif now_d.dat now.xmdf
    said "min 0.000000, max 0.000000"
    row 0 "now_v_minus_now_V_t000.20.shp now_v_minus_now_V_t000.20.shx now_v_minus_now_V_t000.20.dbf now_v_minus_now_V_t000.20.cpg" \
        -b -shp -typev -t0.2 -dif now_V.dat now.xmdf
    did_not_say "Data type specified"
    run 0 -b -flt -grid40 -typeAll -tAll -dif now.xmdf now.xmdf
    check "not every dataset and time: ${#outputs[@]}" [ "${#outputs[@]}" -eq 48 ]
fi

# Objects of every format hold what the cells hold: the change of a step, as the earlier run has it in the place of the next one.
make_model -times 4 -cells 10 earlier
longer=$(stat -c %s earlier_h.dat)
make_model -times 3 -cells 10 earlier
make_model -times 3 -cells 10 later
whole=$(stat -c %s later_h.dat)
step=$((longer - whole))
second=$((whole - 4 - 3 * step + 9))  # the end card, three steps of four, and the start of a step
dd status=none bs=1 if=later_h.dat of=earlier_h.dat skip="$second" seek="$((second + step))" count="$((step - 9))" conv=notrunc
run 0 -b -flt -grid400 -t0.2 -out change -dif earlier_h.dat later_h.dat
cells change.flt | awk '$3 != -99999 { printf "%.1f %.1f %.4f\n", $1, $2, $3 }' | sort >../change.txt
check "no change" [ "$(awk '$3 < -0.01' ../change.txt | wc -l)" -gt 50 ]
formats=shp
[ ! -f "$(dirname "$PROGRAM")/libvorant_gdal.so" ] || formats="shp gpkg fgb"
for format in $formats; do
    run 0 -b "-$format" -grid400 -t0.2 -out change -dif earlier_h.dat later_h.dat
    check "the objects of change.$format" diff <(ogr2ogr -f CSV /vsistdout/ "change.$format" -lco GEOMETRY=AS_XY |
        awk -F, 'NR > 1 { printf "%.1f %.1f %.4f\n", $1, $2, $4 }' | sort) ../change.txt
done

# A full disk leaves nothing that looks whole.
ln -s /dev/full d_class.flt
run 1 -b -flt -grid40 -t0.2 -out d -dif was_d.dat now_d.dat
said "ERROR"
rm -f d_class.flt
finish
