#!/bin/bash
# The checks that take their time, one after the other, or those that are named. Each tells in a line whether
# it holds and what it shows; what it printed, and its pictures, lie in build/long.
# usage: all.sh [NAME...]
set -uo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh

walk="/usr/bin/python3 -B tests/walk build/release/program/orvane-utilities"
out=build/long
asked=$*
known=""
failed=0
mkdir -p "$out"

check() { # NAME "PURPOSE OF PACKAGES..." WHAT IT SHOWS: COMMAND
    local verdict=holds
    known+=" $1"
    [[ -z $asked || " $asked " == *" $1 "* ]] || return 0
    need $2 || exit
    SECONDS=0
    $4 >"$out/$1.log" 2>&1 || verdict=FAILED failed=1
    printf '%-8s %-6s %4d s  %s\n' "$1" "$verdict" "$SECONDS" "$3"
    [[ $verdict == holds ]] || tail -n 20 "$out/$1.log"
}

check code "" "the code is laid out and reads clean" tests/long/code.sh
check package "" "the package and the archive are whole, and the same when packed again" tests/long/package.sh
for release in bookworm trixie; do
    check "$release" "" "in a minimal Debian of that name ./run, ./test and the package hold" \
        "tests/long/release.sh $release"
done
for manager in i3 xfwm4 mutter; do
    check "$manager" "desktops" "the walk through every tool holds under the window manager $manager" \
        "$walk walk $out/$manager $manager"
done
check dense "" "the walk through every tool holds on a screen of twice the density" \
    "env QT_SCALE_FACTOR=2 $walk walk $out/dense"
check looks "looks" \
    "texts stay whole at densities 1 to 3, in other fonts and sizes; other languages change nothing" \
    tests/long/looks.sh
check monkey "" "200,000 random events break none of what must always hold, and nothing grows" \
    "timeout 3600 env EVENTS=200000 LSAN_OPTIONS=suppressions=tests/support/leaks.supp
        build/sanitize/tests/monkey"
check figures "measure" "start, memory, answers and wake-ups keep within their budgets" tools/measure.sh

for name; do
    [[ " $known " == *" $name "* ]] || { echo "no check $name, but:$known" >&2; failed=2; }
done
exit "$failed"
