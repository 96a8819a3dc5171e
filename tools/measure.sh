#!/usr/bin/env bash
# Prints the figures that the program is held to: start-up and memory beside a bare window of the toolkit, the first
# opening of each tool and a press, and the benchmarks of the cores.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh
need build start measure

program=build/release/program/orvane-utilities
cmake --preset release -DORVANE_BENCHMARKS=ON >/dev/null
cmake --build --preset release >/dev/null
mkdir -p build/measure
g++ -O2 -fPIC tools/measure/bare_window.cpp -o build/measure/bare_window $(pkg-config --cflags --libs Qt6Widgets)

on_display() { xvfb-run -a -s "-screen 0 1280x1024x24" /usr/bin/python3 "$@"; }
echo "Start-up and memory, program beside bare window (budget 1.30)"
on_display tools/measure/startup.py 15 "$program" --vs build/measure/bare_window
echo "Windows"
on_display tools/measure/windows.py "$program"
echo "Cores"
build/release/core_benchmarks
