#!/bin/bash
# make-wine.sh DIR TARGET
#
# Puts a Wine for win32 or win64 into DIR.  The packages of Wine for that architecture and all they
# need are downloaded and unpacked below DIR/root; the machine's own architectures stay as they are.
# (Installing wine32:i386 the ordinary way fails whenever the package lists of the two architectures
# are out of step.)  Leaves DIR/wine, which runs a program, and DIR/wineserver; DIR may be moved.
set -euo pipefail
scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/targets.sh disable=SC2154
. "$scripts/targets.sh"
name_target "$2"
mkdir -p "$1"
cd "$1"

apt_target() {
    "$scripts/apt-private.sh" "$PWD/apt" deb \
        -o "APT::Architecture=$debian_arch" -o "APT::Architectures=$debian_arch" "$@"
}
# One index that is out of step must not stop the others: what is missing shows below.
apt_target update || true
apt_target install -y --no-install-recommends --download-only "$wine_package" libwine \
    fonts-liberation
mkdir root
for package in apt/cache/archives/*.deb; do dpkg-deb -x "$package" root; done
rm -rf apt

# Wine's PE libraries import zlib1.dll, which another package ships for the cross compiler.
cp "/usr/$mingw/lib/zlib1.dll" "root/usr/lib/$linux_arch/wine/$wine_dlls/"

# The loader starts what lies beside it under this name; Debian's is a script with fixed paths.
ln -sf "$wine_server" root/usr/lib/wine/wineserver

# The fonts are those of the prefix alone: what is installed on a machine must not change layouts.
echo '<fontconfig><cachedir prefix="default">fontconfig</cachedir></fontconfig>' >fonts.conf

cat >wine <<S
#!/bin/sh
here=\${0%/*}
export WINEARCH=$target WINELOADER="\$here/root/usr/lib/wine/$wine_loader"
export FONTCONFIG_FILE="\$here/fonts.conf"
export LD_LIBRARY_PATH="\$here/root/lib/$linux_arch:\$here/root/usr/lib/$linux_arch"
exec "\$WINELOADER" "\$@"
S
cat >wineserver <<S
#!/bin/sh
here=\${0%/*}
export LD_LIBRARY_PATH="\$here/root/lib/$linux_arch:\$here/root/usr/lib/$linux_arch"
exec "\$here/root/usr/lib/wine/$wine_server" "\$@"
S
chmod +x wine wineserver
