#!/usr/bin/env bash
# The library as it is installed: moved to another folder, found through pkg-config, and showing the routines of its header and nothing else.
# BUILD, SOURCE, SCRATCH: folders. CC and CFLAGS: how the library was built. VERSION: the package's.
set -euo pipefail

rm -rf "$SCRATCH"
mkdir -p "$SCRATCH"
for component in routines routines_dev; do
    cmake --install "$BUILD" --component $component --prefix "$SCRATCH/first" >/dev/null
done
mv "$SCRATCH/first" "$SCRATCH/moved here"
prefix="$SCRATCH/moved here"

header="$prefix/include/vorant_routines.h"
package=$(find "$prefix" -name vorant_routines.pc)
library=$(find "$prefix" -name libvorant_routines.so)
PKG_CONFIG_PATH=$(dirname "$package")
export PKG_CONFIG_PATH
[ "$(pkg-config --modversion vorant_routines)" = "$VERSION" ]

sed -n 's/^VORANT_API [a-z0-9_]* \([A-Z0-9_]*\)(.*/\1/p' "$header" | sort >"$SCRATCH/declared"
# Instances of the C++ library's own templates are always visible.
nm -D --defined-only "$library" | awk '{ print $3 }' | grep -v '^_ZZ\{0,1\}N\{0,1\}K\{0,1\}S\|^_ZT[IVS]S\|^__' | sort >"$SCRATCH/exported"
diff "$SCRATCH/declared" "$SCRATCH/exported"

eval "flags=($(pkg-config --cflags --libs vorant_routines))"
# shellcheck disable=SC2086
"$CC" -std=c99 $CFLAGS "$SOURCE/tests/routines/routines.c" "${flags[@]}" -lm -o "$SCRATCH/routines"
LD_LIBRARY_PATH=$(dirname "$library") "$SCRATCH/routines" "$SCRATCH/lines.txt" 2>"$SCRATCH/messages" || { cat "$SCRATCH/messages"; exit 1; }
diff - "$SCRATCH/messages" <<END
ERROR - Could not read /proc/self/mem: Input/output error
Invalid number of polygons in region sent to inside_polygon routine [1] - contact the maintainers (see README)
END
