# Wine for both word sizes, and lanes: prefixes of their own for things that must not disturb each other.
# Sourced after common.sh; looks for what is there, since releases differ in where they put it. Words: a "template" is a whole prefix in the cache, made once; a "lane" is a small
# prefix that borrows the template's windows directory and so is there in hundredths of a second.
# shellcheck shell=bash

LANES=$CACHE/lanes

# ---- A 32-bit Wine without the i386 architecture in this machine's apt ----------------------------------------
# apt resolves and fetches the i386 packages with a state of its own (empty status file, this machine's Debian
# release); they are only unpacked, nothing of them is installed or run as root. The C library comes from
# libc6-i386, because the program loader is the machine's and both must be of one version.

wine32_fetch() {
    local state=$1
    mkdir -p "$state/lists/partial" "$state/archives/partial"
    : >"$state/status"
    # The release itself without its update suites: complete at every time, also while a mirror is being refreshed.
    local codename
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    wine32_sources "$codename" >"$state/sources.list"
    if [ ! -s "$state/sources.list" ]; then
        # apt tells its sources only once it has fetched their lists, which images for containers throw away.
        mkdir -p "$state/own/lists/partial"
        apt-get -q -o Dir::State="$state/own" -o APT::Sandbox::User=root update
        wine32_sources "$codename" -o Dir::State="$state/own" >"$state/sources.list"
    fi
    [ -s "$state/sources.list" ] || { echo "this machine's apt has no source for $codename"; return 1; }
    cat >"$state/apt.conf" <<EOF
Dir::State "$state";
Dir::State::status "$state/status";
Dir::Cache "$state";
Dir::Etc::SourceList "$state/sources.list";
Dir::Etc::SourceParts "/dev/null";
Dir::Etc::Preferences "/dev/null";
Dir::Etc::PreferencesParts "/dev/null";
APT::Architecture "i386";
APT::Architectures { "i386"; };
APT::Install-Recommends "false";
APT::Sandbox::User "root";
#clear APT::Update::Post-Invoke;
#clear APT::Update::Post-Invoke-Success;
#clear DPkg::Post-Invoke;
Acquire::Languages "none";
EOF
    retry wine32_download "$state"
}

# wine32_sources CODENAME [APT-OPTION...]: the machine's own Debian release, wherever it fetches that from.
wine32_sources() {
    local codename=$1
    shift
    apt-get "$@" indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI) $(ORIGIN)' 'Created-By: Packages' | sort -u |
        awk -v codename="$codename" '$1 == codename && $2 == "main" && ($4 == "" || $4 == "Debian") {
            print "deb [arch=i386] " $3 " " $1 " " $2 }'
}

wine32_download() {
    APT_CONFIG=$1/apt.conf apt-get -q update &&
        APT_CONFIG=$1/apt.conf apt-get -q -y --download-only install wine wine32 fonts-wine libxfixes3 libxcursor1 \
            libxi6 libxrandr2 libxrender1 libxinerama1 libxcomposite1 libxxf86vm1
}

