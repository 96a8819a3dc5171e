#!/bin/bash
# Builds the Debian package and the portable archive and judges them: by the tools of Debian and of the desktops, by
# packing them a second time, and by starting the program out of each.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh

need build package tour
tools/package.sh
cd build/package
package=$(ls ./*.deb)
archive=$(ls ./*.tar.gz)
sha256sum "$package" "$archive" >first.sums

echo; echo "The package:"
dpkg-deb --info "$package" | sed -n '/^ Package:/,$p; /^ [A-Z].*:/p' | sort -u
dpkg-deb --contents "$package"
echo; echo "The archive:"
tar -tvf "$archive"
du -h "$package" "$archive"

echo; echo "What the tools say:"
version=$(dpkg-deb --field "$package" Version)
failed=0
verdict() {
    local what=$1 code=0
    shift
    "$@" || code=$?
    echo "$what: $( ((code)) && echo "FAILED with $code" || echo fine)"
    failed=$((failed | code))
}
page_is_clean() { [[ -z $(man --warnings -E UTF-8 -l "$1" 2>&1 >/dev/null) ]]; }
versions_agree() {
    grep -q "^orvane-utilities ($version) " ../../packaging/changelog &&
        grep -q "<release version=\"$version\"" ../../packaging/*.metainfo.xml
}
is_stripped() { ! find "$1" -type f -exec file {} + | grep 'not stripped'; }
built_again() {
    rm -rf ../again
    (umask 077 && cpack --config ../release/CPackConfig.cmake -B "$PWD/../again" &>/dev/null)
    (cd ../again && sha256sum --quiet --check ../package/first.sums)
}

tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
dpkg-deb --extract "$package" "$tree"
as_root=()
((EUID)) || as_root=(--allow-root)
verdict lintian lintian "${as_root[@]}" --profile debian --display-info --pedantic --fail-on error,warning "$package"
verdict "desktop entry" desktop-file-validate "$tree"/usr/share/applications/*.desktop
verdict AppStream appstreamcli validate --no-net --pedantic "$tree"/usr/share/metainfo/*.xml
verdict "manual page" page_is_clean "$tree"/usr/share/man/man1/*.gz
verdict "one version everywhere" versions_agree
verdict "stripped binaries" is_stripped "$tree/usr/lib"
verdict "the same bytes when packed again, with another umask" built_again
rm -rf first.sums ../again
cd ../..

echo; echo "The program out of the package and out of the archive:"
verdict "sounds, weapons and questions" timeout 120 \
    /usr/bin/python3 -B tests/walk "build/package/$package" installed "build/package/$archive"
exit "$failed"
