# shellcheck shell=bash disable=SC2154
# prefix.sh: Wine's data for one run.  Sourced.
#
# Every run starts with a fresh copy of the template, so that nothing a program writes into its
# registry or its drive C: reaches a later run.  The copy stays until the next run, for a look at
# what a failed test left behind.  Each checkout has its own; of the 590 MB all but 20 are hard
# links to the template, which only Wine's own unchanging files may be.

# Exports what emulator.sh wants and leaves it in build/wine.env for use outside of environment.sh.
fresh_prefix() {
    local shared=drive_c/windows/system32
    export TANDREL_WINE=$wine WINEPREFIX=$checkout/prefix
    "$wine/wineserver32" -k 2>/dev/null || true # of a program started by hand
    rm -rf "$WINEPREFIX" "$WINEPREFIX.home"
    mkdir -p "$WINEPREFIX/${shared%/*}" "$WINEPREFIX.home"
    cp -al "$prefix_template/prefix/$shared" "$WINEPREFIX/$shared" 2>/dev/null || {
        rm -rf "${WINEPREFIX:?}/$shared" # a file system without hard links
        cp -a "$prefix_template/prefix/$shared" "$WINEPREFIX/$shared"
    }
    cp -an "$prefix_template/prefix/." "$WINEPREFIX/"

    printf 'export TANDREL_WINE=%q WINEPREFIX=%q TANDREL_LOCK=%q\n' \
        "$wine" "$WINEPREFIX" "$checkout/lock" >"$root/build/wine.env"
}

# Starts Wine in the background; await_wine says when it can be used.
#
# The server of this prefix stays up between programs: a start then takes 30 ms, not a second.  The
# first program starts Wine's services and its desktop, which inherit its standard output and error:
# it must not be one whose output somebody reads to the end.
keeper_pid=
start_wine() {
    at_exit+=(stop_wine)
    "$wine/wineserver32" -p 9>&-
    : >"$logs/wine.log"
    "$root/scripts/emulator.sh" 'C:\windows\keep-desktop.exe' \
        </dev/null >"$logs/wine.log" 2>&1 9>&- &
    keeper_pid=$!
}

await_wine() {
    local i
    for ((i = 0; i < 1200; i++)); do
        ! grep -q ready "$logs/wine.log" || return 0
        kill -0 "$keeper_pid" 2>/dev/null || break
        sleep 0.05
    done
    explain "starting Wine" "$logs/wine.log"
}

# Ends the server and with it all that still runs in this prefix.  Nobody needs to wait for that:
# this last process keeps the checkout's lock until it is done.
stop_wine() {
    "$wine/wineserver32" -k </dev/null >/dev/null 2>&1 &
}
