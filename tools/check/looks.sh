#!/usr/bin/env bash
# Tells for screens of several densities, desktops with a large font, other languages and other fonts whether every
# text of every window is whole and stands where it should, and leaves pictures of the windows in FOLDER.
# usage: looks.sh [FOLDER]
set -euo pipefail
folder=${1:+$(realpath -m "$1")}
cd "$(dirname "$(readlink -f "$0")")/../.."
folder=${folder:-$PWD/build/looks}
source tools/packages.sh
need build start tour test looks

cmake --preset sanitize >/dev/null
cmake --build --preset sanitize --target window_tests >/dev/null
cmake --preset release >/dev/null
cmake --build --preset release >/dev/null
mkdir -p "$folder"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Makes a set of fonts that is all the desktop has, from the folders of these packages.
fonts() { # NAME PACKAGE...
    local name=$1 package file
    mkdir -p "$work/$name"
    for package in "${@:2}"; do
        for file in $(dpkg -L "$package" | grep -E '\.(ttf|otf)$'); do ln -sf "$file" "$work/$name/"; done
    done
    cat >"$work/$name.conf" <<END
<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig><include>/etc/fonts/conf.d</include><dir>$work/$name</dir><cachedir>$work/cache</cachedir></fontconfig>
END
}
fonts desktop fonts-dejavu-core fonts-liberation
fonts dejavu fonts-dejavu-core
fonts liberation fonts-liberation
fonts free fonts-freefont-ttf
fonts none

code=0
# Runs the tests of the looks and takes the pictures with these settings.
look() { # NAME DENSITY SETTING...
    local result
    if result=$(env LSAN_OPTIONS="suppressions=tests/support/leaks.supp:print_suppressions=0" QT_SCALE_FACTOR="$2" \
        "${@:3}" timeout 120 build/sanitize/tests/window_tests --gtest_filter="${filter-Look*}" 2>&1); then
        result="holds: ${holds-every text whole, all in its place}"
    else
        code=1 result=$(grep -E 'Failure|which is|: |ERROR' <<<"$result" | head -n 20)
    fi
    env "${@:3}" timeout 120 tools/picture_windows.sh "$2" "$folder/$1" || code=1 result+="; no pictures"
    printf '%-12s %s\n' "$1" "$result"
}

for density in 1 1.25 1.5 2 3; do look "density-$density" "$density" A=; done
look font-dpi-192 1 QT_FONT_DPI=192 QT_ENABLE_HIGHDPI_SCALING=0
mkdir -p "$work/config/qt6ct"
printf '[Fonts]\n%s="DejaVu Sans,20,-1,5,50,0,0,0,0,0"\n' general fixed >"$work/config/qt6ct/qt6ct.conf"
look font-20pt 1 QT_QPA_PLATFORMTHEME=qt6ct XDG_CONFIG_HOME="$work/config"

# A language of the desktop's: everything holds as ever but for the decimal separator, which a roll shows.
language() { # NAME LOCALE SEPARATOR
    local roll shows=missing settings=(LOCPATH="$work/locale" LC_ALL="$2")
    mkdir -p "$work/locale"
    localedef -i "${2%.*}" -f UTF-8 "$work/locale/$2" 2>/dev/null || [[ -d $work/locale/$2 ]]
    filter=*-$rolls holds="every window does what it does elsewhere" look "$1" 1 "${settings[@]}"
    roll=$(env "${settings[@]}" build/sanitize/tests/window_tests --gtest_filter="$rolls" 2>&1 || true)
    # The test looks for a point itself.
    [[ $roll == *"Average: 4${3}5"* || ($3 == . && $roll == *"PASSED"*" 1 test"*) ]] && shows=$3 || code=1
    printf '%-12s decimal separator %s\n' "$1" "$shows"
}
rolls=DiceRoller.RollsWhenItOpensAndOnRequest
language german de_DE.UTF-8 ,
language arabic ar_EG.UTF-8 ٫
language hebrew he_IL.UTF-8 .
for set in desktop dejavu liberation free; do look "fonts-$set" 1 FONTCONFIG_FILE="$work/$set.conf"; done
# Nothing can be read then, but nothing may end.
filter='Look.Nothing*' holds="nothing ends, nothing is mirrored" look fonts-none 1 FONTCONFIG_FILE="$work/none.conf"
exit $code
