#!/usr/bin/env bash
# Models from other programs' users. Skipped, and said so, where they are not at hand.
if [ ! -d "${SHARED_DATA:-}/sacramento" ]; then
    echo "No real models in ${SHARED_DATA:-(SHARED_DATA not set)}: skipped."
    exit 77
fi
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cp "$SHARED_DATA"/*/*.2dm "$SHARED_DATA"/*/*.dat .
chmod u+w -- *

# A river reach, current layout.
row 0 "sacramento_h_Max_g005.asc"                          -b -asc -grid5 -max sacramento_h.dat
keep sacramento_h_Max_g005.asc
row 0 "sacramento_h_Max_g005.flt sacramento_h_Max_g005.hdr" -b -flt -grid5 -t99999 sacramento_h.dat
same_values sacramento_h_Max_g005.flt ../kept/sacramento_h_Max_g005.asc 0.00051
row 0 "sacramento_h_t002.00_g005.asc"                      -b -asc -grid5 -t2 sacramento_h.dat
row 0 "sacramento_V_t002.00_g005.asc"                      -b -asc -grid5 -t2 sacramento_V.dat
row 0 "sacramento_g005.asc"                                -b -asc -grid5 sacramento.2dm
run 0 -b -asc -grid5 -tAll sacramento_d.dat
check "not 13 depths: ${#outputs[@]}" [ "${#outputs[@]}" -eq 13 ]
run 0 -b -asc -grid5 -max -rmp "Lower Reach" sacramento_h.dat
check "nothing was removed with the lower reach" not equal_grids sacramento_h_Max_g005.asc ../kept/sacramento_h_Max_g005.asc 0

# Triangles one by one: a grid of one cell, centred on the triangle, holds the mean of its corners, which are read here from the bytes.
# probes <mesh> <every>: "x y z n1 n2 n3" of every so many triangles.
probes() {
    awk -v every="$2" '
        $1 == "ND" { x[$2] = $3; y[$2] = $4; z[$2] = $5 }
        $1 == "E3T" && ++triangles % every == 1 { n++; a[n] = $3; b[n] = $4; c[n] = $5 }
        END { for (i = 1; i <= n; i++) printf "%.6f %.6f %.6f %d %d %d\n", (x[a[i]] + x[b[i]] + x[c[i]]) / 3, (y[a[i]] + y[b[i]] + y[c[i]]) / 3,
                (z[a[i]] + z[b[i]] + z[c[i]]) / 3, a[i], b[i], c[i] }' "$1"
}
frame_at() { awk -v x="$1" -v y="$2" 'BEGIN { printf "ncols 1\nnrows 1\nxllcorner %.6f\nyllcorner %.6f\ncellsize 0.5\nNODATA_value -1\n1\n", x - 0.25, y - 0.25 }' >frame.asc; }
float_at() { od -An -tf4 -j "$2" -N 4 "$1" | tr -d ' '; }
probed=0
while read -r x y z a b c; do
    frame_at "$x" "$y"
    run 0 -b -flt -like frame.asc -out probe sacramento.2dm
    value_at probe.flt "$x" "$y" "$z" 0.001
    # The stored maximums are the last step: 4 bytes of end card, and before them a float a node.
    values=$(($(stat -c %s sacramento_h.dat) - 4 - 4 * 3492))
    mean=$(echo "$(float_at sacramento_h.dat $((values + 4 * (a - 1)))) $(float_at sacramento_h.dat $((values + 4 * (b - 1)))) $(float_at sacramento_h.dat $((values + 4 * (c - 1))))" |
        awk '{ printf "%.6f", ($1 + $2 + $3) / 3 }')
    run 0 -b -flt -like frame.asc -max -out probe sacramento_h.dat
    value=$(gdallocationinfo -valonly -geoloc probe.flt "$x" "$y")
    if [ "$value" != -99999 ]; then    # dry ones hold nothing
        value_at probe.flt "$x" "$y" "$mean" 0.001
        probed=$((probed + 1))
    fi
done < <(probes sacramento.2dm 150)
check "no wet triangle was looked at" [ "$probed" -gt 0 ]

# Another package's triangles, 48 hourly times without flags; and as that package wrote them: flags of four bytes, card 250 for times in seconds.
run 0 -b -flt -grid50 -tAll valley_d.dat
check "not 48 times: ${#outputs[@]}" [ "${#outputs[@]}" -eq 96 ]
row 0 "valley_d_t024.00_g050.flt valley_d_t024.00_g050.hdr"    -b -flt -grid50 -t24 valley_d.dat
keep valley_d_t024.00_g050.flt valley_d_t024.00_g050.hdr
run 0 -b -flt -grid50 -t24 -out four valley_4byteflags_d.dat
said "Check - "
same_values four.flt ../kept/valley_d_t024.00_g050.flt 0
row 0 "valley_g050.asc"                                        -b -asc -grid50 valley.2dm

# A third package's quads, CR LF line ends.
row 0 "reach_g000.1.asc"                                       -b -asc -grid0.1 reach.2dm
row 1 ""                                                       -b -asc -grid10 -t0 reach_text_h.dat
said "reach_text_h.dat"

finish
