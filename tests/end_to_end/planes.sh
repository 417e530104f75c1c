#!/usr/bin/env bash
# The plane z = x + 10 y comes back as x + 10 y at the centre of every cell that the mesh covers, and nowhere else: a hole along an edge
# between elements, a cell half a spacing off and a wrong interpolation all show.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# plane <least covered cells> <output name> <spacing and other switches> -- <mesh options: side origin turn> <other options>
plane() {
    local least=$1 name=$2 switches=$3 side=$4 x0=$5 y0=$6 turn=$7 rounding=0 tolerance=0.001
    shift 7
    make_model -plane -side "$side" -origin "$x0,$y0" -rotate "$turn" "$@" plane
    if [ "$turn" != 0 ]; then
        rounding=0.001                                        # the nodes of a turned mesh are rounded to 0.0001 m
        [ "${name##*.}" != asc ] || tolerance=0.0065          # three decimals place the corner to half a millimetre, on a slope of ten to one
    fi
    # shellcheck disable=SC2086  # the switches are words
    run 0 -b $switches plane.2dm
    check "did not write $name" [ -f "$name" ]
    cells "$name" >../grid.xyz
    check "$name is not the plane (mesh: side $side at $x0 $y0 turned $turn $*)" \
        awk -f "$here/plane.awk" -v side="$side" -v x0="$x0" -v y0="$y0" -v turn="$turn" -v rounding="$rounding" -v tolerance="$tolerance" \
            -v least="$least" ../grid.xyz
}

#     least  name              switches           side  x0       y0      turn
plane 400    plane_g005.asc    "-asc -grid5"      100   0        0       0    -cells 20
plane 100    plane_g010.asc    "-asc -grid10"     100   0        0       0    -cells 20                   # centres on nodes
plane 1600   plane_g002.5.asc  "-asc -grid2.5"    100   0        0       0    -cells 20 -triangles 1      # centres on diagonals
plane 9      plane_g040.asc    "-asc -grid40"     100   0        0       0    -cells 20                   # centres on the mesh's edge
plane 700    plane_g003.7.asc  "-asc -grid3.7"    100   12.3456  -67.89  0    -cells 20
plane 700    plane_g003.7.flt  "-flt -grid3.7"    100   12.3456  -67.89  0    -cells 20 -triangles 0
plane 700    plane_g003.7.asc  "-asc -grid3.7"    100   12.3456  -67.89  0    -cells 20 -distort 0.24 -triangles 0.5
plane 2400   plane_g002.asc    "-asc -grid2"      100   -50      -50     30   -cells 20
plane 2400   plane_g002.flt    "-flt -grid2"      100   500      300     45   -cells 20 -triangles 1
plane 2400   plane_g002.asc    "-asc -grid2"      100   500      300     -17.3 -cells 20 -distort 0.24
plane 2400   plane_g002.asc    "-asc -grid2 -cc"  100   0.3      0.4     0    -cells 20
plane 30     plane_g002.asc    "-asc -grid2"      12    7        7       10   -cells 2                    # cells larger than the spacing
plane 20     plane_g020.asc    "-asc -grid20"     100   3        4       0    -cells 50                   # cells far smaller
plane 380    plane_g005.asc    "-asc"             100   1        1       0    -cells 20                   # the usual side of a quad

# What a GIS package reads of the last but two grids: corner, size, extremes.
make_model -plane -side 100 -cells 20 -origin 0,0 plane
run 0 -b -asc -grid5 plane.2dm
info plane_g005.asc "Size is 21, 21" "Origin = (0.000000000000000,105.000000000000000)" "Pixel Size = (5.000000000000000,-5.000000000000000)" \
    "STATISTICS_MINIMUM=27.5" "STATISTICS_MAXIMUM=1072.5" "NoData Value=-99999"
value_at plane_g005.asc 51 49 527.5 0.001
run 0 -b -asc -cc -grid5 plane.2dm
info plane_g005.asc "Size is 20, 20" "STATISTICS_VALID_PERCENT=100"

finish
