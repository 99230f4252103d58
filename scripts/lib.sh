# shellcheck shell=bash
# What the scripts of this folder share; sourced, never run. Sets $top, the top
# of the tree. A script that sources it may be started from any folder.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# say TEXT...: progress for the person who waits, apart from the results.
say() {
    printf '== %s\n' "$*" >&2
}

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 2
}

# as_root COMMAND...: an installation needs the rights that a container has and
# a person gets by sudo.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "needs root or sudo to run: $*"
    fi
}

# package_names LIST STEP...: the names in LIST that belong to one of the steps.
package_names() {
    local list=$1 name step wanted
    shift
    while read -r name step _; do
        case $name in '' | '#'*) continue ;; esac
        for wanted in "$@"; do
            if [ "$step" = "$wanted" ]; then
                printf '%s\n' "$name"
            fi
        done
    done <"$list"
}

is_installed() {
    local state
    state=$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) && [ "$state" = installed ]
}

# install_packages LIST STEP...: installs what is missing; asks the network
# nothing when nothing is.
install_packages() {
    local missing=() name
    command -v dpkg-query >/dev/null || die "this is no Debian system; see $1 for what is needed"
    while read -r name; do
        is_installed "$name" || missing+=("$name")
    done < <(package_names "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    say "installing ${missing[*]}"
    # As long as the packages can be installed, an old index will do.
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q >&2 || true
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
}

# build PRESET [TARGET...]: configures and builds; quiet unless something fails.
build() {
    local preset=$1 log
    shift
    log="$top/build/$preset.log"
    mkdir -p "$top/build"
    say "building $preset"
    if ! build_loudly "$preset" "$@" >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

build_loudly() {
    local preset=$1
    shift
    # What the compiler cache must overlook to work with precompiled headers, and
    # to know in one clone what was built in another.
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    export CCACHE_BASEDIR=$top CCACHE_NOHASHDIR=true
    # It also compares the language of the compiler's messages.
    export LC_ALL=C.UTF-8
    # Joined by "&&": the caller asks for the outcome, which switches off "set -e".
    (
        cd "$top" \
            && cmake --preset "$preset" \
            && cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
    )
}

# starter_settings PLATFORM: what an archive's first start makes the settings of. The
# languages are there to be changed, and stand in one place in the tree.
starter_settings() {
    cat "$top/app/$1/sarvik-starter.ini"
    printf '\n'
    cat "$top/list/langlist.ini"
}
