#!/bin/bash
# emulator.sh [--win64] PROGRAM.exe [ARGUMENT...]
#
# Runs one Windows program under Wine, with the environment that the tests need.  CTest starts every
# test through this script.  All it needs is taken from the environment:
#
#   TANDREL_WINE      folder with the programs wine and wineserver
#   TANDREL_PREFIXES  Wine's data, without the number of the seat
#   WINEPATH          the compiler's run-time libraries
#
# Inside of environment.sh they are set, and where there are several seats the program takes one that
# is free.  Outside of it they come from build/wine-TARGET.env, which every set-up leaves behind, so
# that "ctest --preset win32" works from the command line.  That is slow: with no server kept up,
# every test waits four seconds for Wine to start and to end.
set -euo pipefail

target=win32
if [ "${1:-}" = --win64 ]; then
    target=win64
    shift
fi
if [ -z "${TANDREL_WINE:-}" ] || [ -z "${TANDREL_PREFIXES:-}" ]; then
    env_file=$(dirname "${BASH_SOURCE[0]}")/../build/wine-$target.env
    if [ ! -r "$env_file" ]; then
        echo "emulator.sh: Wine is not set up yet; run ./test once." >&2
        exit 127
    fi
    # shellcheck source=/dev/null
    . "$env_file"
fi

# Sets Wine's data, the screen and the home folder of a seat.
take_seat() { # SEAT
    local displays
    read -r -a displays <<<"${TANDREL_DISPLAYS:-}"
    [ "${#displays[@]}" -lt "$1" ] || export DISPLAY=${displays[$1 - 1]}
    WINEPREFIX=$TANDREL_PREFIXES$1
    # Wine must not lay hands on the user's own folders.
    export WINEPREFIX HOME=$WINEPREFIX.home
}

# Without UTF-8 file names lose their eighth bit and arguments are damaged.
export LC_ALL=C.UTF-8
# Wine takes the rules of the zone from here; a test may set another one.
export TZ=${TZ:-UTC}
export WINEDEBUG=${WINEDEBUG:--all}
# No debugger: a crash has to end the program at once.  No menus of the desktop either.
export WINEDLLOVERRIDES='mscoree,mshtml,winedbg.exe,winemenubuilder.exe='
# The user's own X server wants its cookie.
export XAUTHORITY=${XAUTHORITY:-${HOME:-}/.Xauthority}

# Outside of environment.sh: wait for a command that uses the same prefix, and let it wait for us.  (-o: the
# Wine server must not inherit the lock.)
if [ -z "${TANDREL_ENVIRONMENT:-}" ] && [ -n "${TANDREL_LOCK:-}" ]; then
    [ -n "${DISPLAY:-}" ] ||
        echo 'emulator.sh: no DISPLAY, so no windows; try scripts/environment.sh COMMAND.' >&2
    take_seat 1
    exec flock --shared -o "$TANDREL_LOCK" "$TANDREL_WINE/wine" "$@"
fi
# The desktop's keeper, or the only seat.
if [ -n "${TANDREL_SEAT:-}" ] || [ "${TANDREL_SEATS:-1}" = 1 ]; then
    take_seat "${TANDREL_SEAT:-1}"
    exec "$TANDREL_WINE/wine" "$@"
fi
# 200: somebody else has that seat.  (-o: what the program leaves behind must not keep it.)
while :; do
    for ((seat = 1; seat <= TANDREL_SEATS; seat++)); do
        take_seat "$seat"
        code=0
        flock --nonblock -E 200 -o "$WINEPREFIX.seat" "$TANDREL_WINE/wine" "$@" || code=$?
        [ "$code" = 200 ] || exit "$code"
    done
    sleep 0.05
done
