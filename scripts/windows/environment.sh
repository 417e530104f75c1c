# What the scripts for Windows share, to be sourced: where the library and wine's settings are kept, outside build/.
#   WINDOWS_CACHE   ~/.cache/vorant_to_gis/windows when it is not set
export WINDOWS_CACHE=${WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/vorant_to_gis/windows}
export WINEPREFIX=${WINEPREFIX:-$WINDOWS_CACHE/wine}
export WINEDEBUG=${WINEDEBUG:--all}
export LC_ALL=C.UTF-8    # wine passes names and arguments through the locale
mkdir -p "$WINEPREFIX"
# wine starts at once where its server is still there.
[ ! -x /usr/lib/wine/wineserver64 ] || /usr/lib/wine/wineserver64 -p60 </dev/null >/dev/null 2>&1 || true
