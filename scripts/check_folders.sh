#!/usr/bin/env bash
# Holds the includes of src/ against the table of docs/design.md: a folder's files include their own folder and those that its row names.
# Names each line that breaks the order, and each folder without a row; exit status 1 when there are any.
set -euo pipefail
cd "$(dirname "$0")/.."

awk '
    FILENAME ~ /design\.md$/ {
        if (match($0, /^\| `src\/[a-z_]+\/`/)) {
            split($0, cells, "|")
            folder = cells[2]
            gsub(/[ `]|src\/|\//, "", folder)
            known[folder] = 1
            rows++
            while (match(cells[4], /`[a-z_]+`/)) {
                allowed[folder, substr(cells[4], RSTART + 1, RLENGTH - 2)] = 1
                cells[4] = substr(cells[4], RSTART + RLENGTH)
            }
        }
        next
    }
    FNR == 1 { split(FILENAME, parts, "/"); from = parts[2]; if (!(from in known)) fault("src/" from "/ has no row in docs/design.md") }
    /^#include "[a-z_]+\// {
        split($2, parts, "/")
        to = substr(parts[1], 2)
        if (to != from && !((from, to) in allowed)) fault(FILENAME ":" FNR ": " from " may not include " to)
    }
    function fault(text) { if (!(text in said)) print text; said[text] = 1; faults++ }
    END {
        if (rows == 0) fault("docs/design.md has no table of folders")
        for (pair in allowed) {
            split(pair, both, SUBSEP)
            if ((both[2], both[1]) in allowed) fault(both[1] " and " both[2] " may include each other")
        }
        exit faults > 0
    }
' docs/design.md $(find src -name '*.cpp' -o -name '*.h' | sort)
