#!/usr/bin/env bash
# A game takes the static library with CMake, which brings what it links; also where no shared one is installed.
source "${BASH_SOURCE[0]%/*}/common.sh"
build_game "$here/game" -DCOMPONENTS=static -DLIBRARY=Kobaltrix::Static
links_static build/game
build/game
links_static build/game_test
build/game_test

cp -R "$PREFIX" static
rm static/"$LIBDIR"/*.so* static/"$LIBDIR"/cmake/Kobaltrix/KobaltrixSharedTargets*.cmake
CMAKE_PREFIX_PATH=$SCRATCH/static
rm -r build
build_game "$here/game" -DLIBRARY=Kobaltrix::Kobaltrix
links_static build/game
build/game
