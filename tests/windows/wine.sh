#!/usr/bin/env bash
# Runs a Windows program under wine as if it were one of this machine: its lines come without carriage returns.
#   tests/windows/wine.sh PROGRAM.exe ARGUMENTS...
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/windows/environment.sh"
# Through files: wine's own servers outlive the program and would keep a pipe open.
said=$(mktemp -d)
trap 'rm -rf "$said"' EXIT
/usr/lib/wine/wine64 "$@" >"$said/out" 2>"$said/errors"
status=$?
tr -d '\r' <"$said/out"
tr -d '\r' <"$said/errors" >&2
exit "$status"
