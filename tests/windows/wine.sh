#!/usr/bin/env bash
# Runs a Windows program under wine as if it were one of this machine: its lines come without carriage returns.
#   tests/windows/wine.sh PROGRAM.exe ARGUMENTS...
set -o pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/windows/environment.sh"
{ /usr/lib/wine/wine64 "$@" 2>&1 >&3 3>&- | tr -d '\r' >&2; } 3>&1 | tr -d '\r'
