#!/bin/bash
# Makes a minimal Debian of a release and does in it, from a clean clone, what the README tells: ./run and
# ./test. Makes and judges the package there, installs it in a second one, starts it as an ordinary user and
# takes it away again. Tells how long each took. Needs root, the network, and 8 GB under /var/tmp.
# usage: release.sh RELEASE      (bookworm, trixie)
set -euo pipefail
release=$1 work=${2-}
((EUID == 0)) || exec sudo "$0" "$@"
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh

if [[ -z $work ]]; then
    need release
    work=$(mktemp -d /var/tmp/orvane-release-XXXXXX)
    trap 'kill -KILL $! 2>/dev/null && sleep 1; rm -rf --one-file-system "$work"' EXIT
    trap 'exit 130' INT TERM HUP
    # What is mounted and started in there ends with it.
    unshare --mount --pid --fork --kill-child "$0" "$release" "$work" &
    wait $!
    trap 'rm -rf --one-file-system "$work"' EXIT
    exit
fi

fail() { echo "$release: $*" >&2; exit 1; }
within() { # SYSTEM COMMAND...: runs it there, with nothing of this machine's environment
    chroot "$work/$1" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "${@:2}" </dev/null
}
step() { # WHAT COMMAND...: tells how long the command took and its last line; no error output may come
    local start=$SECONDS
    "${@:2}" >"$work/printed" 2>"$work/errors" || { cat "$work/printed" "$work/errors"; fail "$1"; }
    printf '%-30s %5d s  %s\n' "$1" $((SECONDS - start)) "$(tail -n 1 "$work/printed")"
    [[ ! -s $work/errors ]] || fail "$1 wrote: $(<"$work/errors")"
}

make_systems() {
    local mirror system
    mirror=$(apt-get indextargets --format '$(REPO_URI)' \
        'Identifier: Packages' 'Origin: Debian' 'Label: Debian' | head -n 1)
    debootstrap --variant=minbase "$release" "$work/builder" "$mirror"
    # How this machine reaches the mirror.
    apt-config dump Acquire | grep -iE 'proxy|check-' >"$work/builder/etc/apt/apt.conf.d/machine" || true
    cp -L /etc/resolv.conf "$work/builder/etc/"
    within builder useradd --create-home player
    cp -a "$work/builder" "$work/user"
    mkdir "$work/builder/user"
    for system in "$work/"{builder,user}; do
        mount -t proc proc "$system/proc"
        mount -t devpts devpts "$system/dev/pts"
        mount -t tmpfs tmpfs "$system/dev/shm"
    done
    mount --bind "$work/builder/tmp" "$work/user/tmp" # the desktop is the builder's
    mount --rbind "$work/user" "$work/builder/user"
    mkdir "$work/builder/orvane"
    git -c safe.directory="*" archive HEAD | tar -x -C "$work/builder/orvane"
    echo "Debian $(<"$work/builder/etc/debian_version")," \
        "$(within user dpkg-query --list | grep -c ^ii) packages"
}

install() { within user apt-get -q -y "$@" install "/root/$(ls "$work/user/root")" 2>&1; }
purge() { within user apt-get -q -y --autoremove purge orvane-utilities 2>&1; }

# The desktop and its hands are outside, so that the program has nothing but what its package asks for.
use() {
    within builder env -C / setpriv --reuid player --regid player --clear-groups --inh-caps=+sys_chroot \
        --ambient-caps=+sys_chroot /usr/bin/python3 -B /orvane/tests/walk /command installed
}

SECONDS=0
step "a minimal system" make_systems
cat >"$work/builder/command" <<'END'
#!/bin/sh
exec chroot /user setpriv --inh-caps=-all --ambient-caps=-all orvane-utilities
END
chmod 755 "$work/builder/command"

step "./run, nothing installed" within builder /orvane/run
step "./run again" within builder /orvane/run
step "./test" within builder /orvane/test
step "the package is judged" within builder /orvane/tests/long/package.sh
left=$(find "$work/builder/tmp" -mindepth 1 ! -path '*/.X11-unix*')
[[ -z $left ]] || fail "left in /tmp: $left"

cp "$work"/builder/orvane/build/package/*.deb "$work/user/root/"
step "installed with what it needs" install --no-install-recommends
step "used from another folder" use
purge >/dev/null
step "installed as a user does" install
own=$work/user/home/player/.local/share/orvane/questions.ini
mkdir -p "${own%/*}"
echo mine >"$own"
step "installed over itself" install --reinstall
within user dpkg --verify orvane-utilities | grep . && fail "the files differ from the package's"
step "removed" purge
left=$(find "$work/user" -xdev \( -path '*/user/root' -o -path '*/user/var/log' \) -prune \
    -o -iname '*orvane*' -print)
[[ $left == "${own%/*}" && $(<"$own") == mine ]] || fail "left, beside the user's own file: $left"
echo "In a minimal $release ./run, ./test and the package hold; nothing was left but the user's own file."
