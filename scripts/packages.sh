# shellcheck shell=bash
# packages.sh: the Debian packages that building and testing need.  Sourced.

packages=(
    cmake ninja-build
    g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix # the compilers
    googletest                                          # as source
    libc6-i386 libz-mingw-w64 fonts-wine                # what 32-bit Wine needs of the system
    xvfb                                                # the display of the tests
    cvs socat                                           # the server of the tests
    dpkg-dev                                            # unpacks the source of the client
)

# The paths of the compilers and the list above are those of one release.
check_distribution() {
    local ID='' VERSION_ID='' PRETTY_NAME='an unknown system'
    # shellcheck source=/dev/null
    . "${TANDREL_OS_RELEASE:-/etc/os-release}" 2>/dev/null || true
    [ "$ID $VERSION_ID" = "debian 12" ] ||
        fail "this needs Debian 12 (bookworm), but the system is $PRETTY_NAME"
}

missing_packages() {
    local installed package
    # Fails when one of them is unknown; what it prints is right all the same.
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${packages[@]}" \
        2>/dev/null || true)
    for package in "${packages[@]}"; do
        [[ $'\n'$installed$'\n' == *$'\n'"$package installed"$'\n'* ]] || echo "$package"
    done
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

become_root_possible() {
    [ "$(id -u)" = 0 ] && return
    command -v sudo >/dev/null || return
    # At a terminal sudo can ask for the password.
    sudo -n true 2>/dev/null || [ -t 0 ]
}

apt_install() {
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300
        -o Acquire::Retries=2 -o Acquire::http::Timeout=20 -o Acquire::https::Timeout=20)
    # One source that does not answer must not stop the others: what is missing shows below.
    as_root "${apt[@]}" update || true
    as_root "${apt[@]}" install -y --no-install-recommends "$@"
}

ensure_packages() {
    local missing
    mapfile -t missing < <(missing_packages)
    [ ${#missing[@]} -gt 0 ] || return 0
    become_root_possible ||
        fail "these packages are missing, and installing them needs root or sudo: ${missing[*]}"
    say "installing ${missing[*]}"
    logged packages "installing packages" apt_install "${missing[@]}"
}
