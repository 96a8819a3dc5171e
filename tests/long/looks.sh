#!/usr/bin/env bash
# Tells for screens of several densities, desktops with a large font, other languages and other fonts whether
# every text of every window is whole and stands where it should.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

code=0
# Runs tests of the windows with these settings. A pattern that no test answers to fails.
look() { # NAME TESTS SETTING...
    local result
    result=$(env LSAN_OPTIONS="suppressions=tests/support/leaks.supp:print_suppressions=0" "${@:3}" \
        timeout 300 build/sanitize/tests/window_tests --gtest_filter="$2" 2>&1) &&
        [[ $result != *"PASSED  ] 0 tests"* ]] && result=holds || code=1
    printf '%-16s %s\n' "$1" "$(grep -E '^holds|Failure|which is|: |ERROR' <<<"$result" | head -n 20)"
}

for density in 1.25 1.5 2 3; do look "density-$density" 'Look*' QT_SCALE_FACTOR="$density"; done
look font-dpi-192 'Look*' QT_FONT_DPI=192 QT_ENABLE_HIGHDPI_SCALING=0
mkdir -p "$work/config/qt6ct"
printf '[Fonts]\n%s="DejaVu Sans,20,-1,5,50,0,0,0,0,0"\n' general fixed >"$work/config/qt6ct/qt6ct.conf"
look font-20pt 'Look*' QT_QPA_PLATFORMTHEME=qt6ct XDG_CONFIG_HOME="$work/config"

# A language of the desktop's changes nothing but the decimal separator, which a roll shows.
mkdir -p "$work/locale"
for language in de_DE ar_EG he_IL; do
    localedef -i "$language" -f UTF-8 "$work/locale/$language.UTF-8" 2>/dev/null || true
    look "$language" '*-*TheRoller*' LOCPATH="$work/locale" LC_ALL="$language.UTF-8"
done

# These folders of fonts are all that the desktop has, each by itself.
for set in dejavu liberation freefont none; do
    cat >"$work/fonts.conf" <<END
<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
<include>/etc/fonts/conf.d</include><dir>/usr/share/fonts/truetype/$set</dir><cachedir>$work/cache</cachedir>
</fontconfig>
END
    tests='Look*'
    [[ $set != none ]] || tests='WindowTest.TheLauncher*' # nothing can be read then, but nothing may end
    look "fonts-$set" "$tests" FONTCONFIG_FILE="$work/fonts.conf"
done
exit "$code"
