#!/usr/bin/env bash
# A game builds the library as a part of itself, and nothing else that lies beside it.
source "${BASH_SOURCE[0]%/*}/common.sh"
# With the options of this build tree, ccache has the objects.
options=()
while IFS= read -r option; do options+=("-D$option"); done < <(
    grep -E '^(CMAKE_BUILD_TYPE|KOBALTRIX_(WERROR|CHECK_GL)):' "$BUILD/CMakeCache.txt"
)
build_game "$here/subdirectory" -DKOBALTRIX="$SOURCE" -DCMAKE_CXX_COMPILER_LAUNCHER="$LAUNCHER" "${options[@]}"
links_shared build/game
links_static build/game_static
build/game
build/game_static

cmake --install build --prefix "$SCRATCH/installed" >log
same_files installed subdirectory

# A game of the project is packed apart from it.
links_static build/small
build/small
[[ -f build/assets/hero.png ]]
cmake --build build --target small_package >log || fail "$(<log)"
tar -xf build/packages/small-1-linux-*.tar.gz
small-1-linux-*/small
(cd small-1-linux-* && ls) | diff - <(printf '%s\n' assets lib licenses small)
