#!/bin/bash
# make-zip.sh BUILD_FOLDER PRESET DIR
#
# Packs what was built into DIR/tandrel-VERSION-PRESET.zip.
set -euo pipefail
build=$(cd "$1" && pwd) preset=$2 target=$(cd "$3" && pwd)
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
strip=$(sed -n 's/^CMAKE_STRIP:FILEPATH=//p' "$build/CMakeCache.txt")
name=tandrel-$version-$preset
rm -rf "$build/release"
cmake --install "$build" --prefix "$build/release/$name" --strip
"$strip" --strip-unneeded "$build/release/$name"/bin/lib*.dll
cd "$build/release"
rm -f "$target/$name.zip"
cmake -E tar cf "$target/$name.zip" --format=zip "$name"
