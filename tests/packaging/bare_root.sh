#!/usr/bin/env bash
# The packages of shipping.sh are installed and unpacked as docs/shipping.md says, each in a Debian that has nothing else,
# and play the template's recording. The bare Debian is kept in the user's cache, with what is downloaded for it.
source "${BASH_SOURCE[0]%/*}/common.sh"
skip() {
    printf 'Not played in a bare Debian: %s\n' "$*"
    exit 77
}
command -v mmdebstrap >/dev/null || skip 'mmdebstrap is not here.'
as_root=(unshare --mount --pid --fork --kill-child)
((EUID == 0)) || as_root+=(--user --map-root-user --map-auto)
"${as_root[@]}" true 2>log || skip "$(<log)"

# shellcheck disable=SC1091
codename=$(. /etc/os-release && printf %s "$VERSION_CODENAME")
arch=$(dpkg --print-architecture)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/kobaltrix
base=$cache/$codename-$arch.tar
mkdir -p -- "$cache/archives/partial"
exec 9>"$cache/lock"
flock 9 # apt would not wait for another check
{
    apt-config dump | grep -i '::proxy' || true
    printf '%s;\n' 'APT::Get::Assume-Yes "true"' 'Acquire::Languages "none"' 'Acquire::GzipIndexes "true"' 'Dpkg::Use-Pty "false"'
} >apt.conf
if [[ ! -f $base ]]; then
    sources=()
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/debian.sources; do
        if [[ -s $file ]]; then sources+=("$file"); fi
    done
    mmdebstrap --variant=apt --skip=cleanup/apt/lists --aptopt="$SCRATCH/apt.conf" --dpkgopt=force-unsafe-io \
        --dpkgopt='path-exclude=/usr/share/man/*' --dpkgopt='path-exclude=/usr/share/locale/*' --format=tar \
        "$codename" "$base.$$" "${sources[@]}" >log 2>&1 || skip "$(tail -n 5 log)"
    mv -- "$base.$$" "$base"
fi

for part in '4 deb' '5 tar'; do
    # shellcheck disable=SC2086
    "${as_root[@]}" bash "$here/in_bare_root.sh" "$base" "$cache/archives" $part >log 2>&1 || fail "$(<log)"
    cmp "${part#* }.bmp" "$SHIPPED/expected.bmp"
done
