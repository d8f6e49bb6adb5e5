#!/bin/bash
# emulator.sh PROGRAM.exe [ARGUMENT...]
#
# Runs one 32-bit Windows program under Wine, with the environment that the tests need.  CTest
# starts every test through this script.  All it needs is taken from the environment:
#
#   TANDREL_WINE   folder with the programs wine32 and wineserver32
#   WINEPREFIX     Wine's data
#
# Inside of environment.sh both are set.  Outside of it they come from build/wine.env, which every
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

# Without UTF-8 file names lose their eighth bit and arguments are damaged.
export LC_ALL=C.UTF-8
# Wine takes the rules of the zone from here; a test may set another one.
export TZ=${TZ:-UTC}
export WINEPREFIX WINEDEBUG=${WINEDEBUG:--all}
# No debugger: a crash has to end the program at once.  No menus of the desktop either.
export WINEDLLOVERRIDES='mscoree,mshtml,winedbg.exe,winemenubuilder.exe='
# Serves programs without the run-time DLLs beside them.  (cvs.exe is on the prefix's own PATH.)
export WINEPATH='Z:\usr\lib\gcc\i686-w64-mingw32\12-posix;Z:\usr\i686-w64-mingw32\lib'
# Wine must not lay hands on the user's own folders; the X server's cookie is still there.
export XAUTHORITY=${XAUTHORITY:-${HOME:-}/.Xauthority}
export HOME=$WINEPREFIX.home

# Outside of environment.sh: wait for a command that uses the same prefix, and let it wait for us.  (-o: the
# Wine server must not inherit the lock.)
if [ -z "${TANDREL_ENVIRONMENT:-}" ] && [ -n "${TANDREL_LOCK:-}" ]; then
    [ -n "${DISPLAY:-}" ] ||
        echo 'emulator.sh: no DISPLAY, so no windows; try scripts/environment.sh COMMAND.' >&2
    exec flock --shared -o "$TANDREL_LOCK" "$TANDREL_WINE/wine32" "$@"
fi
exec "$TANDREL_WINE/wine32" "$@"
