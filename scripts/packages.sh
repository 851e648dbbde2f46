# shellcheck shell=bash
# What the project needs from the distribution, by what it is needed for, and one function that
# installs what is missing. Sourced by ./run, ./test, ./bench and scripts/package.

BUILD_PACKAGES=(
    g++ cmake ninja-build ccache mold pkg-config python3 git
    qt6-base-dev qt6-base-private-dev qt6-svg-dev qt6-l10n-tools libgl-dev
    libsqlite3-dev libsqlitecpp-dev libxxhash-dev libhunspell-dev libfontconfig-dev
)
RUN_PACKAGES=(
    libqt6svg6 qt6-image-formats-plugins breeze-icon-theme hunspell-en-us qt6-wayland qt6-gtk-platformtheme
    fonts-inter fonts-sil-charis fonts-jetbrains-mono
)
# The word processor is the other side of the RTF tests; it installs in well under a minute.
# A display, a compositor, a clipboard manager and another toolkit are what the program stands among.
TEST_PACKAGES=(
    libgtest-dev clang-format dbus-daemon libreoffice-writer-nogui sqlite3
    xvfb xdotool xclip weston parcellite python3-gi gir1.2-gtk-3.0
)
PACKAGE_PACKAGES=(dpkg-dev desktop-file-utils appstream file)
LONG_PACKAGES=(clang-19 clang-tidy-19 libclang-rt-19-dev)

# ensure_packages NAME… — installs those that are missing through apt, saying so first.
ensure_packages() {
    local missing=()
    local name
    for name in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed'; then
            missing+=("$name")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if ! command -v apt-get >/dev/null 2>&1; then
        echo "These packages are missing and there is no apt-get to install them: ${missing[*]}" >&2
        return 1
    fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        echo "Installing with sudo apt-get: ${missing[*]}"
    else
        echo "Installing with apt-get: ${missing[*]}"
    fi
    "${as_root[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# build PRESET [TARGET…] — configures where needed, and builds.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >build/configure-"$preset".log 2>&1 ||
        { cat build/configure-"$preset".log >&2; return 1; }
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
