# shellcheck shell=bash
# Wine prefixes and virtual displays for running programs. To be sourced.
#
# ARCH is x86 (32-bit Wine) or x64. A prefix is always named by its absolute path; nothing here touches ~/.wine, and
# for Wine's processes the home folder is PREFIX/home.
source "${BASH_SOURCE[0]%/*}/setup.sh"

# wine_env ARCH: sets the environment of Wine, all but WINEPREFIX, and the arrays WINE_COMMAND and WINESERVER_COMMAND.
# To be called in a subshell. LD_LIBRARY_PATH stays inside the two commands, where no program of the machine sees it.
wine_env() {
    local folder with_libraries=()
    case $1 in
        x86)
            if ! find_wine32; then
                say 'there is no 32-bit Wine yet'
                return 1
            fi
            folder=$WINE32_ROOT/usr/lib/wine
            with_libraries=(env "LD_LIBRARY_PATH=$(wine32_libraries "$WINE32_ROOT")")
            export WINEARCH=win32 WINELOADER=$folder/wine WINESERVER=$folder/wineserver32
            ;;
        x64)
            folder=/usr/lib/wine
            export WINEARCH=win64 WINELOADER=$folder/wine64 WINESERVER=$folder/wineserver64
            ;;
        *)
            say "unknown architecture '$1': x86 or x64"
            return 1
            ;;
    esac
    WINE_COMMAND=("${with_libraries[@]}" "$WINELOADER")
    WINESERVER_COMMAND=("${with_libraries[@]}" "$WINESERVER")
    unset WINEPREFIX WINEDLLPATH LANGUAGE XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME
    export WINEDEBUG=${WINEDEBUG:--all}
    export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
    export LC_ALL=C.UTF-8
    # Far from UTC and from every full hour, so that UTC and local times cannot pass for one another. In this form it
    # needs no time zone database.
    export TZ='<+0545>-5:45'
    # No drive letters for whatever volumes the machine announces.
    export DBUS_SYSTEM_BUS_ADDRESS=unix:path=/dev/null DBUS_SESSION_BUS_ADDRESS=unix:path=/dev/null
}

