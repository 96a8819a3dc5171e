#!/usr/bin/env bash
# Uses the released program for an hour, squeezed into a minute or so, and fails if it grows: soak.sh [ROUNDS]
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/packages.sh
need build start tour measure

cmake --preset release >/dev/null
cmake --build --preset release >/dev/null
PYTHONPATH=tools/tour /usr/bin/python3 -B tools/check/soak.py build/release/program/orvane-utilities "${1:-40}"
