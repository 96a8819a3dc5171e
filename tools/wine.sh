#!/bin/bash
# Runs a program for Windows in Wine, with a prefix of the project's own that is made at the first use; each
# density of the screen that ORVANE_DPI asks for, in dots per inch, has one.
#
# usage: wine.sh PROGRAM [ARGUMENT...]
#        wine.sh --prepare   makes the prefix
#        wine.sh --on-screen SIZE COMMAND [ARGUMENT...]
#                            runs any command on a virtual screen, where Wine ends with it
#        wine.sh --end       ends all that runs in the prefix
set -euo pipefail
export WINEPREFIX=${ORVANE_WINE:-$(dirname "$(readlink -f "$0")")/../build/wine}${ORVANE_DPI:+-$ORVANE_DPI}
export WINEDEBUG=${WINEDEBUG--all} WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=;${WINEDLLOVERRIDES-}"
wine=/usr/lib/wine/wine64
server=/usr/lib/wine/wineserver64
[[ -x $wine ]] || wine=/usr/lib/wine/wine
[[ -x $server ]] || server=/usr/lib/wine/wineserver

prepare() {
    [[ ! -e $WINEPREFIX/ready ]] || return 0
    rm -rf "$WINEPREFIX"
    xvfb-run -a "$wine" wineboot --init
    # Debian's Wine does not find its own fonts by itself: there would be no "MS Sans Serif" or "Fixedsys".
    cp /usr/share/wine/fonts/*.fon /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    # A program that crashed ends, and nobody is asked. Without a window manager windows stand where the
    # program puts them, at once. The tests have a desktop in one window: between windows, the display server
    # would tell late which has the focus, and that would end what was begun meanwhile.
    local dpi=${ORVANE_DPI:-96}
    local side=$((800 * dpi / 96))
    xvfb-run -a "$wine" regedit /S - <<EOF
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:0
[HKEY_CURRENT_USER\Software\Wine\X11 Driver]
"Managed"="N"
[HKEY_CURRENT_USER\Software\Wine\Explorer\Desktops]
"Tests"="${side}x$side"
[HKEY_CURRENT_USER\Software\Wine\AppDefaults\window_tests.exe\Explorer]
"Desktop"="Tests"
[HKEY_CURRENT_USER\Software\Wine\AppDefaults\monkey.exe\Explorer]
"Desktop"="Tests"
[HKEY_CURRENT_USER\Control Panel\Desktop]
"LogPixels"=dword:$(printf %x "$dpi")
EOF
    "$server" --wait
    touch "$WINEPREFIX/ready"
}

case $1 in
    --prepare)
        mkdir -p "$(dirname "$WINEPREFIX")"
        exec 9>"$WINEPREFIX.lock"
        flock 9
        prepare
        ;;
    --on-screen)
        # Who is asked for a window has the pointer, and nothing moves it but the robot.
        xvfb-run -a -s "-screen 0 $2x24" bash -c 'xwininfo >/dev/null 2>&1 & "$@"' - "${@:3}" || code=$?
        "$server" --kill || true
        exit "${code-0}"
        ;;
    --end) "$server" --kill ;;
    *)
        "$0" --prepare >/dev/null 2>&1
        exec "$wine" "$@"
        ;;
esac
