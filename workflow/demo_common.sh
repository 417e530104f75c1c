# What both demonstrations use: small models of the example flood, three products of each, and checksums of a tree of outputs.
set -euo pipefail
workflow=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
project=$(dirname "$workflow")
PROGRAM=$(realpath "${PROGRAM:-$project/build/release/VORANT_to_GIS}")
MAKER=$(realpath "${MAKER:-$project/build/release/examples/make_parabolic_basin}")
MODELS=${MODELS:-24}
demo=$(realpath -m "${DEMO:-$project/example_output/$(basename "$0" .sh)}")

for tool in snakemake gdalinfo ogrinfo; do
    command -v "$tool" >/dev/null || { echo "No $tool: apt-get install snakemake gdal-bin"; exit 77; }
done
[ -x "$PROGRAM" ] || { echo "No $PROGRAM: build first, or set PROGRAM and MAKER."; exit 1; }
rm -rf "$demo"
mkdir -p "$demo/models"
cd "$demo"

fail() {
    echo "FAILED: $*"
    exit 1
}

# Results above 100 kB: those of small ones are compared by what they hold, and a touch alone is nothing new.
for ((number = 1; number <= MODELS; number++)); do
    (cd models && "$MAKER" -cells $((60 + number % 5)) -times 6 "run_$(printf %02d "$number")" >/dev/null)
done

# configure <folder of the outputs> <program>
configure() {
    cat <<END
program: "$2"
output: $1
runs: ["models/*_h.dat"]
memory: 100
threads: 1
products:
  level_max: "-flt -grid100 -max"
  level_times: {switches: "-flt -grid200 -tAll", split_times: 3}
  level_points: "-shp -grid400 -t0.2"
END
}

# converted <log>: how many conversions the engine did.
converted() { grep -c -E '^(rule|checkpoint) convert' "$1" || true; }

# checksums <folder>: of what was converted; a .dbf but for its date.
checksums() {
    (cd "$1" && find . -path ./records -prune -o -type f ! -name '.snakemake_timestamp' ! -name 'summary.*' -print | sort | while read -r file; do
        if [ "${file##*.}" = dbf ]; then { head -c 1 "$file"; tail -c +5 "$file"; } | sha256sum | sed "s|-|$file|"; else sha256sum "$file"; fi
    done)
}
