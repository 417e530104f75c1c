#!/usr/bin/env bash
# .xmdf results: the same grids as from the .dat files of the same run, and the names and ends of every way of choosing datasets.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
make_model -cells 20 -xmdf run_1
echo "no mesh" >run.2dm    # the trailing part of the name is cut only where the full name has no mesh

# compared <grid of the .dat> <grid of the .xmdf> -- <switches and name of the .dat> -- <switches of the .xmdf>: the same bytes.
compared() {
    local dat=$1 xmdf=$2
    shift 3
    local -a dat_switches=()
    while [ "$1" != "--" ]; do dat_switches+=("$1"); shift; done
    shift
    row 0 "$dat.flt $dat.hdr" -b -flt -grid100 "${dat_switches[@]}"
    mv "$dat.flt" ../kept.flt
    row 0 "$xmdf.flt $xmdf.hdr" -b -flt -grid100 "$@" run_1.xmdf
    check "$xmdf.flt is not what the .dat gives" cmp -s "$xmdf.flt" ../kept.flt
}
compared run_1_h_Max_g100 run_1_h_Max_g100 -- -max run_1_h.dat -- -typeh -max
compared run_1_h_Max_g100 run_1_h_Max_g100 -- -max run_1_h.dat --
said "WARNING - No output time specified, using maximums."
compared run_1_d_t000.50_g100 run_1_d_t000.50_g100 -- -t0.5 run_1_d.dat -- -typed -t0.5
compared run_1_d_t000.50_g100 run_1_d_t000.50_g100 -- -t0.5 run_1_d.dat -- -path/run_1/Temporal/Depth -t0.5
compared run_1_V_t000.30_Vx_g100 run_1_v_t000.30_Vx_g100 -- -t0.3 -vx run_1_V.dat -- -typev -t0.3 -vx
compared run_1_V_Max_g100 run_1_v_Max_g100 -- -max run_1_V.dat -- -v1

run 0 -b -asc -grid100 -tAll -typed run_1.xmdf
check "not 11 depths: ${#outputs[@]}" [ "${#outputs[@]}" -eq 11 ]
row 0 "run_1_h_Min_g100.asc" -b -asc -grid100 -min run_1.xmdf
row 0 "run_1_time_hMax_g100.asc" -b -asc -grid100 -tmax -typeh run_1.xmdf
row 0 "run_1_time_hMax_g100.asc" -b -asc -grid100 -tmax -typeAll run_1.xmdf
row 0 "run_1_d_Max_g100.asc run_1_h_Max_g100.asc run_1_v_Max_g100.asc" -b -asc -grid100 -typeAll -max run_1.xmdf
said "Warning - Dataset \"/run_1/Times/Time of Peak h\" skipped" "Processing Scalar Datasets..." "Processing Vector Datasets..." "Finished processing xmdf file."
row 0 "run_1_d_Max_g100.asc run_1_h_Max_g100.asc run_1_v_Max_g100.asc" -b -asc -grid100 -FolderMaximums -out name run_1.xmdf
said "WARNING - Several outputs are written"
row 0 "name.asc" -b -asc -grid100 -s1 -out name run_1.xmdf
said "Using specifed scalar dataset: /run_1/Maximums/Depth"

# Refusals: status 1, nothing written.
row 1 "" -b -asc -grid100 -s99 run_1.xmdf
said "ERROR - Specifed scalar dataset does not exist." "   Maximum scalar ID = "
row 1 "" -b -asc -grid100 -typeAll -t77 run_1.xmdf
said "ERROR - No data processed - check that dataset and timestep exist in file." "   E.g. if specifying a maximum (-max or -t99999) check that maximums are written."
row 1 "" -b -asc -grid100 -typeh -t77 run_1.xmdf
said "is not within time search tolerance"
make_model -cells 10 other
row 1 "" -b -asc -grid100 -max -2dm other.2dm run_1.xmdf
said "ERROR - Number of nodes in .xmdf file is different to .2dm file."
head -c 5000 run_1.xmdf >broken.xmdf
row 1 "" -b -asc -grid100 -max -2dm run_1.2dm broken.xmdf
said "ERROR - Could not open XMDF file \"broken.xmdf\"" "truncated file"

if [ -d "${SHARED_DATA:-}/sacramento" ]; then
    cp "$SHARED_DATA"/sacramento/*.xmdf "$SHARED_DATA"/sacramento/*.2dm "$SHARED_DATA"/reach/*.xmdf "$SHARED_DATA"/reach/*.2dm .
    row 0 "sacramento_h_Max_g020.asc" -b -asc -grid20 -typeh -max sacramento.xmdf
    row 0 "sacramento_d_t002.50_g020.asc" -b -asc -grid20 -t2.5 -typed sacramento.xmdf
    run 0 -b -flt -grid20 -tAll -typev sacramento.xmdf
    check "not 13 velocities: ${#outputs[@]}" [ "${#outputs[@]}" -eq 26 ]
    row 0 "reach_EH_t000000_g001.asc reach_EH_t001200_g001.asc reach_EH_t002400_g001.asc reach_EH_t003600_g001.asc" \
        -b -asc -grid1 -sec -path/EH reach.xmdf
    row 0 "reach_velocity_v_Max_g001.asc" -b -asc -grid1 -max -path/velocity reach_velocity.xmdf
else
    echo "No real models in ${SHARED_DATA:-(SHARED_DATA not set)}: those rows are left out."
fi
finish
