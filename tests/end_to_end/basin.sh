#!/usr/bin/env bash
# A flood whose exact solution is known: every wet cell of the grids equals it, dry ones hold nothing.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# flood <grid> <quantity> <hours> <tolerance> [steps]
flood() {
    check "no $1" [ -f "$1" ]
    cells "$1" >../grid.xyz
    check "$1 is not the exact solution ($2 at $3 h)" awk -f "$here/basin.awk" -v quantity="$2" -v hours="$3" -v tolerance="$4" -v steps="${5:-}" \
        -v side=8000 -v x0=300000 -v y0=6200000 -v mesh=100 ../grid.xyz
}

make_model -times 6 basin

row 0 "basin_h_t000.30_g020.asc" -b -asc -grid20 -t0.3 basin_h.dat
flood basin_h_t000.30_g020.asc h 0.3 0.001
keep basin_h_t000.30_g020.asc
row 0 "basin_h_t000.30_g020.flt basin_h_t000.30_g020.hdr" -b -flt -grid20 -t0.3 basin_h.dat
flood basin_h_t000.30_g020.flt h 0.3 0.0001
same_values basin_h_t000.30_g020.flt ../kept/basin_h_t000.30_g020.asc 0.00051
row 0 "basin_h_t001080_g050.asc" -b -asc -grid50 -sec -t1080 basin_h.dat
flood basin_h_t001080_g050.asc h 0.3 0.001

# All times: the last values of one time must not shine through in the next.
row 0 "basin_h_Max_g050.asc $(printf 'basin_h_t000.%s_g050.asc ' 00 10 20 30 40 50)" -b -asc -grid50 -tAll basin_h.dat
for tenth in 0 1 2 3 4 5; do flood "basin_h_t000.${tenth}0_g050.asc" h 0.$tenth 0.001; done
row 0 "$(printf 'basin_d_t000.%s_g050.flt basin_d_t000.%s_g050.hdr ' 00 00 10 10 20 20 30 30 40 40 50 50)" -b -flt -grid50 -tAll basin_d.dat
for tenth in 0 3 5; do flood "basin_d_t000.${tenth}0_g050.flt" d 0.$tenth 0.002; done    # a paraboloid cut into flat elements

# Highest values, sampled at nodes (200 m cells on 100 m squares), where they are exact.
row 0 "basin_h_Max_g200.asc" -b -asc -grid200 -max basin_h.dat
flood basin_h_Max_g200.asc h 0 0.001 6
said "File has maximums stored (time = 99,999) using these values and ignoring all other timesteps."
keep basin_h_Max_g200.asc
row 0 "basin_h_Max_g200.asc" -b -asc -grid200 -t99999 basin_h.dat
same_values basin_h_Max_g200.asc ../kept/basin_h_Max_g200.asc 0
row 0 "basin_h_Max_g200.asc" -b -asc -grid200 basin_h.dat
said "WARNING - No output time specified, using maximums."
row 0 "basin_d_Max_g200.asc" -b -asc -grid200 -max basin_d.dat
flood basin_d_Max_g200.asc d 0 0.001 5      # the last of the six times is left out
said "WARNING - Last timestep is not included in the extracted maximums."

# Velocity: the same everywhere in the water.
row 0 "basin_V_t000.20_g050.asc" -b -asc -grid50 -t0.2 basin_V.dat
flood basin_V_t000.20_g050.asc speed 0.2 0.001
row 0 "basin_V_t000.20_Vx_g050.asc" -b -asc -grid50 -t0.2 -vx basin_V.dat
flood basin_V_t000.20_Vx_g050.asc vx 0.2 0.001
row 0 "basin_V_t000.20_Vy_g050.flt basin_V_t000.20_Vy_g050.hdr" -b -flt -grid50 -t0.2 -vy basin_V.dat
flood basin_V_t000.20_Vy_g050.flt vy 0.2 0.001
row 0 "basin_V_Max_g050.asc" -b -asc -grid50 -max basin_V.dat
flood basin_V_Max_g050.asc speed 0 0.001 6
for tenth in 1 2 4; do                      # the angle passes 180 degrees on the way
    run 0 -b -asc -grid50 -t0.$tenth -va -out direction basin_V.dat
    flood direction.asc direction 0.$tenth 0.001
done
run 0 -b -asc -grid50 -t0.4 -va -compass -out bearing basin_V.dat
flood bearing.asc bearing 0.4 0.001

# A mesh that is turned, distorted and far from round numbers; results without flags cover the whole mesh.
make_model -times 4 -rotate 33 -distort 0.2 -origin 300000,6200000 turned
row 0 "turned_h_t000.20_g020.flt turned_h_t000.20_g020.hdr" -b -flt -grid20 -t0.2 turned_h.dat
cells turned_h_t000.20_g020.flt >../grid.xyz
check "the turned mesh is not the exact solution" awk -f "$here/basin.awk" -v quantity=h -v hours=0.2 -v tolerance=0.001 -v side=8000 -v x0=300000 \
    -v y0=6200000 -v mesh=150 ../grid.xyz
make_model -times 2 -no-flags -cells 40 unflagged
row 0 "unflagged_d_t000.10_g100.asc" -b -asc -grid100 -t0.1 unflagged_d.dat
info unflagged_d_t000.10_g100.asc "STATISTICS_VALID_PERCENT=97.55" "STATISTICS_MINIMUM=0"

finish
