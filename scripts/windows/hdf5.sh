#!/usr/bin/env bash
# Builds the HDF5 library as a static one for 64-bit Windows, from Debian's source package, and prints the folder that it is installed in.
# Takes a few minutes of one core the first time; the library then stays in the cache folder, outside build/.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/environment.sh"

VERSION=1.10.8
cache=$WINDOWS_CACHE
prefix=$cache/hdf5-$VERSION
package=$prefix/share/cmake/hdf5-config.cmake

if [ -e "$package" ]; then
    echo "$prefix"
    exit
fi
mkdir -p "$cache"
work=$(mktemp -d "$cache/hdf5_build.XXXXXX")
log=$cache/hdf5_build.log
ended() {
    local status=$?
    rm -rf "$work"
    [ "$status" -eq 0 ] || { tail -n 20 "$log"; echo "ERROR - HDF5 could not be built for Windows; the whole log is $log"; } >&2
}
trap ended EXIT
echo "Building HDF5 $VERSION for Windows..." >&2

# The source of the release that this machine installs from, found through package lists of its own: the machine's set-up stays as it is.
fetch_source() {
    local options=(-qq -o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=/dev/null
        -o "Dir::State::Lists=$work/lists" -o APT::Sandbox::User=root)
    mkdir -p "$work/lists/partial"
    apt-get indextargets 'Created-By: Packages' 'Origin: Debian' --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' >"$work/sources.list"
    apt-get "${options[@]}" update
    apt-get "${options[@]}" source hdf5
}

build() {
    cd "$work"
    fetch_source
    local source
    source=$(echo "$work"/hdf5-*/)
    case $source in */hdf5-"$VERSION"*/) ;; *) echo "Debian's source is not $VERSION: $source"; exit 1 ;; esac
    # The compiler has no such header, and nothing of it is used on Windows.
    sed -i 's|^#include <sys/wait.h>|#ifndef _WIN32\n&\n#endif|' "$source/src/H5private.h"
    mkdir build
    cd build  # its generators write into the folder that they are run in
    cmake "$source" -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix.new" \
        -DBUILD_SHARED_LIBS=OFF -DBUILD_STATIC_LIBS=ON -DBUILD_TESTING=OFF -DHDF5_BUILD_TOOLS=OFF -DHDF5_BUILD_EXAMPLES=OFF \
        -DHDF5_BUILD_HL_LIB=OFF -DHDF5_BUILD_CPP_LIB=OFF -DHDF5_ENABLE_SZIP_SUPPORT=OFF -DHDF5_ENABLE_Z_LIB_SUPPORT=ON \
        -DZLIB_LIBRARY=/usr/x86_64-w64-mingw32/lib/libz.a -DZLIB_INCLUDE_DIR=/usr/x86_64-w64-mingw32/include
    cmake --build . --parallel "$(nproc)"
    rm -rf "$prefix.new"
    cmake --install .
    cp "$source/COPYING" "$prefix.new/COPYING"
    rm -rf "$prefix"
    mv "$prefix.new" "$prefix"
}
build >"$log" 2>&1
echo "$prefix"