# exec_wine ARCH PREFIX SECONDS PROGRAM [ARGS...]: becomes the program, with exit code 124 when it exceeds its time.
# To be called in a background subshell. It ends when its caller ends, even by SIGKILL, but in a session of its own it
# does not get the Ctrl-C that is meant for the caller, which first wants to clean up.
exec_wine() {
    local arch=$1 prefix=$2 seconds=$3 with_parent=(setpriv --pdeathsig KILL --)
    shift 3
    wine_env "$arch" || exit 125
    if [[ $prefix != /* || ! -d $prefix ]]; then
        say "no prefix folder: '$prefix'"
        exit 125
    fi
    mkdir -p "$prefix/home"
    export XAUTHORITY=${XAUTHORITY:-$HOME/.Xauthority}
    export WINEPREFIX=$prefix HOME=$prefix/home
    exec "${with_parent[@]}" setsid timeout --kill-after=5 "$seconds" "${with_parent[@]}" "${WINE_COMMAND[@]}" "$@"
}

# run_wine ARCH PREFIX SECONDS PROGRAM [ARGS...]: the same, and waits for it. Never give it a pipe to write to: the
# first window of a prefix starts a desktop process, which inherits the pipe and keeps it open.
run_wine() {
    exec_wine "$@" </dev/null &
    wait $!
}

# control_wineserver ARCH PREFIX OPTION: -k ends all programs of the prefix, -w waits until they have ended.
control_wineserver() {
    (
        wine_env "$1" || exit
        export WINEPREFIX=$2 HOME=$2/home
        exec timeout 60 "${WINESERVER_COMMAND[@]}" "$3"
    ) >/dev/null 2>&1
}

# stop_prefix ARCH PREFIX: ends all programs of a prefix and saves its registry.
stop_prefix() {
    control_wineserver "$1" "$2" -k || true # it fails when none runs
    control_wineserver "$1" "$2" -w || return
    forget_wineserver "$2"
}

# end_prefix PREFIX: ends all programs of a prefix and removes it. An orderly end takes half a second, and one of the
# server alone leaves Wine's services behind; the processes are found by the prefix in their environment. That of a
# process whose first thread has ended, as Wine's device services do, is only to be read at another of its threads.
end_prefix() {
    local round processes
    for ((round = 0; round < 500; round++)); do
        mapfile -t processes < <(grep -lzxF "WINEPREFIX=$1" /proc/[0-9]*/task/*/environ 2>/dev/null | cut -d / -f 3)
        if ((${#processes[@]} == 0)); then break; fi
        kill -KILL "${processes[@]}" 2>/dev/null || true
        sleep 0.01
    done
    forget_wineserver "$1"
    rm -rf "$1"
}

# Removes the folder of the server's socket. Where there is no /run/user folder, a file of the prefix names it, and a
# copy of the prefix must not name the same one.
forget_wineserver() {
    local name='' device inode
    [[ -d $1 ]] || return 0
    [[ ! -f $1/wineserver ]] || name=$(<"$1/wineserver")
    if [[ $name =~ ^wine-[A-Za-z0-9]{6}$ ]]; then rm -rf "/tmp/$name"; fi
    read -r device inode < <(stat -c '%D %i' "$1")
    rm -rf "$1/wineserver" "/run/user/$EUID/wine/server-$device-$(printf %x "$inode")"
}

# Names the booted prefix that suits this Wine and the functions below that make it.
template_prefix() {
    local arch=$1 root='' key
    [[ $arch == x64 ]] || { find_wine32 && root=$WINE32_ROOT; } || return
    key=$(
        wine_env "$arch" || exit
        # Wine updates a prefix, slowly, when the time of its set-up script differs.
        "${WINE_COMMAND[@]}" --version && stat -c %Y "$root/usr/share/wine/wine.inf" || exit
        declare -f wine_env make_template_prefix boot_template write_template_settings isolate_template \
            forget_wineserver
    ) || return
    key=$(sha256sum <<<"$key")
    printf '%s\n' "$VELLUMOR_CACHE_DIR/prefixes/$arch-${key:0:16}"
}

# ensure_template_prefix ARCH: a booted prefix to copy, for a new one takes some ten seconds. Sets TEMPLATE_PREFIX.
ensure_template_prefix() {
    TEMPLATE_PREFIX=$(template_prefix "$1") || return
    [[ -d $TEMPLATE_PREFIX ]] || with_lock "prefix-$1" make_template_prefix "$1" "$TEMPLATE_PREFIX" || return
    touch "$TEMPLATE_PREFIX.used"
}

# To be called in a subshell.
make_template_prefix() {
    local arch=$1 template=$2 partial="$2.partial"
    if [[ -d $template ]]; then return; fi # another run has just made it
    say "making a Wine prefix for $arch, once"
    remove_old_templates "${template%/*}"
    # Whatever ends this. The folder's name is put in now: at the end this function's variables are gone.
    # shellcheck disable=SC2064
    trap "trap '' HUP INT TERM; end_prefix ${partial@Q}" EXIT
    end_prefix "$partial"
    mkdir -p "$partial" || return
    run_logged "Wine prefix for $arch" boot_template "$arch" "$partial" || return
    mv -T "$partial" "$template"
}

# Templates of other versions of Wine or of these scripts that no run has used for two weeks.
remove_old_templates() {
    local used
    while IFS= read -r used; do
        rm -rf "${used%.used}" "$used"
    done < <(find "$1" -name '*.used' -mtime +14 2>/dev/null)
}

boot_template() {
    local arch=$1 prefix=$2
    unset DISPLAY
    # Wine's own fonts, which it does not find where the package puts them. Its windows would lack the glyphs of their
    # buttons and the dialog font, so that texts would not fit their controls.
    mkdir -p "$prefix/drive_c/windows/Fonts" && cp /usr/share/wine/fonts/* "$prefix/drive_c/windows/Fonts/" || return
    run_wine "$arch" "$prefix" 300 wineboot --init || return
    write_template_settings "$prefix/drive_c/settings.reg" || return
    run_wine "$arch" "$prefix" 60 regedit /S 'C:\settings.reg' || return
    control_wineserver "$arch" "$prefix" -w || return
    forget_wineserver "$prefix"
    rm "$prefix/drive_c/settings.reg" || return
    # The registry editor reports no failure.
    grep -qxF '"Managed"="N"' "$prefix/user.reg" || return
    grep -qxF '"ShowCrashDialog"=dword:00000000' "$prefix/user.reg" || return
    isolate_template "$prefix"
}

# Managed: without a window manager Wine waits two seconds for every window that closes. ShowCrashDialog: a crash ends
# the program instead of waiting for somebody to close a dialog.
write_template_settings() {
    printf '%s\r\n' REGEDIT4 '' \
        '[HKEY_CURRENT_USER\Software\Wine\X11 Driver]' '"Managed"="N"' '' \
        '[HKEY_CURRENT_USER\Software\Wine\WineDbg]' '"ShowCrashDialog"=dword:00000000' >"$1"
}

# The profile's folders are links into the home folder, of this prefix and so of none of its copies.
isolate_template() {
    local link
    find "$1/dosdevices" -mindepth 1 -not -name c: -not -name z: -delete || return
    while IFS= read -r link; do
        rm "$link" && mkdir "$link" || return
    done < <(find "$1/drive_c" -type l)
}

# copy_prefix ARCH DEST: a fresh prefix in a folder that is missing or empty. Wine's own programs, nine tenths of a
# prefix, are shared with the template by hard links where the file system allows: a program may remove or replace such
# a file of its copy, but must not write into it.
copy_prefix() {
    local arch=$1 destination=$2 partial="$2.partial" windows=drive_c/windows folder
    local shared=(system32 winsxs resources globalization)
    ensure_template_prefix "$arch" || return
    rm -rf "$partial" && mkdir -p "$partial" || return
    tar -C "$TEMPLATE_PREFIX" "${shared[@]/#/--exclude=./$windows/}" -cf - . | tar -C "$partial" -xf - || return
    for folder in "${shared[@]/#/$windows/}"; do
        if cp -al "$TEMPLATE_PREFIX/$folder" "$partial/$folder" 2>/dev/null; then continue; fi
        rm -rf "${partial:?}/$folder"
        cp -a "$TEMPLATE_PREFIX/$folder" "$partial/$folder" || return
    done
    mv -T "$partial" "$destination"
}

# manage_windows PREFIX Y|N: whether the display's window manager moves, frames and focuses the windows of a prefix.
manage_windows() { sed -i "s/^\"Managed\"=\"[YN]\"/\"Managed\"=\"$2\"/" "$1/user.reg"; }

# start_display: a virtual screen of this process alone; sets DISPLAY. Not to be called in a subshell: the screen ends
# with its caller, even when that ends by SIGKILL.
start_display() {
    local answer number=
    exec {answer}< <(
        exec setpriv --pdeathsig TERM -- \
            setsid Xvfb -displayfd 1 -screen 0 1280x800x24 -dpi 96 -nolisten tcp -noreset </dev/null 2>/dev/null
    )
    DISPLAY_PID=$!
    read -r -t 60 number <&"$answer" || true
    exec {answer}<&-
    if [[ -z $number ]]; then
        say 'no virtual screen: Xvfb did not start'
        stop_display
        return 1
    fi
    export DISPLAY=:$number
    unset XAUTHORITY
}

stop_display() {
    [[ -n ${DISPLAY_PID:-} ]] || return 0
    kill "$DISPLAY_PID" 2>/dev/null || true
    wait "$DISPLAY_PID" 2>/dev/null || true
    unset DISPLAY_PID DISPLAY
}
