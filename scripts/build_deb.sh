#!/usr/bin/env bash
# Builds the Debian packages of this version into build/deb/packages and, with --test, looks at them with lintian and runs what they install.
set -euo pipefail
cd "$(dirname "$0")/.."

MAINTAINER="VORANT_to_GIS maintainers <maintainers@vorant-to-gis.example>"
build=$PWD/build/deb
files=$build/debian
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)

packages=(build gdal)
[ "${1:-}" != --test ] || packages+=(packages)
scripts/install_packages.sh "${packages[@]}"
command -v dpkg-shlibdeps >/dev/null || { echo "ERROR - dpkg-shlibdeps is needed (Debian: package dpkg-dev)." >&2; exit 1; }
umask 022
mkdir -p "$files"
cp scripts/debian/copyright "$files/"
# The first section of the project's list of changes, in Debian's form.
{
    echo "vorant-to-gis ($version) unstable; urgency=medium"
    echo
    awk '/^## / { if (sections++) exit; next } sections && /^- / { sub(/^- /, "  * "); print; next } sections && /[^ ]/ { print "  " $0 }' CHANGELOG.md | fold -s -w 76 | sed -E 's/^([^ ])/    \1/; s/ +$//'
    echo
    echo " -- $MAINTAINER  $(date -R -u -d "@${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date +%s)}")"
} | gzip -9n >"$files/changelog.gz"

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O3 -DNDEBUG" -DCMAKE_INSTALL_PREFIX=/usr -DBUILD_TESTS=OFF \
    "-DDEBIAN_FILES=$files" "-DDEBIAN_MAINTAINER=$MAINTAINER" >/dev/null
cmake --build "$build" --parallel "$(nproc)"
rm -rf "$build/packages"
cpack --config "$build/CPackConfig.cmake" -B "$build/packages"
rm -rf "$build/packages/_CPack_Packages"

# CPack calls ldconfig for whatever is a .so; the one public library has a trigger for it.
for package in "$build"/packages/*.deb; do
    rm -rf "$build/unpacked"
    dpkg-deb -R "$package" "$build/unpacked"
    rm -f "$build/unpacked/DEBIAN/postinst" "$build/unpacked/DEBIAN/postrm"
    dpkg-deb --root-owner-group -b "$build/unpacked" "$package" >/dev/null
done
rm -rf "$build/unpacked"
ls -l "$build/packages"
[ "${1:-}" != --test ] || tests/debian/packages.sh "$build/packages" "$build/scratch"
