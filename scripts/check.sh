#!/bin/bash
# check.sh [FILE...]
#
# Reads all sources, or those named, with a second compiler: clang for the same target, with the
# cross compiler's headers and warnings as errors, then clang-tidy with what .clang-tidy lists; and
# the scripts with shellcheck.  Nothing is built.  A source that nobody had anything to say about is
# remembered in the cache, with all that it includes, and not read again.  The exit code is 0 only when nobody has anything
# to say.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/common.sh disable=SC2154
. "$root/scripts/common.sh"
# shellcheck source=scripts/targets.sh disable=SC2154
. "$root/scripts/targets.sh"
# shellcheck source=scripts/packages.sh
. "$root/scripts/packages.sh"
# shellcheck source=scripts/build.sh
. "$root/scripts/build.sh"
name_target win32
check_distribution
make_folders
packages+=(clang clang-tidy shellcheck)
ensure_packages
cd "$root"

include_folders() {
    "$mingw-g++-posix" -E -v -x c++ /dev/null 2>&1 |
        sed -n '/#include </,/End of/{/^ /s/^ *//p}'
}
# Of -Wconversion that part which the compiler knows by this name, too.
options=(--target="i686-w64-windows-gnu" -std=gnu++20 -nostdinc -nostdinc++ -fsyntax-only
    -Wall -Wextra -Wconversion -Wno-sign-conversion -Werror
    -DNOMINMAX -DWIN32_LEAN_AND_MEAN -D_WIN32_WINNT=0x0601 "-I$root"
    -isystem /usr/src/googletest/googletest/include)
while IFS= read -r folder; do options+=(-isystem "$folder"); done < <(include_folders)
# What the build makes.
configure_preset win32
options+=("-I$root/build/win32/generated")

if [ $# -gt 0 ]; then
    sources=("$@")
else
    mapfile -t sources < <(git ls-files '*.cpp')
fi
# Of two readers the second also finds what the first does.
read_one() {
    case $1 in
        framework/*) options+=(-DFRAMEWORK_BUILD) ;;
        package/*) options+=(-DTANDREL_BUILD) ;;
    esac
    local stamp
    stamp=$(set -o pipefail; clang++ "${options[@]/-fsyntax-only/-E}" -C "$1" | cat - .clang-tidy | sha256sum) || return
    stamp=$read_before/${stamp%% *}
    if [ -e "$stamp" ]; then
        touch "$stamp"
        return
    fi
    clang++ "${options[@]}" "$1" && clang-tidy --quiet "$1" -- "${options[@]}" 2>/dev/null &&
        touch "$stamp"
}
export read_before=$cache/read
mkdir -p "$read_before"
find "$read_before" -type f -mtime +14 -delete
log=$logs/check.log
: >"$log"
code=0
export -f read_one
export options_text="${options[*]@Q}"
# shellcheck disable=SC2016 # the shell that xargs starts expands it
printf '%s\0' "${sources[@]}" |
    xargs -0 -P "$(nproc)" -I{} bash -c 'eval "options=($options_text)"; read_one "$1"' _ {} \
        >"$log" 2>&1 || code=1
mapfile -t scripts < <(git ls-files '*.sh' run test .ci/run)
shellcheck -x "${scripts[@]}" >>"$log" 2>&1 || code=1
if [ "$code" != 0 ]; then
    tail -n 40 "$log"
    fail "there is something to mend (log: $log)"
fi
say "${#sources[@]} sources and ${#scripts[@]} scripts read: nothing to say"
