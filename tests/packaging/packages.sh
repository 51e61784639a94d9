#!/usr/bin/env bash
# The Debian packages hold the right files, depend on the right packages, and work when they are unpacked.
source "${BASH_SOURCE[0]%/*}/common.sh"
if ! command -v dpkg-shlibdeps >/dev/null; then
    printf 'This is not Debian.\n'
    exit 77
fi
cpack --config "$BUILD/CPackConfig.cmake" -B "$SCRATCH" >log || fail "$(<log)"
arch=$(dpkg --print-architecture)
newest=$(dpkg-parsechangelog -l "$SOURCE/packaging/changelog" -S Version)
runtime=${RUNTIME}_${newest}_$arch.deb dev=libkobaltrix-dev_${newest}_$arch.deb
dpkg-deb -R "$runtime" "$RUNTIME"
dpkg-deb -R "$dev" libkobaltrix-dev
mkdir root control
for package in "$RUNTIME" libkobaltrix-dev; do
    mv "$package/DEBIAN" "control/$package"
    same_files "$package" "${package/"$RUNTIME"/libkobaltrix}"
    grep -q 'has chosen no licence' "$package/usr/share/doc/$package/copyright"
    cp -R "$package/." root
    mv "control/$package" "$package/DEBIAN"
done
if command -v lintian >/dev/null; then lintian --allow-root --fail-on error,warning "$runtime" "$dev" || fail 'lintian complains.'; fi

# depends PACKAGE: what it depends on, one on a line, alternatives in one.
depends() { dpkg-deb -f "$1" Depends | sed 's/, /\n/g'; }
# needs PACKAGE-FILE NAME...: each of the names is among what it depends on.
needs() {
    local file=$1 name
    shift
    for name in "$@"; do
        depends "$file" | sed 's/ | /\n/g; s/ (>=[^)]*)//g' | grep -qxF "$name" || fail "$file does not depend on $name."
    done
}
needs "$runtime" libc6 libstdc++6 libgl1 libsdl2-2.0-0 libsdl2-image-2.0-0 libsdl2-mixer-2.0-0 libftgl2 libfreetype6
needs "$dev" "$RUNTIME (= $newest)" libsdl2-2.0-0 libsdl2-image-2.0-0 libgif7
# Whatever kobaltrix.pc requires is in a package that the development files depend on.
pc=$SCRATCH/root/usr/$LIBDIR/pkgconfig
for module in $(PKG_CONFIG_PATH=$pc pkg-config --print-requires-private kobaltrix); do
    owner=$(dpkg -S "$(pkg-config --variable=pcfiledir "$module")/$module.pc")
    owner=${owner%%:*}
    needs "$dev" "$owner"
done
[[ $(<"$RUNTIME/DEBIAN/shlibs") == "libKobaltrix ${SONAME#libKobaltrix.so.} $RUNTIME (>= $newest)" ]] || fail "$(<"$RUNTIME/DEBIAN/shlibs")"

# dpkg installs them where the library had its older name, and takes them away again; apt would do the same.
old=old/usr/$LIBDIR/libKobaltrix.so.$VERSION
mkdir -p old/DEBIAN "${old%/*}" system/var/lib/dpkg/{info,updates}
printf 'an older library\n' >"$old"
printf 'Package: libkobaltrix\nVersion: 0.1.0\nArchitecture: %s\nMaintainer: none\nDescription: old\n' "$arch" >old/DEBIAN/control
dpkg-deb --root-owner-group -b old old.deb >log
touch system/var/lib/dpkg/{status,available}
as_root=()
if ((EUID != 0)); then as_root=(unshare --map-root-user); fi
there() { "${as_root[@]}" dpkg --root="$SCRATCH/system" --force-not-root --force-depends --no-triggers --log=dpkg.log "$@" >log 2>&1 || fail "$(<log)"; }
if "${as_root[@]}" true 2>/dev/null; then # some machines let nobody but root do this
    there -i old.deb
    there -i "$runtime" "$dev"
    cmp "$RUNTIME/usr/$LIBDIR/libKobaltrix.so.$VERSION" "system/usr/$LIBDIR/libKobaltrix.so.$VERSION"
    installed=$(dpkg-query --admindir=system/var/lib/dpkg -W -f '${db:Status-Status} ${Package}\n')
    [[ $(LC_ALL=C sort <<<"$installed" | grep -v '^not') == $'installed libkobaltrix-dev\n'*" $RUNTIME" ]] || fail "Installed are: $installed"
    there --purge "$RUNTIME" libkobaltrix-dev
    [[ ! $(find system ! -type d ! -path '*/var/*') ]] || fail "Left behind: $(find system ! -type d ! -path '*/var/*')"
fi
if command -v apt-get >/dev/null; then
    apt-get install --simulate --no-install-recommends "./$runtime" "./$dev" >log 2>&1 || fail "$(<log)"
    for package in "$RUNTIME" libkobaltrix-dev; do grep -q "^Inst $package " log || fail "apt installs no $package."; done
fi

# What was unpacked builds a game; nothing in it looks for libraries anywhere but where the system does.
export PKG_CONFIG_PATH=$pc LD_LIBRARY_PATH=$SCRATCH/root/usr/$LIBDIR
ask_pkg_config --cflags --libs kobaltrix
"$CXX" "$here/game/main.cpp" -o game "${flags[@]}"
links_shared game
./game
# A package of that game depends on the version that brought the names it uses.
mkdir debian
printf 'Source: game\n\nPackage: game\nArchitecture: any\n' >debian/control
dpkg-shlibdeps -O -S"$RUNTIME" game 2>log | grep -qF "$RUNTIME (>= $VERSION)" || fail "$(<log)"

# The manual page says what the program says, word by word.
root/usr/bin/kxsprite --help >help
said=$(sed 's/^usage://; s/^Exit status://' help | tr -s ' \n' ' ')
page=$(zcat root/usr/share/man/man1/kxsprite.1.gz | sed '/^\./d; s/\\f[BR]//g; s/\\-/-/g; s/\\e/\\/g' | tr -s ' \n' ' ')
[[ $page == *"$said"* ]] || fail "The manual page says: $page"
for file in root/usr/bin/kxsprite root/usr/"$LIBDIR"/libKobaltrix.so; do
    if readelf --dynamic "$file" | grep -E 'R(UN)?PATH'; then fail "$file has a path of its own."; fi
done
