#!/usr/bin/env bash
# Prints a table of what the program is held to, what was measured, and which of it holds: start-up and memory
# beside a bare window of the toolkit, the first opening of each tool, a press, the cores, the idle program.
# usage: measure.sh [--windows] [ROUNDS]; with --windows the program for Windows, in Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh

if [[ ${1-} == --windows ]]; then
    need windows measure
    quietly cmake --preset windows
    quietly cmake --build --preset windows
    mkdir -p build/measure
    x86_64-w64-mingw32-g++-posix -O2 -municode -mwindows -static -s -DUNICODE \
        tools/measure/bare_window_win32.cpp -o build/measure/bare_window.exe
    quietly tools/wine.sh --prepare
    # No sound device here either: Wine's own way to one is a third of the memory.
    export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe,winealsa.drv,winepulse.drv,wineoss.drv="
    export WINEPREFIX=${ORVANE_WINE:-$PWD/build/wine} WINEDEBUG=-all
    code=0
    xvfb-run -a -s "-screen 0 1280x1024x24 -noreset" /usr/bin/python3 -B tools/measure/figures.py \
        build/windows/program/orvane-utilities.exe build/measure/bare_window.exe \
        "$(ls /usr/lib/wine/wine64 /usr/lib/wine/wine 2>/dev/null | head -1)" "${2-15}" || code=$?
    tools/wine.sh --end
    exit "$code"
fi

need build start measure

echo "Building the optimised program."
quietly cmake --preset release -DORVANE_BENCHMARKS=ON
quietly cmake --build --preset release
mkdir -p build/measure
g++ -O2 -fPIC tools/measure/bare_window.cpp -o build/measure/bare_window \
    $(pkg-config --cflags --libs Qt6Widgets)

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
HOME=$home XDG_DATA_HOME= SDL_AUDIODRIVER=dummy xvfb-run -a -s "-screen 0 1280x1024x24 -noreset" \
    /usr/bin/python3 -B tools/measure/figures.py \
    build/release/program/orvane-utilities build/measure/bare_window build/release/core_benchmarks "${1-15}"
