#!/bin/bash
# emulator.sh PROGRAM.exe [ARGUMENT...]
#
# Runs one 32-bit Windows program under Wine, with the environment that the tests need.  CTest
# starts every test through this script.  All it needs is taken from the environment:
#
#   TANDREL_WINE   folder with the programs wine32 and wineserver32
#   WINEPREFIX     Wine's data
#
# Inside of environment.sh both are set, and where there are several seats the program takes one that
# is free.  Outside of it they come from build/wine.env, which every
# set-up leaves behind, so that "ctest --preset win32" works from the command line.  That is slow:
# with no server kept up, every test waits four seconds for Wine to start and to end.
set -euo pipefail

if [ -z "${TANDREL_WINE:-}" ] || [ -z "${WINEPREFIX:-}" ]; then
    env_file=$(dirname "${BASH_SOURCE[0]}")/../build/wine.env
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
    if [ -n "${TANDREL_CHECKOUT:-}" ]; then
        WINEPREFIX=$TANDREL_CHECKOUT/prefix
        [ "$1" = 1 ] || WINEPREFIX+=$1
    fi
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
# Serves programs without the run-time DLLs beside them.  (cvs.exe is on the prefix's own PATH.)
export WINEPATH='Z:\usr\lib\gcc\i686-w64-mingw32\12-posix;Z:\usr\i686-w64-mingw32\lib'
# The user's own X server wants its cookie.
export XAUTHORITY=${XAUTHORITY:-${HOME:-}/.Xauthority}

# Outside of environment.sh: wait for a command that uses the same prefix, and let it wait for us.  (-o: the
# Wine server must not inherit the lock.)
if [ -z "${TANDREL_ENVIRONMENT:-}" ] && [ -n "${TANDREL_LOCK:-}" ]; then
    [ -n "${DISPLAY:-}" ] ||
        echo 'emulator.sh: no DISPLAY, so no windows; try scripts/environment.sh COMMAND.' >&2
    take_seat 1
    exec flock --shared -o "$TANDREL_LOCK" "$TANDREL_WINE/wine32" "$@"
fi
# The desktop's keeper, or the only seat.
if [ -n "${TANDREL_SEAT:-}" ] || [ "${TANDREL_SEATS:-1}" = 1 ]; then
    take_seat "${TANDREL_SEAT:-1}"
    exec "$TANDREL_WINE/wine32" "$@"
fi
# 200: somebody else has that seat.  (-o: what the program leaves behind must not keep it.)
while :; do
    for ((seat = 1; seat <= TANDREL_SEATS; seat++)); do
        take_seat "$seat"
        code=0
        flock --nonblock -E 200 -o "$WINEPREFIX.seat" "$TANDREL_WINE/wine32" "$@" || code=$?
        [ "$code" = 200 ] || exit "$code"
    done
    sleep 0.05
done
