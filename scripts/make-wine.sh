#!/bin/bash
# make-wine.sh DIR
#
# Puts a 32-bit Wine into DIR.  The i386 packages of wine32 and all they need are downloaded and
# unpacked below DIR/root; the machine's own architectures stay as they are.  (Installing
# wine32:i386 the ordinary way fails whenever the package lists of the two architectures are out
# of step.)  Leaves DIR/wine32, which runs a program, and DIR/wineserver32; DIR may be moved.
set -euo pipefail
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
mkdir -p "$1"
cd "$1"

apt_i386() {
    "$scripts/apt-private.sh" "$PWD/apt" deb \
        -o APT::Architecture=i386 -o APT::Architectures=i386 "$@"
}
# One index that is out of step must not stop the others: what is missing shows below.
apt_i386 update || true
apt_i386 install -y --no-install-recommends --download-only wine32 libwine fonts-liberation
mkdir root
for package in apt/cache/archives/*.deb; do dpkg-deb -x "$package" root; done
rm -rf apt

# Wine's PE libraries import zlib1.dll, which another package ships for the cross compiler.
cp /usr/i686-w64-mingw32/lib/zlib1.dll root/usr/lib/i386-linux-gnu/wine/i386-windows/

# The loader starts what lies beside it under this name; Debian's is a script with fixed paths.
ln -sf wineserver32 root/usr/lib/wine/wineserver

# The fonts are those of the prefix alone: what is installed on a machine must not change layouts.
echo '<fontconfig><cachedir prefix="default">fontconfig</cachedir></fontconfig>' >fonts.conf

cat >wine32 <<'S'
#!/bin/sh
here=${0%/*}
export WINEARCH=win32 WINELOADER="$here/root/usr/lib/wine/wine"
export FONTCONFIG_FILE="$here/fonts.conf"
export LD_LIBRARY_PATH="$here/root/lib/i386-linux-gnu:$here/root/usr/lib/i386-linux-gnu"
exec "$WINELOADER" "$@"
S
cat >wineserver32 <<'S'
#!/bin/sh
here=${0%/*}
export LD_LIBRARY_PATH="$here/root/lib/i386-linux-gnu:$here/root/usr/lib/i386-linux-gnu"
exec "$here/root/usr/lib/wine/wineserver32" "$@"
S
chmod +x wine32 wineserver32
