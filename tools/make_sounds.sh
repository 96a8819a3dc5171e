#!/bin/bash
# Makes the five sounds anew, the same bytes at each run.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
source packages.sh
need sounds
for name in theme theme2 click chant quit; do
    quietly csound -d -m0 -W -s -K --omacro:SOUND="${name^}" -o "../sounds/$name.wav" sounds.csd
done
