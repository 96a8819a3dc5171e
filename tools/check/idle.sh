#!/usr/bin/env bash
# Shows that the idle program does nothing: counts the runs of its threads and their system calls over ten
# seconds (or those given) in several states.
# usage: idle.sh [SECONDS]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh
need build start tour idle
quietly cmake --preset release
quietly cmake --build --preset release
PYTHONPATH=tools/tour:tests/display exec /usr/bin/python3 -B tools/check/idle.py \
    build/release/program/orvane-utilities "${1-10}"
