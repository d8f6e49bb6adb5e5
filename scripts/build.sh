# shellcheck shell=bash disable=SC2154
# build.sh: configures and builds presets.  Sourced.

configure_preset() { # PRESET
    local build=$root/build/$1
    # A checkout that was moved or copied brings a build folder that CMake refuses.
    if [ -f "$build/CMakeCache.txt" ] &&
        ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$build/CMakeCache.txt"; then
        rm -rf "$build"
    fi
    if [ ! -f "$build/build.ninja" ] ||
        [ "$root/CMakePresets.json" -nt "$build/CMakeCache.txt" ]; then
        logged "configure-$1" "configuring $1" in_root cmake --preset "$1"
    fi
}

build_preset() { # PRESET [TARGET...]: everything without targets
    say "building $1"
    configure_preset "$1"
    local preset=$1
    shift
    logged "build-$preset" "building $preset" \
        in_root cmake --build --preset "$preset" ${1:+--target "$@"}
}

in_root() {
    cd "$root" || return
    exec "$@"
}