wine32_tree() {
    local tree=$1 package
    wine32_fetch "$tree/apt" || return 1
    for package in "$tree"/apt/archives/*.deb; do
        dpkg-deb -x "$package" "$tree" || return 1
    done
    rm -rf "$tree/apt" "$tree/usr/share/doc" "$tree/usr/lib/i386-linux-gnu/wine/x86_64-windows"
    # The package marks zlib as one of Wine's own libraries when it is installed; here nothing is installed.
    local zlib=$tree/usr/i686-w64-mingw32/lib/zlib1.dll
    { head -c 64 "$zlib"; printf 'Wine builtin DLL'; head -c 16 /dev/zero; tail -c +97 "$zlib"; } \
        >"$tree/usr/lib/i386-linux-gnu/wine/i386-windows/zlib1.dll"
}

wine32_dir() { printf '%s\n' "$CACHE/wine32-$(recipe wine32_fetch wine32_sources wine32_download wine32_tree)"; }
wine32_build() { with_lock wine32 build_once "$(wine32_dir)" wine32_tree; }

# ---- The environment -------------------------------------------------------------------------------------------

# wine_programs BITS: sets WINELOADER, WINESERVER, WINEARCH, WINE_LIBRARIES, WINE_SHARE; false when there is no such
# Wine.
wine_programs() {
    if [ "$1" = 32 ] && ! wine_runs_both; then
        local tree
        tree=$(wine32_dir)
        WINELOADER=$tree/usr/lib/wine/wine
        WINESERVER=$tree/usr/lib/wine/wineserver32
        WINEARCH=win32
        WINE_LIBRARIES=/lib32:$tree/lib/i386-linux-gnu:$tree/usr/lib/i386-linux-gnu
        [ -e /lib/ld-linux.so.2 ] || return 1
    else
        WINELOADER=$(wine64_program wine)
        WINESERVER=$(wine64_program wineserver)
        WINEARCH=win64
        WINE_LIBRARIES=
    fi
    WINE_SHARE=$(wine_root "$WINELOADER")/share/wine
    export WINELOADER WINESERVER WINEARCH
    [ -x "$WINELOADER" ] && [ -x "$WINESERVER" ]
}

# wine64_program NAME: the machine's own. Some releases have a name of its own for the 64-bit one, some have no other.
wine64_program() {
    local program
    for program in "/usr/lib/wine/${1}64" "/usr/lib/wine/$1" "$(command -v "${1}64")" "$(command -v "$1")"; do
        [ ! -x "$program" ] || { readlink -f "$program" && return; }
    done
}

# wine_root LOADER: the directory with its "share".
wine_root() {
    local root=${1%/bin/*}
    printf '%s\n' "${root%/lib/wine/*}"
}

# A 64-bit Wine that brings the 32-bit libraries of Windows along runs both kinds of programs in one prefix.
wine_runs_both() {
    local root libraries
    root=$(wine_root "$(wine64_program wine)")
    for libraries in "$root"/lib/x86_64-linux-gnu/wine "$root"/lib/wine "$root"/lib64/wine; do
        [ ! -e "$libraries/i386-windows/ntdll.dll" ] || return 0
    done
    return 1
}

# A crash must end the program instead of waiting in a debugger's dialog; nothing may touch the user's menus.
wine_environment() {
    LOCPATH=$(locale_dir)
    export LOCPATH
    { export LC_ALL=${NXCLIP_LOCALE:-de_DE.UTF-8}; } 2>/dev/null # bash itself cannot load it and says so
    export WINEDEBUG=${WINEDEBUG:--all}
    export WINEDLLOVERRIDES="winedbg.exe=d;winemenubuilder.exe=d;mscoree=;mshtml="
    unset LANG LANGUAGE
}

wine_do() { LD_LIBRARY_PATH=$WINE_LIBRARIES "$@"; }

# ---- Templates -------------------------------------------------------------------------------------------------

template_fill() {
    local prefix=$1 link
    (
        unset DISPLAY
        export WINEPREFIX=$prefix HOME=$prefix
        wine_do timeout 180 "$WINELOADER" wineboot -i </dev/null &&
            wine_do timeout 60 "$WINESERVER" -w
    ) || return 1
    # The user's folders must not lead out of the prefix.
    find "$prefix/drive_c/users" -type l | while read -r link; do
        rm "$link" && mkdir "$link"
    done
    # Marlett draws the caption buttons and the arrows. This Wine does not look into the directory of its own fonts,
    # and of them no other is wanted: Tahoma would change the size of every dialog.
    cp "$WINE_SHARE/fonts/marlett.ttf" "$prefix/drive_c/windows/Fonts/" || return 1
    [ -s "$prefix/user.reg" ]
}

template_dir() {
    local bits=$1 both=
    ! wine_runs_both || { bits=64 && both=both; }
    # shellcheck disable=SC2086
    printf '%s\n' "$CACHE/prefix$bits-$(recipe template_fill "$(wine_version "$bits")" $both)"
}
wine_version() {
    if [ "$1" = 32 ]; then
        wine32_dir
    else
        dpkg-query -W -f '${Version}' wine64 fonts-wine 2>/dev/null || "$(wine64_program wine)" --version
    fi
}

# wine_prepare BITS: everything a lane needs, made when missing.
wine_prepare() {
    if [ "$1" = 32 ] && ! wine_runs_both; then wine32_build || return 1; fi
    wine_programs "$1" || return 1
    wine_environment
    with_lock "prefix$1" build_once "$(template_dir "$1")" template_fill
}

# wine_available BITS: true when lanes can be made right now.
wine_available() { wine_programs "$1" && [ -d "$(template_dir "$1")" ]; }

# ---- Lanes -----------------------------------------------------------------------------------------------------

# prefix_make DIR BITS LOOK DPI: LOOK is "null" (no display, a clipboard of its own), "x11" (windows on DISPLAY)
# or "WIDTHxHEIGHT" (a virtual desktop of that size on DISPLAY).
prefix_make() {
    local dir=$1 template entry
    template=$(template_dir "$2")
    touch -c "$template"
    mkdir -p "$dir/drive_c" "$dir/bin" "$dir/scratch"
    cp -a "$template"/*.reg "$template/.update-timestamp" "$template/dosdevices" "$dir/"
    for entry in "$template"/drive_c/*; do
        [ "${entry##*/}" = windows ] || cp -a "$entry" "$dir/drive_c/"
    done
    ln -sfn "$template/drive_c/windows" "$dir/drive_c/windows"
    prefix_settings "$3" "$4" >>"$dir/user.reg"
    prefix_shim wine "$WINELOADER" >"$dir/bin/wine"
    prefix_shim wineserver "$WINESERVER" >"$dir/bin/wineserver"
    chmod +x "$dir"/bin/*
}

prefix_settings() {
    printf '\n[Control Panel\\\\Desktop] 1\n"LogPixels"=dword:%08x\n' "$2"
    case $1 in
    null) printf '\n[Software\\\\Wine\\\\Drivers] 1\n"Graphics"="null"\n' ;;
    *x*[0-9]) [ "$1" = x11 ] ||
        printf '\n[Software\\\\Wine\\\\Explorer] 1\n"Desktop"="Default"\n\n[Software\\\\Wine\\\\Explorer\\\\Desktops] 1\n"Default"="%s"\n' "$1" ;;
    esac
}

# The library path belongs to Wine alone: the machine's own programs in a desktop session must not see it.
prefix_shim() {
    printf '#!/bin/sh\nLD_LIBRARY_PATH=%q exec %q "$@"\n' "$WINE_LIBRARIES" "$2"
}

# lane_start DIR BITS LOOK DPI OWNER: makes the lane when it is not there and keeps it warm, so that the next
# program starts in hundredths of a second and the clipboard outlives its owner. The lane ends with lane_stop or,
# whatever happens, with the process OWNER (0: only with lane_stop).
lane_start() {
    local dir=$1
    mkdir -p "${dir%/*}"
    (
        flock -w 120 8 || exit 1
        lane_alive "$dir" && exit 0
        rm -rf "$dir"
        prefix_make "$dir" "$2" "$3" "$4" || exit 1
        lane_wake "$dir" "$3" "$5" 8>&-
    ) 8>"$dir.lock"
}

lane_alive() { [ -e "$1/keeper" ] && kill -0 "$(cat "$1/keeper")" 2>/dev/null; }

# lane_wake DIR LOOK OWNER: returns when the resident process runs, so that no later program has to start the
# server and hand its own output pipe down to it.
lane_wake() {
    local dir=$1 tries
    mkfifo "$dir/hold" 2>/dev/null
    : >"$dir/resident.out"
    setsid bash -c '. "$1/tools/common.sh"; . "$1/tools/wine.sh"; shift; lane_keep "$@"' keeper \
        "$REPO" "$dir" "$2" "$3" </dev/null >/dev/null 2>&1 &
    for ((tries = 0; tries < 600; tries++)); do
        [ -s "$dir/resident.out" ] && return 0
        sleep 0.05
    done
    return 1
}

lane_keep() {
    local dir=$1 look=$2 owner=$3
    echo $BASHPID >"$dir/keeper"
    export WINEPREFIX=$dir
    cd "$dir/scratch" || exit 1
    # An open pipe as its input keeps the command interpreter waiting for ever. Its greeting says that it runs; of
    # the virtual desktop the window is the sign.
    exec 7<>"$dir/hold"
    case $look in
    null)
        unset DISPLAY
        "$dir/bin/wine" cmd <&7 >"$dir/resident.out" 2>&1 7>&- &
        ;;
    x11) "$dir/bin/wine" cmd <&7 >"$dir/resident.out" 2>&1 7>&- & ;;
    *)
        "$dir/bin/wine" explorer.exe /desktop=Default cmd <&7 >/dev/null 2>&1 7>&- &
        lane_desktop_ready && echo ready >"$dir/resident.out"
        ;;
    esac
    while [ -e "$dir/keeper" ] && { [ "$owner" = 0 ] || kill -0 "$owner" 2>/dev/null; }; do
        sleep 0.5
    done
    if [ -e "$dir/keeper" ]; then lane_stop "$dir"; fi
}

lane_desktop_ready() {
    local tries
    for ((tries = 0; tries < 500; tries++)); do
        xdotool search --name 'Wine desktop' >/dev/null 2>&1 && return 0
        sleep 0.05
    done
    return 1
}

lane_stop() {
    [ -d "$1" ] || return 0
    rm -f "$1/keeper"
    WINEPREFIX=$1 timeout 30 "$1/bin/wineserver" -k >/dev/null 2>&1
    rm -rf "$1" "$1.lock"
}

# lane_enter DIR: the environment of programs that run in the lane.
lane_enter() {
    export WINEPREFIX=$1 PATH=$1/bin:$PATH
}
