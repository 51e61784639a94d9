#!/usr/bin/env bash
# A game finds the library with pkg-config, shared and static.
source "${BASH_SOURCE[0]%/*}/common.sh"
[[ $(pkg-config --modversion kobaltrix) == "$VERSION" ]] || fail "Not version $VERSION."
read -ra cflags < <(pkg-config --cflags kobaltrix)

read -ra libs < <(pkg-config --libs kobaltrix)
"$CXX" -std=c++11 "${cflags[@]}" "$here/game/main.cpp" -o shared "${libs[@]}"
links_shared shared
if needed shared | grep -q SDL; then fail "The game itself links what only the library calls."; fi
LD_LIBRARY_PATH=$PREFIX/$LIBDIR ./shared

read -ra cflags < <(pkg-config --cflags kobaltrix-static)
read -ra libs < <(pkg-config --libs kobaltrix-static)
"$CXX" -std=c++11 "${cflags[@]}" "$here/game/main.cpp" -o static "${libs[@]}"
links_static static
./static

# Who links everything statically is told of everything.
libs=" $(pkg-config --static --libs kobaltrix) "
for name in Kobaltrix SDL2 SDL2_image SDL2_mixer ftgl freetype GL GLU; do
    [[ $libs == *" -l$name "* ]] || fail "-l$name is not in:$libs"
done
