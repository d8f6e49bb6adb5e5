#!/bin/bash
# run.sh BUILD_FOLDER SOURCE_FOLDER TARGET
#
# Packs the build, unpacks it elsewhere, builds a small host against it with the compiler alone, and
# updates a working copy with that host and the real client. The documents show the same host.
set -euo pipefail
build=$1 source=$2 target=$3
processor=i686 emulator=("$source/scripts/emulator.sh")
if [ "$target" = win64 ]; then processor=x86_64 emulator+=(--win64); fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$source/scripts/make-zip.sh" "$build" "$target" "$work" >"$work/zip.log" 2>&1 || { cat "$work/zip.log"; exit 1; }
cd "$work"
cmake -E tar xf tandrel-*-"$target".zip
release=$(ls -d "$work"/tandrel-*/)
for file in LICENSE README.md docs/user-guide.md bin/tandrel.exe bin/tandrel.dll bin/hosting.dll \
    bin/framework.dll include/cvs/Cvstempl.h include/forms/Frames.h include/hosting/Project.h \
    lib/cmake/Tandrel/TandrelConfig.cmake; do
    [ -e "$release$file" ] || { echo "the release has no $file"; exit 1; }
done

awk '/^```$/ { code = 0 } code; /^```cpp$/ { code = 1 }' "${release}docs/integrating.md" >shown
[ -s shown ] || { echo "docs/integrating.md shows no code"; exit 1; }
if grep -vxFf "$source/tests/package/sample/sample_host.cpp" shown; then
    echo "docs/integrating.md shows lines that the sample host does not have"
    exit 1
fi

# shellcheck disable=SC2015 # the last is for both
cmake -S "$source/tests/package/sample" -B host -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$source/cmake/toolchain-mingw-$processor.cmake" \
    -DTandrel_DIR="${release}lib/cmake/Tandrel" >cmake.log 2>&1 &&
    cmake --build host >>cmake.log 2>&1 || { cat cmake.log; exit 1; }
cp "${release}"bin/*.dll host/

# A working copy that is behind its repository, made by the client; then the host updates it.
run() { "${emulator[@]}" "$@" 2>"$work/run.log" || { cat "$work/run.log"; exit 1; }; }
windows=Z:${work//\//\\}
cvs=('C:\tools\cvs.exe' -Q -d "$windows\\repository")
run "${cvs[@]}" init
mkdir mod other
echo one >mod/a.txt
(cd mod && run "${cvs[@]}" import -m first mod V R)
rm -r mod
run "${cvs[@]}" checkout mod
(
    cd other
    run "${cvs[@]}" checkout mod
    cd mod
    echo two >a.txt
    run 'C:\tools\cvs.exe' -Q commit -m second
)
run "$windows\\host\\sample_host.exe" "$windows\\mod" | tee host.log
grep -q '^Tandrel 0' host.log
grep -q '^update: 1 updated' host.log
grep -q two mod/a.txt
