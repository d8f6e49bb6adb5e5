#!/bin/bash
# environment.sh [COMMAND...]
#
# Runs COMMAND with all that the tests find around them: a display, a warm Wine with fresh data and
# a password server of cvs.  For example:
#
#   scripts/environment.sh ctest --preset win32 -R Entries
#
# ./run, ./test and ./bench.sh source this file for its functions.
set -euo pipefail
if [ -z "${root:-}" ]; then
    root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
fi
# shellcheck source=scripts/common.sh
. "$root/scripts/common.sh"
for part in targets packages display products prefix pserver build; do
    # shellcheck source=/dev/null
    . "$root/scripts/$part.sh"
done

# The target at hand; name_target turns to the other one.
name_target "${TANDREL_TARGET:-win32}"

# All that has to be there before anything is built; installs what is missing.
set_up() {
    prepare
    ensure_products
}

# The part of it that is the same for all targets.
prepare() {
    check_distribution
    make_folders
    lock_checkout
    ensure_packages
}

# start_environment [SEATS]: without SEATS there is one, and a display of the user's is used.  Wine
# gets ready while the caller builds; await_wine before its first use.
start_environment() {
    if [ -n "${1:-}" ] || [ -z "${DISPLAY:-}" ]; then
        start_displays "${1:-1}"
        use_displays
    fi
    export TANDREL_ENVIRONMENT=1 TZ=UTC
    fresh_prefixes "${1:-1}"
    start_wine
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    set_up
    start_environment "$(nproc)"
    start_pserver
    await_wine
    await "$@"
fi
