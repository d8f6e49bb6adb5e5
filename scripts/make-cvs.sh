#!/bin/bash
# make-cvs.sh DIR TARGET
#
# Builds the Windows client cvs.exe (local and :pserver: access) from Debian's source package into
# DIR.
set -euo pipefail
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/targets.sh disable=SC2154
. "$scripts/targets.sh"
name_target "$2"
mkdir -p "$1"
cd "$1"
"$scripts/apt-private.sh" "$PWD/apt" deb-src update || true
"$scripts/apt-private.sh" "$PWD/apt" deb-src source --download-only cvs
dpkg-source --no-check -x cvs_*.dsc source
"$scripts/compile-cvs.sh" source . "$mingw"
rm -rf apt source work cvs_*
