# shellcheck shell=bash disable=SC2034
# targets.sh: what 32-bit and 64-bit Windows are called by whom.  Sourced.

# name_target win32|win64
name_target() {
    target=$1
    case $target in
        win32)
            mingw=i686-w64-mingw32 debian_arch=i386 linux_arch=i386-linux-gnu
            wine_package=wine32 wine_loader=wine wine_server=wineserver32 wine_dlls=i386-windows
            bits=32
            ;;
        win64)
            mingw=x86_64-w64-mingw32 debian_arch=amd64 linux_arch=x86_64-linux-gnu
            wine_package=wine64 wine_loader=wine64 wine_server=wineserver64 wine_dlls=x86_64-windows
            bits=64
            ;;
        *) echo "there is no target $target" >&2 && return 1 ;;
    esac
    # The compiler's run-time libraries, for programs without them beside them.
    run_time="Z:\\usr\\lib\\gcc\\$mingw\\12-posix;Z:\\usr\\$mingw\\lib"
}
