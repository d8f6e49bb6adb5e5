# shellcheck shell=bash
# common.sh: what all the scripts share: places, messages, logs, locks.  Sourced, never run.
#
# File descriptor 9 is the lock of this checkout while a command holds it.  Everything that is
# started and may outlive its starter (servers above all) gets "9>&-": a lock that such a process
# inherits would be held as long as it lives.

# Set by the command that sources this file: the root of the checkout.
: "${root:?}"
# Some build services run without HOME.
: "${HOME:=$(getent passwd "$(id -u)" | cut -d: -f6)}"
export HOME
cache=${TANDREL_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/tandrel}
logs=$root/build/logs

# Progress goes to standard output, so that standard error holds the reason of a failure alone.
say() { printf 'tandrel: %s\n' "$*"; }

fail() {
    printf 'tandrel: %s\n' "$*" >&2
    exit 1
}

# await COMMAND...: runs it and returns its exit code.  The command runs in the background because
# bash would otherwise put off its traps until the command has ended.
awaited=
await() {
    "$@" <&0 9>&- &
    awaited=$!
    local code=0
    wait "$awaited" || code=$?
    awaited=
    return "$code"
}

# Ends a process that we started, with its children.
end_tree() {
    local child children
    read -r children 2>/dev/null <"/proc/$1/task/$1/children" || true
    for child in ${children:-}; do end_tree "$child"; done
    kill "$1" 2>/dev/null || true
}

# At the end of a command, however it comes, these functions run, the last one added first.
at_exit=()
clean_up() {
    local code=$? i
    trap '' INT TERM HUP
    [ -z "$awaited" ] || end_tree "$awaited"
    for ((i = ${#at_exit[@]} - 1; i >= 0; i--)); do "${at_exit[i]}" || true; done
    exit "$code"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# The sentence for a failure whose output is in the file LOG.
explain() { # WHAT LOG
    if grep -qiE 'no space left|enough free space' "$2"; then
        fail "$1 failed: the disk is full (log: $2)"
    elif grep -qiE 'could not (connect|resolve)|failed to fetch|connection (failed|timed out|refused)|temporary failure|network is unreachable|unable to connect' "$2"; then
        fail "$1 failed: Debian's packages cannot be downloaded; check the network connection (log: $2)"
    fi
    fail "$1 failed (log: $2)"
}

# logged NAME WHAT COMMAND...: output to build/logs/NAME.log; shows its end when the command fails.
logged() {
    local log=$logs/$1.log what=$2
    shift 2
    if ! await "$@" </dev/null >"$log" 2>&1; then
        tail -n 30 "$log"
        explain "$what" "$log"
    fi
}

need_space() { # DIRECTORY MEGABYTES WHAT
    local free
    free=$(df --output=avail -m -- "$1" | tail -n 1)
    [ "$free" -ge "$2" ] ||
        fail "not enough disk space in $1: $3 needs $2 MB, $((free)) MB are free"
}

# lock FD WAITING: takes the lock of the open descriptor, saying WAITING if somebody else has it.
lock() {
    flock --exclusive --timeout 1 "$1" && return
    say "$2"
    # Not in the background: the descriptor has to be open in flock.
    flock --exclusive "$1"
}

make_folders() {
    mkdir -p "$logs" "$cache" 2>/dev/null ||
        fail "cannot write to $logs and $cache"
    mkdir -p "$checkout"
    printf '%s\n' "$root" >"$checkout/path"
}

# Where the cache keeps what belongs to this checkout.
checkout=$cache/checkouts/$(printf '%s' "$root" | sha256sum | cut -c1-12)

# One command at a time uses a checkout: the build folder and Wine's data are shared.
lock_checkout() {
    exec 9>"$checkout/lock"
    lock 9 "waiting for another command in this checkout to end"
}
