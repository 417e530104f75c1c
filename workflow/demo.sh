#!/usr/bin/env bash
# Converts small models on this machine: what is new is converted and nothing else, also behind a kill.
#   workflow/demo.sh      PROGRAM, MAKER: the executables; MODELS: how many (24); DEMO: the folder, which is made anew
. "$(dirname "${BASH_SOURCE[0]}")/demo_common.sh"

# flow <configuration> <log> <more...>
flow() {
    local configuration=$1 log=$2
    shift 2
    snakemake -s "$workflow/Snakefile" --configfile "$configuration" --profile "$workflow/profiles/local" --cores 2 "$@" >"$log" 2>&1
}

configure outputs "$PROGRAM" >undisturbed.yaml
configure resumed "$PROGRAM" >killed.yaml

echo "--- $MODELS models, three products of each"
flow undisturbed.yaml first.log || fail "see $demo/first.log"
cut -d, -f 1-4,6,7 outputs/summary.csv | column -s, -t | sed -n '1,5p;$p'
[ "$(grep -c ',done,' outputs/summary.csv)" -eq $((3 * MODELS)) ] || fail "not everything is done"

echo "--- again: nothing to do"
flow undisturbed.yaml second.log
grep "Nothing to be done" second.log || fail "something was done again"

echo "--- the results of run_02 are touched: they alone are converted again"
touch models/run_02_h.dat
flow undisturbed.yaml touched.log
grep -E '^    output: ' touched.log | grep -o 'outputs/level[^,]*' | sort
[ "$(converted touched.log)" -eq 5 ] || fail "$(converted touched.log) conversions"

echo "--- killed in the middle (SIGKILL), then called again: the files of the run that nobody disturbed"
setsid snakemake -s "$workflow/Snakefile" --configfile killed.yaml --profile "$workflow/profiles/local" --cores 2 >killed.log 2>&1 &
engine=$!
until [ "$(find resumed/records/level* -name '*.json' 2>/dev/null | wc -l)" -ge "$MODELS" ]; do
    kill -0 $engine 2>/dev/null || fail "it ended before it could be killed, see $demo/killed.log"
    sleep 0.1
done
kill -KILL -- -$engine
{ wait $engine; } 2>killed_status.txt || true
echo "$(find resumed/records/level* -name '*.json' | wc -l) of $((5 * MODELS)) conversions were there"
flow killed.yaml unlock.log --unlock
flow killed.yaml resumed.log || fail "see $demo/resumed.log"
echo "$(converted resumed.log) conversions behind it"
diff <(checksums outputs) <(checksums resumed) || fail "the files differ"
echo "$(checksums resumed | wc -l) files, all equal"
