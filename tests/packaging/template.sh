#!/usr/bin/env bash
# A copy of the template builds, passes its own test, and runs from where it is installed.
source "${BASH_SOURCE[0]%/*}/common.sh"
cp -R "$SOURCE/template" game
build_game game
ctest --test-dir build --no-tests=error --output-on-failure

cmake --install build --prefix "$SCRATCH/installed" >log
same_files installed template
rm -r build game
installed/games/my_game/my_game --frames 2 --screenshot last.bmp
[[ -s last.bmp ]]
"$SOURCE/tests/project/display_rates.sh" "$BUILD/tests/project/libsimulated_display.so" installed/games/my_game/my_game
desktop=installed/share/applications/my_game.desktop
for key in Exec Icon; do
    file=$(sed -n "s/^$key=//p" "$desktop" | tr -d '"')
    [[ -f $file ]] || fail "$key of $desktop is no file: $file"
done
