#!/usr/bin/env bash
# Long runs of the fuzz targets, one after the other: tests/fuzz/long.sh [seconds of each, 3600] [targets...]
# Each ends after 10^7 executions at the latest. What it finds stays in build/dev/fuzz/found_<target> and crash_<target>.
set -u
cd "$(dirname "$0")/../.." || exit 1
seconds=${1:-3600}
shift
[ $# -gt 0 ] || set -- mif shp 2dm dat xmdf grid projection arguments
fuzz=build/dev/fuzz
[ -x $fuzz/tests/fuzz/fuzz_mif ] || ctest --preset dev -R "fuzz_(configure|build)" || exit 1
export TMPDIR=/dev/shm  # the files of an execution are written and read some thousand times a second
failed=0
for target in "$@"; do
    mkdir -p $fuzz/found_"$target"
    limits=(-malloc_limit_mb=64)
    export ASAN_OPTIONS=suppressions=tests/fuzz/hdf5.supp:allocator_may_return_null=1
    # HDF5 falls over some damage by itself; its crashes are kept, and the target goes on past them.
    if [ "$target" = xmdf ]; then
        limits=(-malloc_limit_mb=0 -fork=1 -ignore_crashes=1 -ignore_ooms=1 -ignore_timeouts=0)
        ASAN_OPTIONS+=:detect_leaks=0
    fi
    $fuzz/tests/fuzz/fuzz_"$target" -max_total_time="$seconds" -runs=10000000 -max_len=30000 -timeout=10 "${limits[@]}" -rss_limit_mb=1024 \
        -print_final_stats=1 -verbosity=0 -artifact_prefix=$fuzz/crash_"$target"_ $fuzz/found_"$target" tests/fuzz/corpus_"$target" >$fuzz/long_"$target".log 2>&1 || failed=1
    [ "$target" != xmdf ] || tests/fuzz/judge_crashes.sh $fuzz/tests/fuzz/fuzz_xmdf $fuzz/crash_xmdf_ || failed=1
    ! grep -E 'runtime error:|bytes of memory, more than' $fuzz/long_"$target".log || failed=1
    echo "$target: $(grep -E 'number_of_executed|peak_rss|SUMMARY' $fuzz/long_"$target".log | sed 's/stat:://; s/: */ /' | tr '\n' ' ')"
done
exit $failed
