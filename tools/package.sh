#!/bin/bash
# Builds the Debian package and the portable archive, or with --windows the archive for Windows, into
# build/package/ and prints their names.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
source tools/packages.sh

if [[ ${1-} == --windows ]]; then
    need windows windows-package
    quietly cmake --preset windows
    quietly cmake --build --preset windows --target archive
    ls build/package/*-windows-x86_64.zip
    exit
fi

need build package
quietly cmake --preset release
quietly cmake --build --preset release
rm -rf build/package/*.deb build/package/*.tar.gz
quietly cpack --config build/release/CPackConfig.cmake -B build/package
rm -rf build/package/_CPack_Packages
ls build/package/*.deb build/package/*.tar.gz
