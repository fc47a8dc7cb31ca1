# shellcheck shell=bash
# Installs what is missing on a Debian 12 amd64 machine, as root or through sudo. To be sourced. Every ensure_*
# function is quick when nothing is missing, so that each command can simply call it first.

# What is made once and shared by all working copies: the 32-bit Wine, booted prefixes, logs of failures.
VELLUMOR_CACHE_DIR=${VELLUMOR_CACHE:-${XDG_CACHE_HOME:-${HOME:?}/.cache}/vellumor}
[[ $VELLUMOR_CACHE_DIR == /* ]] || VELLUMOR_CACHE_DIR=$PWD/$VELLUMOR_CACHE_DIR

say() { printf 'vellumor: %s\n' "$*" >&2; }

as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        say "neither root nor sudo is here to run: $*"
        return 1
    fi
}

# with_lock NAME COMMAND...: runs a command while no other process runs one under the same name. The command does
# not inherit the lock: a server that it leaves behind would hold it.
with_lock() {
    local file=$VELLUMOR_CACHE_DIR/locks/$1
    shift
    mkdir -p "${file%/*}" || return
    (flock 9 && "$@" 9>&-) 9>"$file"
}

# run_logged TITLE COMMAND...: runs a command with its output in a log file; a failure keeps it and shows its end.
run_logged() {
    local title=$1 log=$VELLUMOR_CACHE_DIR/logs/${1// /-}.log
    shift
    mkdir -p "${log%/*}" || return
    if "$@" </dev/null >"$log" 2>&1; then
        rm -f "$log"
        return
    fi
    say "$title failed. The end of $log:"
    tail -n 20 "$log" >&2
    return 1
}

missing_packages() {
    local package architecture status
    local -A installed=()
    while read -r package architecture status; do
        if [[ $status == installed && $architecture != i386 ]]; then installed[$package]=1; fi
    done < <(dpkg-query -W -f '${Package} ${Architecture} ${db:Status-Status}\n' "$@" 2>/dev/null)
    for package in "$@"; do
        [[ -v installed[$package] ]] || printf '%s\n' "$package"
    done
}

install_packages() {
    local apt=(as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3)
    # Some package source of the machine that does not answer need not be one of ours: the install will tell.
    "${apt[@]}" update || echo 'The package lists could not all be updated.'
    "${apt[@]}" install -y --no-install-recommends "$@"
}

install_missing_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@") # again: another run may have installed them meanwhile
    ((${#missing[@]})) || return 0
    say "installing packages: ${missing[*]}"
    run_logged 'package installation' install_packages "${missing[@]}"
}

ensure_packages() {
    if ! command -v dpkg-query apt-get >/dev/null; then
        say "this is no Debian machine. Install by hand what these packages hold: $*"
        return 1
    fi
    [[ -z $(missing_packages "$@") ]] || with_lock packages install_missing_packages "$@"
}

ensure_build_tools() {
    ensure_packages g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix g++ cmake ninja-build doctest-dev \
        cmark-gfm fp-utils libcli11-dev nlohmann-json3-dev
}

ensure_check_tools() {
    ensure_packages clang-format clang-tidy git
}

ensure_fuzz_tools() {
    ensure_packages clang libclang-rt-14-dev
}

# Both Wines with their fonts, and the virtual screen and the camera for their windows.
ensure_wine() {
    ensure_packages wine64 fonts-wine xvfb imagemagick || return
    find_wine32 && return
    ensure_packages debootstrap || return
    with_lock wine32 make_wine32 || return
    find_wine32
}

# The i386 libraries below a root folder, for LD_LIBRARY_PATH.
wine32_libraries() { printf '%s\n' "$1/lib/i386-linux-gnu:$1/usr/lib/i386-linux-gnu"; }

wine32_works() {
    local version
    [[ -x $1/usr/lib/wine/wine && -x $1/usr/lib/wine/wineserver32 ]] || return
    version=$(LD_LIBRARY_PATH=$(wine32_libraries "$1") "$1/usr/lib/wine/wine" --version 2>/dev/null) || return
    [[ $version == wine-* ]]
}

# Sets WINE32_ROOT to the root folder of a 32-bit Wine that runs: the machine's own, or the one in the cache.
find_wine32() {
    for WINE32_ROOT in '' "$VELLUMOR_CACHE_DIR/wine32"; do
        if wine32_works "$WINE32_ROOT"; then return; fi
    done
    return 1
}

# A tree of i386 packages of its own. Adding i386 as an architecture of the machine would tie us to two package
# indexes that must agree, and would change the machine.
make_wine32() {
    local tree=$VELLUMOR_CACHE_DIR/wine32
    if find_wine32; then return; fi # another run has just made it
    if [[ ! -d $tree ]]; then
        say "setting up a 32-bit Wine in $tree: 0.8 GB, about a minute, once"
        run_logged '32-bit Wine' download_wine32 "$tree" || return
    fi
    ensure_i386_loader "$tree" || return
    if ! wine32_works "$tree"; then
        say "the 32-bit Wine in $tree does not run here; remove that folder to have it set up again"
        return 1
    fi
}

# The tree gets its name when it is complete, so what an interrupted set-up leaves is never mistaken for it.
download_wine32() {
    local tree=$1 partial=$1.partial own_mounts=()
    as_root rm -rf --one-file-system "$partial" || return
    # With mounts of its own, an interrupted set-up leaves none of them in the tree.
    if as_root unshare --mount true; then own_mounts=(unshare --mount); fi
    as_root "${own_mounts[@]}" debootstrap --arch=i386 --variant=minbase --include=wine32 bookworm "$partial" || return
    # The tree's own script for starting the server prefers the machine's 64-bit one, perhaps of another version.
    # shellcheck disable=SC2016
    printf '%s\n' '#!/bin/sh' 'exec "${0%/*}/wineserver32" -p0 "$@"' |
        as_root tee "$partial/usr/lib/wine/wineserver" || return
    as_root find "$partial/var/cache/apt/archives" "$partial/var/lib/apt/lists" -type f -delete || return
    as_root mv -T "$partial" "$tree"
}

# The kernel looks for the loader of 32-bit programs at this one path. A copy, because a link of the machine into
# somebody's cache folder would let that user choose what everybody's 32-bit programs run.
ensure_i386_loader() {
    [[ -x /lib/ld-linux.so.2 ]] || as_root install -m 755 "$1/lib/i386-linux-gnu/ld-linux.so.2" /lib/ld-linux.so.2
}
