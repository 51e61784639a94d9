#!/usr/bin/env bash
# A game takes the shared library with CMake, with its test and then on a machine that has nothing of what the library
# itself links.
source "${BASH_SOURCE[0]%/*}/common.sh"
build_game "$here/game" -DCOMPONENTS="shared;test" -DLIBRARY=Kobaltrix::Kobaltrix
links_shared build/game_test
build/game_test
rm -r build

export PKG_CONFIG_LIBDIR=/nowhere PKG_CONFIG_PATH=
build_game "$here/game" -DCOMPONENTS=shared -DLIBRARY=Kobaltrix::Kobaltrix
links_shared build/game
build/game

# There the static library cannot be had, and the message says what is missing.
if configure_game "$here/game" refused -DCOMPONENTS=static -DLIBRARY=Kobaltrix::Static >refused.log 2>&1; then
    fail "The static library was found without what it links."
fi
tr -s ' \n' ' ' <refused.log | grep -qF 'links what is missing here: sdl2 SDL2_image SDL2_mixer ftgl freetype2 harfbuzz fribidi libunibreak fontconfig zlib libzstd' ||
    fail "$(<refused.log)"
IFS=. read -r major minor _ <<<"$VERSION"
for wrong in "-DCOMPONENTS=shared;sounds" "-DCOMPONENTS=shared;test" "-DWANTED=$major.$((minor + 1))" "-DWANTED=$((major + 1))"; do
    if configure_game "$here/game" wrong -DCOMPONENTS= "$wrong" >wrong.log 2>&1; then fail "Found with $wrong."; fi
    grep -q Kobaltrix_DIR wrong.log || grep -q KobaltrixConfig wrong.log || fail "$(<wrong.log)"
    rm -r wrong
done
