#!/usr/bin/env bash
# in_bare_root.sh BASE ARCHIVES NUMBER NAME: unpacks the bare Debian of the file BASE, follows the part of docs/shipping.md
# with that number in it, and keeps the picture that the game comes to as NAME.bmp. ARCHIVES has what apt has fetched. To
# be run with mounts of its own; the environment is that of bare_root.sh.
set -euo pipefail
base=$1 archives=$2 number=$3 name=$4
mkdir -p root
mount -t tmpfs -o size=2g,mode=755 bare root # gone with the mounts
tar -C root -xf "$base" --exclude='./dev/*'
mkdir root/play
cp "$SHIPPED"/packages/* "$SOURCE/template/tests/round.txt" root/play
cp /etc/resolv.conf root/etc/resolv.conf
cp apt.conf root/etc/apt/apt.conf.d/90test
awk -f "$SOURCE/tests/project/page_as_script.awk" <(sed -n "/^## $number/,/^## [^$number]/p" "$SOURCE/docs/shipping.md") |
    sed "s/_amd64/_$(dpkg --print-architecture)/; s/x86_64/$(uname -m)/" >root/play/page.sh
grep -q '^apt-get install' root/play/page.sh
tail -n 1 root/play/page.sh | grep -q 'my_game$'

mount --rbind /dev root/dev
mount --bind "$archives" root/var/cache/apt/archives
mount -t proc proc root/proc
in_root() {
    chroot root env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/play/home DEBIAN_FRONTEND=noninteractive SDL_VIDEODRIVER=offscreen \
        SDL_AUDIODRIVER=dummy KOBALTRIX_REPLAY=round.txt KOBALTRIX_REPLAY_STOP=430 KOBALTRIX_REPLAY_PICTURE=last.bmp \
        bash -euxc "cd /play; $1"
}
# What was kept of the archive's lists may be older than the archive.
in_root '. ./page.sh' || in_root 'apt-get update; . ./page.sh'
mv root/play/last.bmp "$name.bmp"
