#!/bin/bash
# Runs a program for Windows in Wine, with a prefix of the project's own that is made at the first use.
#
# usage: wine.sh PROGRAM [ARGUMENT...]
set -euo pipefail
export WINEPREFIX=${ORVANE_WINE:-$(dirname "$(readlink -f "$0")")/../build/wine}
export WINEDEBUG=${WINEDEBUG--all} WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
wine=/usr/lib/wine/wine64

prepare() {
    [[ -e $WINEPREFIX/ready ]] && return
    rm -rf "$WINEPREFIX"
    mkdir -p "$(dirname "$WINEPREFIX")"
    xvfb-run -a "$wine" wineboot --init >/dev/null 2>&1 || true
    # Debian's Wine does not find its own fonts by itself, so there would be no "MS Sans Serif" and no
    # "Fixedsys".
    cp /usr/share/wine/fonts/*.fon /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    # No window manager: windows stand where the program puts them, at once.
    xvfb-run -a "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    /usr/lib/wine/wineserver64 --wait
    touch "$WINEPREFIX/ready"
}

# Tests of several processes may come here at once.
mkdir -p "$(dirname "$WINEPREFIX")"
exec 9>"$WINEPREFIX.lock"
flock 9
prepare
exec 9>&-
exec "$wine" "$@"
