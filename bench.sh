#!/bin/bash
# ./bench.sh [ARGUMENT...]
#
# Installs what is missing, builds, and runs the measurements; prints their table.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/environment.sh
. "$root/scripts/environment.sh"

set_up
start_environment 1
build_preset win32
await_wine
mkdir -p "$WINEPREFIX/drive_c/work"
cd "$WINEPREFIX/drive_c/work"
await "$root/scripts/emulator.sh" "$root/build/win32/bin/bench.exe" "$@"
