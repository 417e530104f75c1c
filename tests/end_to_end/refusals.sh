#!/usr/bin/env bash
# What cannot be converted ends with a message that names the file, status 1 (2 with the usage text) and no output.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

make_model -times 3 -cells 10 basin
make_model -times 3 -cells 8 other

# refused <status> <text said> <arguments...>
refused() {
    local status=$1 text=$2
    shift 2
    row "$status" "" "$@"
    said "$text"
}

# The command line
refused 2 "VORANT_to_GIS Description"
refused 2 "ERROR - No output format flag specified."                -b -grid5 basin.2dm
refused 2 "ERROR - More than one output format specified."          -b -asc -flt -grid400 basin.2dm
refused 1 "please specify only one."                                -b -asc -grid400 -t0.2 -max basin_h.dat
refused 1 "ERROR reading data"                                      -b -asc -gridwide basin.2dm
refused 1 "ERROR - Grid spacing is larger than the mesh."           -b -asc -grid9000 basin.2dm
refused 1 "ERROR - The outputs need 256"                            -b -flt -grid0.001 basin.2dm
echo "text" >basin.txt
refused 1 "ERROR - .txt extension not a valid results file."        -b -asc -grid400 basin.txt
refused 1 "ERROR - End of input reached while waiting for an answer." -asc -grid400
refused 1 "ERROR - End of input reached while waiting for an answer." -asc -grid basin.2dm
refused 1 "   Looked for nowhere.2dm in folder $folder${slash}deep"            -b -asc -grid400 deep/nowhere.2dm
refused 1 "ERROR - End of input reached while waiting for an answer." -b -asc -grid400 nowhere.2dm
refused 1 "ERROR - .. is a folder, not a file."                      -b -wld ..
refused 1 "ERROR - End of input reached while waiting for an answer." -b -asc -grid400 -2dm nowhere.2dm basin_h.dat

# Meshes. A row: the text said, and the lines of the file.
mesh() {
    local text=$1
    shift
    printf '%s\n' "$@" >bad.2dm
    refused 1 "$text" -b -asc -grid1 bad.2dm
    rm bad.2dm
}
square=("ND 1 0 0 1" "ND 2 9 0 1" "ND 3 9 9 1" "ND 4 0 9 1")
bad_line="ERROR - Reading .2dm file from following line in .2dm file"
mesh 'Did not find "MESH2D"'    "MESH" "${square[@]}" "E4Q 1 1 2 3 4 1"
mesh "E4Q 0 1 2 3 4 1"          "MESH2D" "${square[@]}" "E4Q 0 1 2 3 4 1"
mesh "ND 2147483647 0 9 1"      "MESH2D" "${square[@]}" "ND 2147483647 0 9 1" "E4Q 1 1 2 3 4 1"
mesh "$bad_line"                "MESH2D" "${square[@]}" "E4Q 1 1 2 3"                  # short

# Results. The file of three times is cut, or a header count changed; whole times before a cut still convert, with a warning.
length=$(stat -c %s basin_h.dat)
header=100
nodes=121
cells=$(((length - header - 4) / 4 - 9 - 4 * nodes))         # four steps of card, flag, time, flags and values; then the end card
step=$((4 + 1 + 4 + cells + 4 * nodes))
cut_at() { head -c "$1" basin_h.dat >cut_h.dat; }
cp basin.2dm cut.2dm
for ((whole = 1; whole <= 3; whole++)); do
    for beyond in 1 4 7 9 50 $((9 + cells)) $((step - 1)); do
        cut_at $((header + whole * step + beyond))
        if [ "$beyond" -gt 4 ]; then
            row 0 "cut_h_t000.00_g400.asc" -b -asc -grid400 -t0 cut_h.dat
            said "WARNING"
            refused 1 "ERROR" -b -asc -grid400 -max cut_h.dat
            run 3 -b -asc -grid400 -tAll cut_h.dat
            check "not $whole times" [ "${#outputs[@]}" -eq "$whole" ]
        fi
        [ "$whole" -eq 3 ] || refused 1 "ERROR" -b -asc -grid400 -t0.2 cut_h.dat
    done
done
cp basin_h.dat cut_h.dat
printf '\x00\x00\x00\x00' | dd of=cut_h.dat bs=1 seek=52 conv=notrunc status=none    # no cells
refused 1 "ERROR" -b -asc -grid400 -t0.2 cut_h.dat
rm cut_h.dat cut.2dm
cp other_h.dat basin_wrong.dat
refused 1 "Check that they are from same VORANT run/model."         -b -asc -grid400 -t0.2 basin_wrong.dat
rm basin_wrong.dat
refused 1 "ERROR - Could not find specified timestep in .dat file." -b -asc -grid400 -t7 basin_h.dat
refused 1 "ERROR"                                                   -b -asc -grid400 -min basin_h.dat
refused 1 "ERROR"                                                   -b -asc -like nowhere.asc -t0 basin_h.dat

# Outputs that cannot be written: a file where a folder should be, a folder where the file should be.
echo "not a folder" >plain
refused 1 "ERROR"   -b -asc -grid400 -t0.2 -out plain/mine basin_h.dat
mkdir basin_h_t000.20_g400.asc
refused 1 "ERROR"   -b -asc -grid400 -t0.2 basin_h.dat
rmdir basin_h_t000.20_g400.asc

# The maker of the example checks its writes and its options too.
ln -s /dev/full full_d.dat
check "a full disk was not noticed" not "$MAKER" -times 1 full 2>../console.txt
said "ERROR - Could not write all of full_d.dat"
check "a wrong option was taken" not "$MAKER" -distort 0.5 wrong 2>../console.txt

finish
