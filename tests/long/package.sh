#!/bin/bash
# Builds the Debian package and the portable archive and has them judged: by the tools of Debian and of the
# desktops, by packing them a second time under another umask, and by starting the program out of each.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh
need build package tour

tools/package.sh
package=$(ls build/package/*.deb) archive=$(ls build/package/*.tar.gz)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
sha256sum "$package" "$archive" >"$scratch/sums"
(umask 077 && tools/package.sh >/dev/null)
sha256sum --check "$scratch/sums"

dpkg-deb --info "$package"
dpkg-deb --extract "$package" "$scratch/tree"
# The binaries keep the note of their compiler, which may find no call that it could fortify, and an odd
# spelling is the program's own. The judge leaves files behind.
ours=binary-has-unneeded-section,hardening-no-fortify-functions,spelling-error-in-binary
TMPDIR=$scratch lintian --allow-root --profile debian --display-info --fail-on error,warning,info \
    --suppress-tags "$ours" "$package"
desktop-file-validate "$scratch"/tree/usr/share/applications/*.desktop
appstreamcli validate --no-net --pedantic "$scratch"/tree/usr/share/metainfo/*.xml
version=$(dpkg-deb --field "$package" Version)
grep -q "^orvane-utilities ($version) " packaging/changelog
grep -q "<release version=\"$version\"" packaging/*.metainfo.xml

/usr/bin/python3 -B tests/walk "$package" installed "$archive"
