#!/usr/bin/env bash
# The Debian packages hold the right files, depend on the right packages, and work when they are unpacked.
source "${BASH_SOURCE[0]%/*}/common.sh"
if ! command -v dpkg-shlibdeps >/dev/null; then
    printf 'This is not Debian.\n'
    exit 77
fi
cpack --config "$BUILD/CPackConfig.cmake" -B "$SCRATCH" >log || fail "$(<log)"
arch=$(dpkg --print-architecture)
runtime=libkobaltrix_${VERSION}_$arch.deb dev=libkobaltrix-dev_${VERSION}_$arch.deb
for package in libkobaltrix libkobaltrix-dev; do
    dpkg-deb -x "${package}_${VERSION}_$arch.deb" "$package"
    same_files "$package" "$package"
    grep -q 'has chosen no licence' "$package/usr/share/doc/$package/copyright"
    cp -R "$package/." root
done

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
needs "$dev" "libkobaltrix (= $VERSION)" libsdl2-2.0-0 libsdl2-image-2.0-0 libgif7
# Whatever kobaltrix.pc requires is in a package that the development files depend on.
pc=$SCRATCH/root/usr/$LIBDIR/pkgconfig
for module in $(PKG_CONFIG_PATH=$pc pkg-config --print-requires-private kobaltrix); do
    owner=$(dpkg -S "$(pkg-config --variable=pcfiledir "$module")/$module.pc")
    owner=${owner%%:*}
    needs "$dev" "$owner"
done
dpkg-deb --ctrl-tarfile "$runtime" | tar -xO ./shlibs >shlibs
[[ $(<shlibs) == "libKobaltrix ${SONAME#libKobaltrix.so.} libkobaltrix (>= $VERSION)" ]] || fail "$(<shlibs)"

# What was unpacked builds a game; nothing in it looks for libraries anywhere but where the system does.
export PKG_CONFIG_PATH=$pc LD_LIBRARY_PATH=$SCRATCH/root/usr/$LIBDIR
ask_pkg_config --cflags --libs kobaltrix
"$CXX" "$here/game/main.cpp" -o game "${flags[@]}"
links_shared game
./game
root/usr/bin/kxsprite --help >help
for file in root/usr/bin/kxsprite root/usr/"$LIBDIR"/libKobaltrix.so; do
    if readelf --dynamic "$file" | grep -E 'R(UN)?PATH'; then fail "$file has a path of its own."; fi
done
