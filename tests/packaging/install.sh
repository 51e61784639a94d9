#!/usr/bin/env bash
# The build tree installs what it should, in a form that may be moved.
source "${BASH_SOURCE[0]%/*}/common.sh"
rm -rf -- "$PREFIX"
cmake --install "$BUILD" --prefix "$SCRATCH/first" >log
mv -- "$SCRATCH/first" "$PREFIX"
same_files "$PREFIX" prefix
if grep -rIlF -e "$SOURCE" -e "$BUILD" "$PREFIX"; then fail "These name the folder they were built in."; fi

library=$PREFIX/$LIBDIR/libKobaltrix.so
readelf --dynamic "$library" | grep -qF "soname: [$SONAME]" || fail "The library is not named $SONAME."
if readelf --dynamic "$library" | grep -E 'R(UN)?PATH'; then fail "The library looks elsewhere for what it links."; fi
"$PREFIX/bin/kxsprite" --help >help
grep -q '^usage: kxsprite' help
