#!/usr/bin/env bash
# The manual's page and the completion for bash say what the program's own usage text says. PROGRAM, MAN_PAGE, COMPLETION, SCRATCH.
set -u
failures=0
fail() { failures=$((failures + 1)); echo "FAILED: $*"; }

mkdir -p "$SCRATCH" && cd "$SCRATCH" || exit 1
rm -rf data && mkdir data && cd data || exit 1

# Every word of the usage text, in its order, but for what separates a switch from its text and the colons of headings.
words() { tr -s ' \t' '\n\n' | sed -E 's/[,:.]+$//' | grep -vxE -- '-?'; }
sed -E '/^\.(TH|SH NAME|nh|ad)/d; /^\.SH (OPTIONS|EXIT STATUS|SYNOPSIS|EXAMPLES|SEE ALSO)/d; s/^\.(TP|PP|br|B|SS|IR)//; s/^ "(.*)"$/\1/; s/\\\(dq/"/g; s/\\\(aq/'"'"'/g; s/\\e/\\/g; s/\\-/-/g; s/\\&//g' \
    "$MAN_PAGE" | words >page
"$PROGRAM" --help </dev/null | sed '1,/^VORANT_to_GIS Description/d; /^Options:/d; /^EXAMPLES:/d' | words >usage
missing=$(diff usage page | sed -n 's/^< //p')
[ "$(wc -l <usage)" -gt 900 ] || fail "the usage text has only $(wc -l <usage) words"
[ -z "$missing" ] || fail "the page lacks, or has in another order: $missing"
if command -v man >/dev/null; then
    warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=100 man --warnings -E UTF-8 -l -Tutf8 -Z "$MAN_PAGE" 2>&1 >/dev/null)
    [ -z "$warnings" ] || fail "groff: $warnings"
fi

# What is offered behind a command line, words separated by "|".
. "$COMPLETION"
touch run_h.dat RUN.XMDF "two words.2dm" notes.txt banks.mif
mkdir folder
offered() {
    local expected=$1
    shift
    COMP_WORDS=(VORANT_to_GIS "$@")
    COMP_CWORD=$#
    _VORANT_to_GIS 2>/dev/null
    local got
    got=$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd '|')
    [ "$got" = "$expected" ] || fail "behind $*: $got, expected $expected"
}
offered "-cc|-cd|-co|-compass|-cp|-cpsd|-crs" -c
offered "-Folder" -FOL                  # as the usage text writes it
offered "-flt" -fl                      # of no row of its own
offered "-help" -he
offered "-version" -vers
offered "RUN.XMDF|folder|run_h.dat|two words.2dm" -asc ""
offered "run_h.dat" -asc r
offered "banks.mif" -LP b
offered "folder" -into ""               # no file
offered "" -rmp ""                      # a name inside the mesh
offered "notes.txt" -out no             # a name like an earlier one
offered "" -zzz

[ "$failures" -eq 0 ] && echo "every word and every completion is there"
exit "$((failures > 0))"
