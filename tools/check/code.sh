#!/usr/bin/env bash
# Reads the code without running it: layout, clang-tidy, cppcheck; and whether the released program is hardened.
# usage: code.sh [FILE.cpp ...]   clang-tidy, which is slow, reads these alone instead of all
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/packages.sh
need build test code

quietly cmake --preset release
quietly cmake --build --preset release
quietly cmake --preset sanitize

echo "layout: clang-format"
find src tests tools -name '*.cpp' -o -name '*.h' | xargs clang-format --dry-run -Werror

echo "reading: cppcheck"
# It takes the reference to a window's control for one to a temporary, and a benchmark for a callback.
suppressed=(danglingTempReference danglingTemporaryLifetime constParameterCallback useStlAlgorithm '*:*/build/*')
cppcheck --project=build/release/compile_commands.json -i build --enable=warning,style,performance,portability \
    --std=c++20 --library=qt --quiet --error-exitcode=1 "${suppressed[@]/#/--suppress=}"

files=("$@")
((${#files[@]})) || readarray -t files < <(find src -name '*.cpp' | sort)
echo "reading: clang-tidy, ${#files[@]} files"
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" \
    clang-tidy -p build/release --quiet --extra-arg=-Wno-unknown-warning-option 2>/dev/null

echo "hardening: PIE, RELRO, immediate binding, no executable stack, stack protector, fortify"
for file in build/release/program/{orvane-utilities,liborvane-sound.so}; do
    headers=$(readelf -hldW "$file")
    for sign in 'Type: +DYN' 'GNU_RELRO' 'BIND_NOW' 'GNU_STACK.* RW '; do
        grep -qE "$sign" <<<"$headers" || { echo "$file: no $sign" >&2; exit 1; }
    done
done
for flag in -fstack-protector-strong -D_FORTIFY_SOURCE=2 -Werror; do
    [[ $flag == -Werror ]] && commands=build/sanitize || commands=build/release
    if grep '"command"' $commands/compile_commands.json | grep -v -e "$flag" | grep .; then
        echo "compiled without $flag" >&2
        exit 1
    fi
done
