#!/bin/bash
# Reads the code without running it: its layout, clang-tidy, cppcheck.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh
need build code

quietly cmake --preset release
quietly cmake --build --preset release

echo "layout: clang-format"
find src tests tools -name '*.cpp' -o -name '*.h' | xargs clang-format --dry-run -Werror

echo "reading: cppcheck"
# It takes the reference to a window's control for one to a temporary, and a benchmark for a callback, and
# tells how far it looks.
suppressed=(danglingTempReference danglingTemporaryLifetime constParameterCallback useStlAlgorithm
    noExplicitConstructor normalCheckLevelMaxBranches '*:*/build/*')
cppcheck --project=build/release/compile_commands.json -i build \
    --enable=warning,style,performance,portability \
    --std=c++20 --library=qt --quiet --error-exitcode=1 "${suppressed[@]/#/--suppress=}"

echo "reading: clang-tidy"
# What is not built here has its headers elsewhere.
find src -name '*.cpp' ! -path '*/win32/*' -print0 | xargs -0 -n 1 -P "$(nproc)" \
    clang-tidy -p build/release --quiet --extra-arg=-Wno-unknown-warning-option 2>/dev/null
