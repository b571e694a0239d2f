# shellcheck shell=bash disable=SC2034
# All Debian packages that this project needs. ./run, ./test and fuzz/run source this file, and a
# CI image can be made from it. "a|b" means that either package will do; if neither is installed,
# the first one is.

# To configure and build everything, including tests, benchmarks and the manual.
TARNWICK_BUILD_PACKAGES=(
    build-essential cmake ninja-build pkg-config ccache
    qt6-base-dev libgl-dev
    libsqlcipher-dev libssl-dev libzip-dev libpugixml-dev
    libsndfile1-dev libmpg123-dev libmp3lame-dev libsoxr-dev libcubeb-dev
    libgtest-dev libgmock-dev librapidcheck-dev libbenchmark-dev
    weasyprint librsvg2-bin
)

# To use the program: its fonts, the MP3 encoder that the program folder links to, xdg-open for
# folders and web pages, and LibreOffice, which converts scripts in the old .xls and .doc formats.
TARNWICK_RUN_PACKAGES=(
    fonts-liberation lame xdg-utils
    "libreoffice-calc-nogui|libreoffice-calc" "libreoffice-writer-nogui|libreoffice-writer"
)

# To run the tests and benchmarks: clang-format, a sound server that needs no hardware, its
# recorder, a message bus, and the tools that the benchmarks compare with.
TARNWICK_TEST_PACKAGES=(
    clang-format git pulseaudio pulseaudio-utils dbus-daemon ffmpeg sox mpg123
)

# To make the packages (./package), to check them (packaging/check), and to try them
# (packaging/try-in-bare-debian).
TARNWICK_PACKAGE_PACKAGES=(
    dpkg-dev zstd git
)
TARNWICK_CHECK_PACKAGES=(
    lintian desktop-file-utils appstream man-db xvfb xdotool
)
TARNWICK_BARE_PACKAGES=(
    mmdebstrap zstd dpkg-dev
)

# For fuzz/run only.
TARNWICK_FUZZ_PACKAGES=(
    clang-14 libclang-rt-14-dev
)

# True when the package is installed.
tarnwick_has_package() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs those of the given packages that are missing, without questions. If none is missing, it
# touches neither the network nor the package lists.
tarnwick_install() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This machine has no apt; going on with what is installed." >&2
        return 0
    fi
    local entry name missing=()
    for entry in "$@"; do
        for name in ${entry//|/ }; do
            tarnwick_has_package "$name" && continue 2
        done
        missing+=("${entry%%|*}")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing. Install them as root, then start again:" >&2
            echo "    apt-get install --no-install-recommends ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install --yes --no-install-recommends "${missing[@]}"
}
