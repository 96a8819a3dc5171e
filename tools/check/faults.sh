#!/usr/bin/env bash
# Puts the program into a world in which one thing after the other is broken (display, home, sound, clipboard,
# clock) and prints a line for each with what it measured.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh
need build start tour faults
quietly cmake --preset release
quietly cmake --build --preset release
PYTHONPATH=tools/tour:tests/display exec /usr/bin/python3 -B tools/check/faults.py \
    build/release/program/orvane-utilities all
