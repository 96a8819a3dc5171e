#!/bin/bash
# Builds the Debian package and the portable archive into build/package/ and prints their names.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
source tools/packages.sh

need build package
quietly cmake --preset release
quietly cmake --build --preset release
rm -rf build/package
quietly cpack --config build/release/CPackConfig.cmake -B build/package
rm -rf build/package/_CPack_Packages
ls build/package/*.deb build/package/*.tar.gz
