#!/usr/bin/env bash
# tests/fuzz/judge_crashes.sh <target> <beginning of the names of kept inputs>: runs the target with each once more and fails unless every
# end is a crash inside HDF5. A run in fork mode goes on past crashes and shows nothing of their stacks.
set -u
log=$(mktemp)
failed=0
for input in "$2"crash-* "$2"leak-* "$2"oom-* "$2"timeout-*; do
    [ -e "$input" ] || continue
    "$1" -timeout=10 -rss_limit_mb=0 -malloc_limit_mb=0 "$input" >"$log" 2>&1 && continue
    # Whose code is uppermost in the stack: above it stand the sanitizer, the C library and what throws and ends the process.
    first=$(grep -m 1 -E '^ *#[0-9]+ .*(libhdf5|[/ ](src|tests)/[a-z0-9_/]+\.(cpp|h):)' "$log")
    if [[ $first != *libhdf5* ]] || grep -q "bytes of memory, more than\|libFuzzer: timeout\|runtime error:" "$log"; then
        failed=1
        echo "FAILED: $input"
        grep -m 3 -E "ERROR:|runtime error:" "$log"
        echo "${first:-no stack}"
    fi
done
rm -f "$log"
exit $failed
