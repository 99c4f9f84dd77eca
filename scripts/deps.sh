# Sourced by the scripts: makes sure the Debian packages the build needs are installed, and
# those a script names besides (ov_ensure_packages mate-backgrounds). As root it installs what is
# missing with apt-get; otherwise it names the packages and stops.

OV_PACKAGES=(
    build-essential
    cmake
    pkg-config
    qtbase5-dev
    qttools5-dev-tools
    doxygen
    liblcms2-dev
    libbenchmark-dev
    clang-format
    clang
    libclang-rt-14-dev
    icc-profiles-free
    colord
    xvfb
    xauth
    fonts-dejavu-core   # the fonts the window tests draw with, the same on every machine
    openssl             # the TLS server the messenger's tests post to
    qtbase5-private-dev # the platform interface through which a test adds and changes screens
    xdotool             # the real key presses and clicks of the window test
    imagemagick         # the window test's screenshots (import)
)

ov_ensure_packages() {
    local missing=()
    local package
    for package in "${OV_PACKAGES[@]}" "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$package")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    if [ "$(id -u)" -ne 0 ]; then
        echo "Missing Debian packages: ${missing[*]}" >&2
        echo "Install them with: sudo apt-get install ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
