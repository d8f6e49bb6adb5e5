# shellcheck shell=bash disable=SC2154
# prefix.sh: Wine's data for one run.  Sourced.
#
# Every run starts with a fresh copy of the template, so that nothing a program writes into its
# registry or its drive C: reaches a later run.  The copy stays until the next run, for a look at
# what a failed test left behind.  Each checkout has its own; of the 590 MB all but 20 are hard
# links to the template, which only Wine's own unchanging files may be.

# Tests open windows, and two programs on one screen would take the focus from each other. So there
# are seats: each has Wine's data, a Wine server and a screen of its own, and room for one program.
# Seat 1 is the one that "./run" uses.

seat_prefix() { # SEAT
    echo "$checkout/$target-$1"
}

# Exports what emulator.sh wants and leaves it in build/wine-TARGET.env for use outside of
# environment.sh.
fresh_prefixes() { # SEATS
    local seat
    export TANDREL_WINE=$wine TANDREL_SEATS=$1 TANDREL_PREFIXES=$checkout/$target-
    export TANDREL_TARGET=$target WINEPATH=$run_time
    for ((seat = 1; seat <= $1; seat++)); do fresh_prefix "$seat"; done
    WINEPREFIX=$(seat_prefix 1)
    export WINEPREFIX
    printf 'export TANDREL_WINE=%q TANDREL_PREFIXES=%q TANDREL_LOCK=%q WINEPATH=%q WINEPREFIX=%q\n' \
        "$wine" "$TANDREL_PREFIXES" "$checkout/lock" "$WINEPATH" "$WINEPREFIX" \
        >"$root/build/wine-$target.env"
}

fresh_prefix() { # SEAT
    local shared=drive_c/windows/system32 prefix
    prefix=$(seat_prefix "$1")
    WINEPREFIX=$prefix "$wine/wineserver" -k 2>/dev/null || true # of a program started by hand
    rm -rf "$prefix" "$prefix.home"
    mkdir -p "$prefix/${shared%/*}" "$prefix.home"
    cp -al "$prefix_template/prefix/$shared" "$prefix/$shared" 2>/dev/null || {
        rm -rf "${prefix:?}/$shared" # a file system without hard links
        cp -a "$prefix_template/prefix/$shared" "$prefix/$shared"
    }
    cp -an "$prefix_template/prefix/." "$prefix/"
    : >"$prefix.seat"
}

# Starts Wine in the background; await_wine says when it can be used.
#
# The server of a prefix stays up between programs: a start then takes 30 ms, not a second.  The
# first program starts Wine's services and its desktop, which inherit its standard output and error:
# it must not be one whose output somebody reads to the end.
keeper_pids=()
start_wine() {
    local seat prefix
    [ "${#keeper_pids[@]}" != 0 ] || at_exit+=(stop_wine)
    keeper_pids=()
    for ((seat = 1; seat <= TANDREL_SEATS; seat++)); do
        prefix=$(seat_prefix "$seat")
        WINEPREFIX=$prefix "$wine/wineserver" -p 9>&-
        : >"$logs/wine$seat.log"
        TANDREL_SEAT=$seat "$root/scripts/emulator.sh" 'C:\windows\keep-desktop.exe' \
            </dev/null >"$logs/wine$seat.log" 2>&1 9>&- &
        keeper_pids+=($!)
    done
}

await_wine() {
    local i seat
    for ((seat = 1; seat <= TANDREL_SEATS; seat++)); do
        for ((i = 0; i < 1200; i++)); do
            ! grep -q ready "$logs/wine$seat.log" || continue 2
            kill -0 "${keeper_pids[seat - 1]}" 2>/dev/null || break
            sleep 0.05
        done
        explain "starting Wine" "$logs/wine$seat.log"
    done
}

# Ends the servers and with them all that still runs in these prefixes.  Nobody needs to wait for
# that: these last processes keep the checkout's lock until they are done.
stop_wine() {
    local seat
    for ((seat = 1; seat <= TANDREL_SEATS; seat++)); do
        WINEPREFIX=$(seat_prefix "$seat") "$wine/wineserver" -k </dev/null >/dev/null 2>&1 &
    done
}
