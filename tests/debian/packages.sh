#!/usr/bin/env bash
# The Debian packages: lintian has nothing to say, and installed into an empty root they convert the example, then leave nothing behind.
#   tests/debian/packages.sh <folder of packages> <scratch folder>
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
packages=$(realpath "$1")
rm -rf "$2"
mkdir -p "$2/root/var/lib/dpkg"
scratch=$(realpath "$2")
root=$scratch/root
touch "$root/var/lib/dpkg/status"
failures=0
fail() { failures=$((failures + 1)); echo "FAILED: $*"; }

if command -v lintian >/dev/null; then
    said=$(lintian "$packages"/*.deb 2>&1 | grep -E '^[EW]: ' || true)
    [ -z "$said" ] || fail "lintian: $said"
else
    echo "No lintian: what it asks of packages is not looked at."
fi

# What they depend on is taken from this machine: the loader finds it where it is.
in_root() { dpkg --root="$root" --force-depends --force-not-root --log="$scratch/log" "$@" >"$scratch/dpkg.txt" 2>&1; }
in_root -i "$packages"/*.deb || fail "dpkg -i: $(tail -n 3 "$scratch/dpkg.txt")"
depends=$(dpkg --root="$root" -s vorant-to-gis | sed -n 's/^Depends: //p')
[[ $depends == *libhdf5* && $depends == *libc6* && $depends != *gdal* ]] || fail "vorant-to-gis depends on $depends"

program=$root/usr/bin/VORANT_to_GIS
documents=$root/usr/share/doc/vorant-to-gis
man=$(gzip -dc "$root/usr/share/man/man1/VORANT_to_GIS.1.gz")
[[ $man == *"$(dpkg --root="$root" -s vorant-to-gis | sed -n 's/^Version: //p')"* ]] || fail "the manual is of another version"
while read -r page; do
    for link in $(grep -oE '\]\([^)#:]+' "$page" | cut -c3-); do
        [ -e "$(dirname "$page")/$link" ] || fail "$page leads to $link, which is not there"
    done
done < <(find "$documents" -name '*.md')
# The whole guide by the installed program, on the installed example; the module comes from its own package.
PROGRAM=$program EXAMPLE=$documents/examples MAKER=false SHARED_DATA="" SCRATCH=$scratch/guide bash "$here/../end_to_end/guide.sh" || fail "the guide"
cd "$scratch/guide/data"
in_root --purge vorant-to-gis-gdal || fail "dpkg --purge: $(tail -n 3 "$scratch/dpkg.txt")"
said=$("$program" -b -gtif -grid100 -out again basin.2dm </dev/null 2>&1 || true)
[[ $said == *"vorant-to-gis-gdal"* ]] || fail "without its module -gtif does not say what is missing"

in_root --purge vorant-to-gis libvorant-routines-dev libvorant-routines1 || fail "dpkg --purge: $(tail -n 3 "$scratch/dpkg.txt")"
left=$(find "$root" -path "$root/var" -prune -o ! -type d -print)
[ -z "$left" ] || fail "left behind: $left"
[ "$failures" -eq 0 ] && echo "The packages install, convert and leave nothing behind."
exit "$((failures > 0))"
