#!/usr/bin/env bash
# Plants the slips of a list into a copy of the code, one at a time, and runs the tests on each until one notices: a slip
# that none does shows where a test is missing. tests/plant_faults.sh [text...]: only rows that hold one of the texts.
# LIST=<file> takes another list than tests/planted_faults.txt. A row takes half a minute or, when nothing notices it,
# three. What was found lies in build/planted/found.txt, the output of each row's tests in build/planted/rows.
set -euo pipefail
cd "$(dirname "$0")/.."
list=$(realpath "${LIST:-tests/planted_faults.txt}")
work=$PWD/build/planted
copy=$work/source
build=$work/build
jobs=$(nproc)
longest=300          # seconds of a test; a slip may wait for ever
most_memory=8000000  # kB; a size gone wrong ends the program, not the machine

# Texts and places, not expressions: what stands in a row is looked for as it is.
slips() {
    python3 - "$copy" "$list" "$@" <<'PY'
import os, sys
copy, listed, task, *words = sys.argv[1:]

def read(name):
    with open(os.path.join(copy, name), encoding="utf-8", newline="") as file:
        return file.read()

def write(name, text):
    with open(os.path.join(copy, name), "w", encoding="utf-8", newline="") as file:
        file.write(text)

with open(listed, encoding="utf-8") as file:
    rows = [line.rstrip("\n") for line in file if line.strip() and not line.startswith("#")]
if task == "check":
    faults = 0
    for row in rows:
        parts = row.split(" | ")
        known = len(parts) == 3 and parts[1] != parts[2] and os.path.isfile(os.path.join(copy, parts[0]))
        times = read(parts[0]).count(parts[1]) if known else 0
        if times != 1:
            faults += 1
            print(f"ERROR - {listed}: " + (f"stands there {times} times" if known else "no slip of a file") + f": {row}", file=sys.stderr)
    sys.exit(faults > 0)
if task == "rows":
    print("\n".join(row for row in rows if not words or any(word in row for word in words)))
if task == "plant":
    name, old, new = words[0].split(" | ")
    write(name, read(name).replace(old, new))
PY
}

# The copy is brought up to date file by file: what has not changed is not built again.
mkdir -p "$copy" "$work/rows"
git ls-files -z | while IFS= read -r -d '' file; do
    [ -f "$file" ] || continue
    cmp -s "$file" "$copy/$file" || { mkdir -p "$copy/$(dirname "$file")" && cp "$file" "$copy/$file"; }
done
(cd "$copy" && find . -type f -printf '%P\0') | while IFS= read -r -d '' file; do [ -f "$file" ] || rm "$copy/$file"; done
slips check
slips rows "$@" >"$work/wanted.txt"

export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}
quick=()
! command -v ccache >/dev/null || quick+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
! command -v mold >/dev/null || quick+=(-DCMAKE_{EXE,SHARED,MODULE}_LINKER_FLAGS=-fuse-ld=mold)
[ ! -d ../shared/data ] || quick+=("-DSHARED_DATA=$(realpath ../shared/data)")
# The library's own checks of indices stand for the sanitizers, which take too long for a build a row.
cmake -S "$copy" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -D_GLIBCXX_ASSERTIONS" -DBUILD_TESTS=ON "${quick[@]}" >"$work/configure.txt"

planted=
restore() { [ -z "$planted" ] || cp "$work/whole" "$copy/$planted"; planted=; }
trap restore EXIT
trap 'exit 130' INT TERM HUP

# units <which...>: false, and by whom the slip is noticed, when a test of these fails.
units() {
    local status=0
    (ulimit -v $most_memory && timeout --kill-after 10 $longest "$build/tests/unit_tests" --abort-after=1 "$@") >"$work/test.txt" 2>&1 || status=$?
    case $status in
        0) return 0 ;;
        124 | 137) echo "a timeout (unit_tests)" ;;
        *) echo "unit_tests" ;;
    esac
    return 1
}

# By whom a slip in a folder is noticed; nothing when it is not. Its own tests come first: they are the likeliest to.
noticed_by() {
    local test own="*/tests/$1/*"
    cmake --build "$build" --parallel "$jobs" --target unit_tests >"$work/test.txt" 2>&1 || { echo "the compiler"; return; }
    units --source-file="$own" && units --source-file-exclude="$own" || return 0
    cmake --build "$build" --parallel "$jobs" >"$work/test.txt" 2>&1 || { echo "the compiler"; return; }
    ulimit -v $most_memory
    ctest --test-dir "$build" --exclude-regex "^(unit_tests|fuzz.*|faults|installed|routines_installed|end_to_end_guide)$" --timeout $longest \
        --stop-on-failure --output-on-failure --parallel "$jobs" >"$work/test.txt" 2>&1 && return
    test=$(sed -nE 's/.*Test +#[0-9]+: ([a-z0-9_]+) \.*.*\*\*\*.*/\1/p' "$work/test.txt" | head -1)
    if grep -q "$test .*\*\*\*Timeout" "$work/test.txt"; then echo "a timeout ($test)"; else echo "${test:-ctest}"; fi
}

by=$(noticed_by nothing </dev/null)
[ -z "$by" ] || { cat "$work/test.txt"; echo "ERROR - Without a slip the tests fail: $by." >&2; exit 1; }
count=0 noticed=0
: >"$work/found.txt"
while IFS= read -r row; do
    planted=${row%% | *}
    cp "$copy/$planted" "$work/whole"
    slips plant "$row"
    by=$(noticed_by "$(cut -d/ -f2 <<<"$planted")" </dev/null)
    restore
    count=$((count + 1))
    mv "$work/test.txt" "$work/rows/$count.txt"
    [ -z "$by" ] || noticed=$((noticed + 1))
    echo "$count ${by:-NOT NOTICED}: $row" | tee -a "$work/found.txt"
done <"$work/wanted.txt"
echo "$noticed of $count slips noticed" | tee -a "$work/found.txt"
[ $# -gt 0 ] || [ $((10 * noticed)) -ge $((9 * count)) ] || { echo "ERROR - Fewer than nine of ten." >&2; exit 1; }
