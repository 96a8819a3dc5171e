#!/bin/bash
# Installs the Debian package into a new and minimal Debian 12 as a user would, starts the command there as an ordinary
# user, and takes the package away again. Needs root, for the mounts of that system.
#
# The display, the bus and the hands of the test stay outside, so that the program has nothing in there but what its
# package asks for.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
source tools/packages.sh

if [[ ${1-} != --packaged ]]; then
    need build package tour clean
    tools/package.sh
fi
((EUID == 0)) || exec sudo tools/check/clean_install.sh --packaged

work=$(mktemp -d /var/tmp/orvane-clean-XXXXXX)
system=$work/system
shared=$work/shared # at the same path inside and outside
clean_up() {
    local mount
    for mount in "$system$shared" "$system/dev" "$system/proc"; do
        ! mountpoint -q "$mount" || umount "$mount" || umount --lazy "$mount"
    done
    ! grep -q " $work/" /proc/mounts && rm -rf --one-file-system "$work"
}
trap clean_up EXIT
trap 'exit 130' INT TERM HUP
fail() { echo "clean_install: $*" >&2; exit 1; }
inside() { chroot "$system" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }

chmod 755 "$work"
mkdir "$system" "$shared"
quietly debootstrap --variant=minbase bookworm "$system" http://deb.debian.org/debian
cp -L /etc/resolv.conf "$system/etc/resolv.conf"
mount -t proc proc "$system/proc"
mount --bind /dev "$system/dev"
mkdir -p "$system$shared"
mount --bind "$shared" "$system$shared"
inside useradd --create-home player
ids=(--reuid "$(inside id -u player)" --regid "$(inside id -g player)" --clear-groups)
echo "A Debian $(<"$system/etc/debian_version") of $(inside dpkg-query -W | wc -l) packages."

cp build/package/*.deb "$system/root/"
cp -r --parents tests/walk sounds "$shared"
cat >"$shared/orvane-utilities" <<END
#!/bin/sh
exec /usr/sbin/chroot $system setpriv --inh-caps=-all --ambient-caps=-all orvane-utilities
END
chmod 755 "$shared/orvane-utilities"
chown -R "${ids[1]}:${ids[3]}" "$shared"

start_command() {
    (cd / && TMPDIR=$shared timeout 120 \
        setpriv "${ids[@]}" --inh-caps=+sys_chroot --ambient-caps=+sys_chroot \
        /usr/bin/python3 -B "$shared/tests/walk" "$shared/orvane-utilities" installed)
}
install() { quietly inside apt-get -q -y "$@" install "/root/$(ls "$system/root")"; }
purge() { quietly inside apt-get -q -y purge orvane-utilities; }

install --no-install-recommends
echo "Installed with what it depends on: $(inside dpkg-query -W | wc -l) packages."
start_command
purge
install
echo "Installed as a user does: $(inside dpkg-query -W | wc -l) packages."
start_command

own=$system/home/player/.local/share/orvane/questions.ini
mkdir -p "${own%/*}"
echo mine >"$own"
files=$(inside dpkg --listfiles orvane-utilities)
install --reinstall
inside dpkg --verify orvane-utilities | grep . && fail "the files differ from the package's"
start_command
purge
left=$(cd "$system" && find . \( -path ./proc -o -path ./dev -o -path ./root -o -path ./home -o -path ./var/log \
    -o -path ".$work" \) -prune -o -iname '*orvane*' -print)
[[ -z $left ]] || fail "left after the removal: $left"
[[ $(<"$own") == mine ]] || fail "the user's own questions are not what they were"
echo "Installed again and removed: $(wc -l <<<"$files") files and folders, nothing left but the user's own questions."
