#!/usr/bin/env bash
# Runs the program under window managers of four kinds (stacking, tiling, two of full desktops) and on several
# screens. Prints what each check saw and leaves pictures of the whole screen in FOLDER.
# usage: desktops.sh [FOLDER]
set -euo pipefail
folder=${1:+$(realpath -m "$1")}
cd "$(dirname "$(readlink -f "$0")")/../.."
folder=${folder:-$PWD/build/desktops}
source tools/packages.sh
need build start tour desktops

program=build/release/program/orvane-utilities
cmake --preset release >/dev/null
cmake --build --preset release >/dev/null
export PYTHONPATH=tools/tour
/usr/bin/python3 -B tests/display/screens_test.py "$program"
code=0
for manager in openbox i3 xfwm4 mutter; do
    /usr/bin/python3 -B tools/check/desktops.py "$program" "$folder" "$manager" || code=1
done
exit $code
