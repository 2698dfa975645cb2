# The Debian packages that Nimbry needs, and the one way of installing what is missing. Sourced by run, check and .ci/run.

packages_build=(
    g++ cmake ninja-build pkg-config ccache
    qt6-base-dev qt6-serialport-dev qt6-svg-dev
    libcurl4-openssl-dev libboost-context-dev libcanberra-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    fonts-dejavu-core
)
packages_check=(
    clang-14 libclang-rt-14-dev clang-tidy-14 clang-format-14
    python3 python3-ephem locales faketime libfaketime git iproute2
    openssl vsftpd python3-pyftpdlib python3-aiosmtpd
    dpkg-dev file strace debootstrap lintian systemd systemd-container groff-base desktop-file-utils appstream
)
# What only one of the long parts of check needs.
packages_cppcheck=(cppcheck)
packages_coverage=(gcovr)
packages_mingw=(g++-mingw-w64-x86-64-posix wine64 googletest)
packages_screens=(xvfb xauth pngquant)

# install_missing NAME...: installs the packages of these names that are not there yet; says which. Does nothing, and asks the network for
# nothing, where all of them are installed. Fails where they cannot be had.
install_missing() {
    command -v dpkg-query >/dev/null || {
        echo "This is no Debian system: make sure that you have what these packages hold: $*" >&2
        return 0
    }
    local missing=() name
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
