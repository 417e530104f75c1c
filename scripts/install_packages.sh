#!/usr/bin/env bash
# Installs what is missing on a Debian-like machine. Groups: build (compiler, CMake, HDF5, zlib), tests (doctest, GDAL's tools, a Fortran
# compiler, pkg-config, Python), gdal (GDAL's library, for the module of its formats), fuzz (clang with its fuzzer), packages (what builds
# Debian's and looks at them), windows (a compiler for Windows, and wine), bench (GDAL's tools, GNU time), workflow (Snakemake), cluster
# (Slurm). What is there already, from whatever source, is left alone.
#   scripts/install_packages.sh build tests
set -euo pipefail

CMAKE_NEEDED=3.25

have_file() {
    local file
    for file in "$@"; do [ -e "$file" ] && return 0; done
    return 1
}

# Prints the packages whose contents cannot be found, one a line.
missing_packages() {
    local group
    for group in "$@"; do
        case $group in
            build)
                [ -n "${CXX:-}" ] || command -v g++ >/dev/null || echo g++
                [ -n "${CC:-}" ] || command -v cc >/dev/null || echo gcc
                command -v cmake >/dev/null || echo cmake
                command -v make >/dev/null || [ -n "${CMAKE_GENERATOR:-}" ] || echo make
                command -v h5cc >/dev/null || have_file /usr/include/hdf5/serial/hdf5.h /usr/include/hdf5.h || echo libhdf5-dev
                have_file /usr/include/zlib.h /usr/local/include/zlib.h || echo zlib1g-dev
                ;;
            tests)
                have_file /usr/include/doctest/doctest.h /usr/local/include/doctest/doctest.h || echo doctest-dev
                command -v gdal_translate >/dev/null || echo gdal-bin
                command -v awk >/dev/null || echo mawk
                [ -n "${FC:-}" ] || command -v gfortran >/dev/null || echo gfortran
                command -v pkg-config >/dev/null || echo pkg-config
                command -v python3 >/dev/null || echo python3
                ;;
            gdal)
                have_file /usr/include/gdal/gdal.h /usr/include/gdal.h /usr/local/include/gdal.h || echo libgdal-dev
                ;;
            fuzz)
                command -v clang++ >/dev/null || echo clang
                have_file /usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-*.a || echo libclang-rt-dev
                ;;
            packages)
                command -v dpkg-shlibdeps >/dev/null || echo dpkg-dev
                command -v lintian >/dev/null || echo lintian
                ;;
            windows)
                command -v x86_64-w64-mingw32-g++-posix >/dev/null || echo g++-mingw-w64-x86-64-posix
                have_file /usr/x86_64-w64-mingw32/lib/libz.a || echo libz-mingw-w64-dev
                have_file /usr/lib/wine/wine64 || echo wine64
                command -v dpkg-source >/dev/null || echo dpkg-dev
                ;;
            bench)
                command -v gdal_translate >/dev/null || echo gdal-bin
                have_file /usr/bin/time || echo time
                ;;
            workflow)
                command -v gdal_translate >/dev/null || echo gdal-bin
                command -v snakemake >/dev/null || echo snakemake
                ;;
            cluster)
                command -v sbatch >/dev/null || echo slurm-wlm
                have_file /usr/sbin/munged || echo munge
                ;;
            *)
                echo "Unknown group of packages: $group" >&2
                return 1
                ;;
        esac
    done | sort -u
}

# Runs a command as root, or says why it cannot.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        if [ -t 0 ]; then sudo "$@"; else sudo -n "$@"; fi
    else
        echo "Neither root nor sudo." >&2
        return 1
    fi
}

install() {
    echo "Installing: $*"
    as_root true || return 1
    as_root apt-get update -qq || echo "The package lists could not be renewed; going on with those that are there." >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >/dev/null
}

# True when version $1 is at least $2.
at_least() { [ "$(printf '%s\n%s\n' "$2" "$1" | sort -V | head -n 1)" = "$2" ]; }

mapfile -t missing < <(missing_packages "$@")
if [ "${#missing[@]}" -gt 0 ]; then
    if ! command -v apt-get >/dev/null; then
        echo "ERROR - This machine has no apt-get. Please install what these Debian packages hold, then run this again: ${missing[*]}" >&2
        exit 1
    fi
    if ! install "${missing[@]}"; then
        echo "ERROR - Could not install: ${missing[*]}. Please run as root: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    mapfile -t missing < <(missing_packages "$@")
    if [ "${#missing[@]}" -gt 0 ]; then
        echo "ERROR - Installed, but still not found: ${missing[*]}" >&2
        exit 1
    fi
fi

version=$(cmake --version | sed -n '1s/^cmake version \([0-9.]*\).*/\1/p')
if ! at_least "$version" "$CMAKE_NEEDED"; then
    echo "ERROR - CMake $CMAKE_NEEDED or later is needed; found $version." >&2
    exit 1
fi
