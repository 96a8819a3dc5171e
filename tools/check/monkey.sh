#!/usr/bin/env bash
# Presses the real widgets at random under the sanitizers and looks at what must always hold:
# monkey.sh [EVENTS] [SEED]. The same seed makes the same events.
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/packages.sh
need build start test

cmake --preset sanitize >/dev/null
cmake --build --preset sanitize --target monkey >/dev/null
export LSAN_OPTIONS="suppressions='$PWD/tests/support/leaks.supp':print_suppressions=0" LC_ALL=C.UTF-8 QT_SCALE_FACTOR= UBSAN_OPTIONS=print_stacktrace=1
time build/sanitize/tests/monkey --events "${1:-200000}" --seed "${2:-1}"
