#!/bin/bash
# ./package.sh
#
# Installs what is missing, builds, and makes out/tandrel-VERSION-win32.zip and -win64.zip: the
# libraries, the host, headers, what a host's build needs, the documents.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/environment.sh
. "$root/scripts/environment.sh"

check_distribution
make_folders
lock_checkout
ensure_packages
mkdir -p "$root/out"
for preset in win32 win64; do
    build_preset "$preset" tandrel hosting workbench tandrel_runtime
    logged "package-$preset" "packing $preset" \
        "$root/scripts/make-zip.sh" "$root/build/$preset" "$preset" "$root/out"
    say "$(ls "$root"/out/tandrel-*-"$preset".zip)"
done
