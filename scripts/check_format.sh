#!/usr/bin/env bash
# Checks that the sources are laid out as .clang-format says; names the files that are not. Releases of clang-format differ in small
# things, so only the one that the sources were laid out with is asked; with another, or none, the check says so and passes.
#   scripts/check_format.sh          check
#   scripts/check_format.sh --mend   lay them out
set -euo pipefail
cd "$(dirname "$0")/.."

RELEASE=14
tool=$(command -v "clang-format-$RELEASE" || command -v clang-format || true)
if [ -z "$tool" ] || ! "$tool" --version | grep -q "version $RELEASE\."; then
    echo "No clang-format $RELEASE: the layout of the sources is not checked."
    exit 0
fi
mapfile -d '' -t files < <(find src tests examples bench include \( -name '*.cpp' -o -name '*.h' -o -name '*.c' \) -print0 2>/dev/null)
if [ "${1:-}" = "--mend" ]; then
    "$tool" -i "${files[@]}"
else
    "$tool" --dry-run -Werror "${files[@]}"
fi
