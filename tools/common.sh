# Shared by the scripts in tools/ and by ./run and ./test; sourced, never run.
# shellcheck shell=bash

REPO=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
HOME=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}
export HOME
CACHE=${XDG_CACHE_HOME:-$HOME/.cache}/nxclip
LOGS=$REPO/build/logs

say() { printf '%s\n' "$*" >&2; }

# One sentence, then the end: whoever reads it must know what to do next.
fail() {
    say "${0##*/}: $*"
    exit 1
}

# as_root COMMAND...: never asks for a password, so that no script ever stands still.
as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
        sudo -n -- "$@"
    else
        return 77
    fi
}

# retry COMMAND...: mirrors lag and networks stumble; five tries, the last after about four minutes.
retry() {
    local pause
    for pause in 5 15 60 150 0; do
        "$@" && return 0
        [ $pause = 0 ] || sleep $pause
    done
    return 1
}

# with_lock NAME COMMAND...: one builder at a time for each thing in the cache.
with_lock() {
    local name=$1
    shift
    mkdir -p "$CACHE"
    (
        flock -w 900 9 || fail "another process has been building the $name for 15 minutes; end it and try again."
        "$@" 9>&-
    ) 9>"$CACHE/$name.lock"
}

# recipe FUNCTION... [-- TEXT...]: a short stamp that changes with the functions' text and the given versions.
recipe() {
    local part
    for part in "$@"; do
        declare -f "$part" || printf '%s\n' "$part"
    done | sha256sum | cut -c1-12
}

# build_once DIR COMMAND...: COMMAND fills the directory named by its last argument; DIR appears only when whole.
build_once() {
    local target=$1
    shift
    if [ -d "$target" ]; then
        touch -c "$target"
        return 0
    fi
    rm -rf "$target".part.*
    local part=$target.part.$$
    mkdir -p "$part"
    if "$@" "$part"; then
        mv -T "$part" "$target"
        forget_old "$target"
    else
        rm -rf "$part"
        return 1
    fi
}

# Earlier recipes of the same thing that nobody has used for two weeks only fill the disk.
forget_old() {
    local kind=${1%-*}
    find "${kind%/*}" -maxdepth 1 -name "${kind##*/}-????????????" ! -path "$1" -mtime +14 -exec rm -rf {} +
}

# The locales live in the cache (LOCPATH), so the machine's own list stays as it is.
build_locales() {
    localedef -i de_DE -f UTF-8 "$1/de_DE.UTF-8" && localedef -i pl_PL -f UTF-8 "$1/pl_PL.UTF-8"
}
locale_dir() { printf '%s\n' "$CACHE/locales-$(recipe build_locales)"; }
