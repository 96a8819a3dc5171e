# What comes from Debian (12 or 13), by purpose. To be sourced by a bash script.

declare -A PACKAGES=(
    [build]="cmake g++ libpng-dev libsdl2-dev libx11-dev libxcb1-dev ninja-build qt6-base-dev"
    [package]="appstream desktop-file-utils dpkg-dev file lintian man-db"
    [release]="debian-archive-keyring debootstrap git"
    [start]="fonts-dejavu-core fonts-liberation qt6-wayland xdotool"
    [tour]="at-spi2-core dbus-daemon gir1.2-atspi-2.0 imagemagick openbox python3 python3-gi x11-utils xclip
        xdotool xvfb"
    [measure]="libbenchmark-dev pkg-config python3-xlib xauth xvfb"
    [code]="clang-format clang-tidy cppcheck"
    [desktops]="i3-wm mutter xfce4-settings xfwm4"
    [looks]="fonts-freefont-ttf locales qt6ct"
    [sounds]="csound"
    [windows]="cmake fonts-liberation fonts-wine g++-mingw-w64-x86-64-posix imagemagick ninja-build wine64
        xauth xvfb"
    [windows-test]="googletest x11-utils"
    [windows-package]="zip"
    [test]="libgtest-dev strace weston x11-xserver-utils xfce4-settings xwayland"
)

# need PURPOSE...: installs what is missing for these purposes. Nothing missing: the network is left alone.
need() {
    local purpose packages="" installed missing
    for purpose; do packages+=" ${PACKAGES[$purpose]}"; done
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' | sed -n 's/^installed //p')
    missing=$(tr ' ' '\n' <<<"$packages" | sed '/^$/d' | sort -u | comm -23 - <(sort -u <<<"$installed"))
    [[ -n $missing ]] || return 0

    echo "Installing from Debian:" $missing
    local root=() options=(-q -y -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 --no-install-recommends)
    ((EUID == 0)) || root=(sudo)
    # A source of other software that cannot be reached does not matter: what is missing shows below.
    quietly "${root[@]}" apt-get update -q </dev/null || true
    quietly "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install "${options[@]}" $missing </dev/null
}

# quietly COMMAND...: runs it and shows what it printed only if it fails.
quietly() {
    local output code=0
    output=$("$@" 2>&1) || code=$?
    ((code == 0)) || printf '%s\n' "$output" "Failed with $code: $*" >&2
    return "$code"
}
