#!/bin/bash
# make-prefix.sh DIR TARGET WINE CVS_EXE
#
# Makes DIR/prefix, Wine's data, fit for unattended window tests.  WINE is the folder that
# make-wine.sh filled.  An X server must run.
set -euo pipefail
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/targets.sh disable=SC2154
. "$scripts/targets.sh"
name_target "$2"
wine=$3 cvs_exe=$4
mkdir -p "$1"
export WINEPREFIX=$1/prefix HOME=$1/prefix.home LC_ALL=C.UTF-8 WINEDEBUG=-all
export WINEDLLOVERRIDES='mscoree,mshtml,winedbg.exe,winemenubuilder.exe='
mkdir -p "$HOME" "$WINEPREFIX/drive_c/windows/system32"
trap '"$wine/wineserver" -k || true' EXIT

# Needed before the first start already.
cp "/usr/$mingw/lib/zlib1.dll" "$WINEPREFIX/drive_c/windows/system32/"
timeout 120 "$wine/wine" wineboot -i </dev/null

# The user's folders must not be links to anywhere: deleting walks through links.
find "$WINEPREFIX/drive_c/users" -type l | while IFS= read -r link; do
    rm "$link"
    mkdir "$link"
done

# Without fonts-wine every face becomes the same wide one.
cp /usr/share/wine/fonts/*.{ttf,fon} "$wine"/root/usr/share/fonts/truetype/liberation/*.ttf \
    "$WINEPREFIX/drive_c/windows/Fonts/"

mkdir "$WINEPREFIX/drive_c/tools" "$WINEPREFIX/drive_c/home"
cp "$cvs_exe" "$WINEPREFIX/drive_c/tools/cvs.exe"
"$mingw-gcc-posix" -O2 -s -o "$WINEPREFIX/drive_c/windows/keep-desktop.exe" \
    "$scripts/keep-desktop.c"

# Managed=N      no window manager: otherwise every hide of a window stalls for two seconds
# ThemeActive=0  themed lists are thirty times slower
# MenuHeight     otherwise anything, and a menu bar fills the screen (in twips, for any resolution)
# HOME           where cvs.exe keeps .cvspass
cat >"$WINEPREFIX/drive_c/setup.reg" <<'R'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine\X11 Driver]
"Managed"="N"
[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000
[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\ThemeManager]
"ThemeActive"="0"
[HKEY_CURRENT_USER\Control Panel\Desktop\WindowMetrics]
"MenuHeight"="-270"
[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"Courier New"="Liberation Mono"
[HKEY_CURRENT_USER\Environment]
"HOME"="C:\\home"
"PATH"="C:\\tools"
R
timeout 60 "$wine/wine" regedit /S 'C:\setup.reg' </dev/null
rm "$WINEPREFIX/drive_c/setup.reg"
# The registry's files are written when the server ends.
timeout 60 "$wine/wineserver" -w
trap - EXIT
# Half a prefix must not pass for a whole one.
grep -q '"Managed"="N"' "$WINEPREFIX/user.reg"
[ -s "$WINEPREFIX/system.reg" ]
