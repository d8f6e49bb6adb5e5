#!/bin/bash
# binaries.sh BUILD_FOLDER SOURCE_FOLDER TARGET
#
# Looks at what a release holds: it must load on Windows 7 (windows7-imports.txt has each function of
# the system that is used, after a look at its documentation), at any address, and run no data.
set -euo pipefail
build=$1 source=$2 target=$3
objdump=i686-w64-mingw32-objdump
[ "$target" = win32 ] || objdump=x86_64-w64-mingw32-objdump
code=0
for path in "$build"/bin/{framework,tandrel,hosting,libstdc++-6,libwinpthread-1}.dll \
    "$build"/bin/libgcc_s_*.dll "$build/bin/tandrel.exe"; do
    file=${path##*/}
    headers=$("$objdump" -p "$path")
    [[ $headers == *DLL\ Name* ]] || { echo "$file: nothing could be read"; exit 1; }
    unknown=$(awk '/DLL Name:/ { dll = tolower($3) } /^\t[0-9a-f]+\t/ { print dll, $NF }' <<<"$headers" |
        grep -vE '^(framework|tandrel|hosting|libstdc|libgcc|libwinpthread)' |
        grep -vxFf "$source/tests/package/windows7-imports.txt" || true)
    if [ -n "$unknown" ]; then
        echo "$file imports what nobody has looked up for Windows 7:"
        echo "$unknown"
        code=1
    fi
    # The run-time's DLLs are as the compiler's makers built them.
    case $file in lib*) continue ;; esac
    for flag in DYNAMIC_BASE NX_COMPAT $([ "$target" = win32 ] || echo HIGH_ENTROPY_VA); do
        [[ $headers == *"$flag"* ]] || { echo "$file has no $flag"; code=1; }
    done
    "$objdump" -h "$path" | grep -q '\.reloc' || { echo "$file can be loaded at one address only"; code=1; }
done
exit "$code"
