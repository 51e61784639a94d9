#!/usr/bin/env bash
# A game finds the library with pkg-config, shared and static.
source "${BASH_SOURCE[0]%/*}/common.sh"
[[ $(pkg-config --modversion kobaltrix) == "$VERSION" ]] || fail "Not version $VERSION."
ask_pkg_config --cflags --libs kobaltrix
"$CXX" -std=c++11 "$here/game/main.cpp" -o shared "${flags[@]}"
links_shared shared
if needed shared | grep -q SDL; then fail "The game itself links what only the library calls."; fi
LD_LIBRARY_PATH=$PREFIX/$LIBDIR ./shared

ask_pkg_config --cflags --libs kobaltrix-static
"$CXX" -std=c++11 "$here/game/main.cpp" -o static "${flags[@]}"
links_static static
./static

# A game's test links the kit before either of them.
for kind in '' -static; do
    ask_pkg_config --cflags --libs kobaltrix-test "kobaltrix$kind"
    "$CXX" -std=c++11 "$here/game/test.cpp" -o "test$kind" "${flags[@]}"
    LD_LIBRARY_PATH=$PREFIX/$LIBDIR "./test$kind"
done
links_shared test
links_static test-static

# Who links everything statically is told of everything.
libs=" $(pkg-config --static --libs kobaltrix) "
for name in Kobaltrix SDL2 SDL2_image SDL2_mixer ftgl freetype harfbuzz fribidi unibreak fontconfig z zstd GL GLU; do
    [[ $libs == *" -l$name "* ]] || fail "-l$name is not in:$libs"
done
