#!/bin/bash
# Packs a package of CPack's anew, with the permissions, owners, times and order that it has wherever and by
# whomever it is made. A Debian package also loses its scripts: CPack takes the sound module for a library of
# the system and has the linker's cache renewed.
#
# usage: settle_package.sh FILE.deb|FILE.tar.gz
set -euo pipefail
export LC_ALL=C
umask 022

package=$(readlink -f "$1")
released=$(sed -n 's/^ -- .*>  //p;T;q' "$(dirname "$(readlink -f "$0")")/changelog")
SOURCE_DATE_EPOCH=$(date -d "$released" +%s)
export SOURCE_DATE_EPOCH

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

settle() {
    find "$1" -type d -exec chmod 755 {} +
    find "$1" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
}

case $package in
    *.deb)
        dpkg-deb --raw-extract "$package" "$work/tree"
        rm -f "$work/tree/DEBIAN/"{postinst,postrm}
        settle "$work/tree"
        dpkg-deb --root-owner-group -Zxz --build "$work/tree" "$package" >/dev/null
        ;;
    *.tar.gz)
        mkdir "$work/tree"
        tar -C "$work/tree" -xpf "$package"
        settle "$work/tree"
        tar -C "$work/tree" --sort=name --owner=root:0 --group=root:0 -I "gzip -9n" -cf "$package" \
            "$(ls "$work/tree")"
        ;;
esac
chmod 644 "$package"
