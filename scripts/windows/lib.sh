# shellcheck shell=bash
# What the scripts of this folder share; sourced, never run. Sets $top and the
# folders that the Windows build needs outside the tree.

# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../lib.sh"

# cache_folder: absolute, since scripts change folders and Wine knows no other prefix.
cache_folder() {
    local folder=${SARVIK_CACHE:-}
    if [ -z "$folder" ]; then
        [ -n "${XDG_CACHE_HOME:-}${HOME:-}" ] \
            || die "neither HOME nor SARVIK_CACHE is set: no folder for the toolkit"
        folder=${XDG_CACHE_HOME:-$HOME/.cache}/sarvik
    fi
    case $folder in
        /*) printf '%s' "$folder" ;;
        *) printf '%s/%s' "$PWD" "$folder" ;;
    esac
}

windows_cache=$(cache_folder)/windows
# Read by the preset "windows".
export SARVIK_WINDOWS_QT_FOLDER=$windows_cache/qt
export WINEPREFIX=$windows_cache/wine
export WINEDEBUG=${WINEDEBUG:--all}
# Wine would offer to download what no program here needs, put entries into the menus
# of the desktop, and show a dialog for what crashes, which then stays there.
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe,winedbg.exe='

windows_bin=$top/build/windows/bin
compiler=x86_64-w64-mingw32-g++-posix

# own_cache: of scripts that change the cache or run Wine in it, one at a time, until
# this script ends: what may outlive it is started with 9>&-.
own_cache() {
    mkdir -p "$windows_cache"
    exec 9>"$windows_cache/lock"
    if ! flock --nonblock 9; then
        say "waiting for another run that uses $windows_cache"
        flock 9
    fi
}

have_windows_toolkit() {
    [ -f "$SARVIK_WINDOWS_QT_FOLDER/bin/Qt5Core.dll" ]
}

need_windows_toolkit() {
    if ! have_windows_toolkit || ! command -v "$compiler" >/dev/null || ! command -v wine >/dev/null; then
        die "the tools for Windows are not set up; run scripts/windows/setup first"
    fi
}

need_windows_build() {
    if [ ! -f "$windows_bin/sarvik.exe" ]; then
        die "nothing is built for Windows; run scripts/windows/build first"
    fi
}

# The DLLs of the compiler that every program needs beside it.
compiler_dlls() {
    local name
    for name in libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll; do
        dll_of_compiler "$name"
    done
}

dll_of_compiler() {
    local path
    path=$("$compiler" -print-file-name="$1")
    # The compiler gives the bare name back for what it does not have itself.
    [ -f "$path" ] || path=/usr/x86_64-w64-mingw32/lib/$1
    [ -f "$path" ] || die "the compiler has no $1"
    printf '%s\n' "$path"
}

# windows_path PATH: as Wine names it.
windows_path() {
    printf 'Z:%s' "${1//\//\\}"
}

# use_toolkits_dlls: lets Wine find what every program needs.
use_toolkits_dlls() {
    local folders dll
    folders=$(windows_path "$SARVIK_WINDOWS_QT_FOLDER/bin")
    while read -r dll; do
        folders+=";$(windows_path "${dll%/*}")"
    done < <(compiler_dlls)
    export WINEPATH=$folders
}
