#!/usr/bin/env bash
# A hundred command lines by this machine's program and by that for Windows: the same status, the same words, the same bytes.
#   tests/windows/compare.sh <program> <program.exe> <make_parabolic_basin> <scratch folder>
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
native=$(realpath "$1") windows=$(realpath "$2") maker=$(realpath "$3")
rm -rf "$4"
mkdir -p "$4/model"
cd "$4"
"$maker" -cells 20 -times 4 -rotate 20 -distort 0.2 -cell-depths -xmdf model/m >/dev/null
"$maker" -cells 20 -times 4 -origin 300000,6200300 model/scheme >/dev/null
cp "$here"/../../examples/guide/* model/
cp model/m_h.dat "model/Größe_h.dat"
printf '%s\n' "ncols 40" "nrows 30" "xllcorner 300100" "yllcorner 6200200" "cellsize 75" "NODATA_value -99999" >model/grid.asc
for row in {1..30}; do printf '1 %.0s' {1..40} && echo; done >>model/grid.asc

command_lines() {
    local format rest
    for format in -asc -flt; do
        for rest in "-max m_h.dat" "-t0.2 m_h.dat" "-tAll m_d.dat" "-t0.1 m_V.dat" "-t0.1 -vx m_V.dat" "-vdir -compass -t0.1 m_V.dat" "m.2dm" "-typeAll -max m.xmdf" \
            "-typeh -tAll m.xmdf" "-FolderMaximums m.xmdf" "-s2 -max m.xmdf" "-v1 -max m.xmdf" "-tmax -typeh m.xmdf" "-sec -t720 m_h.dat" "-prec5.2 -t0.2 m_h.dat" \
            "-sgs -max m_h.dat" "-out Übersicht -max m_h.dat" "-out deep\\er -max m_h.dat" "-max -2dm m.2dm Größe_h.dat" "-max -jobs3 m_h.dat" "-max -dif m_d.dat scheme_d.dat" \
            "-dif m.2dm scheme.2dm" "-tAll m_cells_d.dat" "-t0.15 m_h.dat" "-grid9000 m.2dm"; do
            echo "$format -grid50 $rest"
        done
    done
    for format in -shp -mif -txt; do
        for rest in "m.2dm" "-t0.2 -region m_cells_d.dat" "-typeh -max -cd0.5 -verbose m.xmdf" "-tAll m_cells_d.dat" "-grid200 -tAll m_h.dat" "-vector -grid300 -t0.1 m_V.dat" \
            "-vector -sf-50 -ttf.05 -t0.1 m_V.dat" "-vector -typev -sf0.5 -vmax1 -t0.1 m.xmdf" "-prec7.3 -max m_h.dat" "-out größer -typed -max m.xmdf" "-no1d m.2dm"; do
            echo "$format $rest"
        done
    done
    for rest in "-lp river.mif -tAll m_h.dat" "-lp river.mif -cp marks.mif -max m_h.dat" "-cp marks.mif -tAll m_h.dat" "-lp river.mif m.2dm" "-dat -typeAll -tAll m.xmdf" \
        "-xmdf -typeAll -tAll m.xmdf" "-ensight -typeAll -tAll m.xmdf" "-ensight m.2dm" "-xnfo -verbose m.xmdf" "-xnfo m.2dm" "-xnfo m_h.dat" "-asc -typeXYZ -max m.xmdf" \
        "-help depth" "-gird5" "-asc -grid5x m_h.dat" "-lp river.mif -tAll -dif m_h.dat m.xmdf" "-dat -max m_h.dat" "-ensight -typed -t0.2 m.xmdf" \
        "-asc -grid50 -sec -tAll m.xmdf" "-flt -like grid.asc -max m_h.dat" \
        "-flt -grid50 -from0.1 -until0.2 m_h.dat" "-asc -grid50 -nth2 -into Übersicht m_d.dat" "-flt -grid3 -mem16 -jobs3 -t0.1 m_h.dat" "-dat -typeAll -from0.1 m.xmdf"; do
        echo "$rest"
    done
}

# run_in <folder> <program...>: the outputs, the console and the status; the date inside a .dbf is blanked.
run_in() {
    local folder=$1 status=0 file
    shift
    rm -rf "$folder"
    cp -R model "$folder"
    (cd "$folder" && "$@" </dev/null >console.txt 2>&1) || status=$?
    sed -i '/^[0-9.]* seconds/d; /^   scan [0-9.]*, read /d; s|\\|/|g' "$folder/console.txt"
    echo "status $status" >>"$folder/console.txt"
    for file in "$folder"/*.dbf; do [ ! -e "$file" ] || printf '\0\0\0' | dd of="$file" bs=1 seek=1 conv=notrunc status=none; done
}

lines=0 different=0
while IFS= read -r line; do
    read -r -a arguments <<<"${line//\\/\\\\}"
    run_in linux "$native" -b "${arguments[@]}"
    run_in windows "$here/wine.sh" "$windows" -b "${arguments[@]}"
    lines=$((lines + 1))
    diff -r linux windows >differences.txt && continue
    different=$((different + 1))
    echo "FAILED: $line"
    head -n 6 differences.txt
done < <(command_lines)
echo "$lines command lines, $different differ"
[ "$different" -eq 0 ] && [ "$lines" -ge 100 ]
