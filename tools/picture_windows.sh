#!/usr/bin/env bash
# Leaves a picture of every window, as it opens, at the density DENSITY (1, 1.5, 2 ...) in FOLDER.
# usage: picture_windows.sh DENSITY FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh
need tour
density=$1 folder=$(mkdir -p "$2" && realpath "$2")

home=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$home"' EXIT
mkfifo "$home/display"
Xvfb -displayfd 3 -screen 0 2400x2000x24 3>"$home/display" 2>/dev/null &
DISPLAY=:$(head -n 1 "$home/display")
export DISPLAY HOME=$home XDG_DATA_HOME=$home SDL_AUDIODRIVER=dummy QT_SCALE_FACTOR=$density
openbox >/dev/null 2>&1 &
sleep 0.5
build/release/program/orvane-utilities 2>/dev/null &
sleep 1.5

pixels() { awk -v n="$1" -v d="$density" 'BEGIN { printf "%d", n * d }'; }
# Clicks at a place of a window and takes the picture of the window that has come to the front.
photograph() { # WINDOW X Y NAME [LEFT TOP]
    xdotool mousemove --window "$1" "$(pixels "$2")" "$(pixels "$3")" click 1
    sleep 1
    front=$(xdotool getactivewindow)
    xdotool windowmove "$front" "${5-700}" "${6-20}" mousemove 0 0
    sleep 0.5
    import -silent -window "$front" "$folder/$4.png"
}

launcher=$(xdotool search --onlyvisible --name "Orvane Stats Generator" | head -n 1)
xdotool windowmove "$launcher" 10 10
sleep 0.5
import -silent -window "$launcher" "$folder/frmMain.png"
photograph "$launcher" 100 96 frmDice
photograph "$launcher" 100 168 frmRange2Dice
photograph "$launcher" 100 120 frmStatsCounter
photograph "$launcher" 100 72 frmStatsGenerator
photograph "$launcher" 100 192 frmWeapons
photograph "$launcher" 100 144 frmAling
photograph "$front" 450 288 frmEditQuestions 700 1080
