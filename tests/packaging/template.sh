#!/usr/bin/env bash
# A copy of the template builds, passes its own test, and runs from where it is installed, however it is started.
source "${BASH_SOURCE[0]%/*}/common.sh"
cp -R "$SOURCE/template" game

# What makes its sprites, of sources of each kind and alone.
cp -R game sprites
mkdir -p sprites/art/moth/{fly,rest}
cp "$SOURCE/tests/fuzz/corpus/aseprite/modes.aseprite" sprites/art/lamp.aseprite
cp game/assets/firefly.png sprites/art/moth/fly/1.png
cp game/assets/firefly.png sprites/art/moth/rest/1.png
printf 'add_custom_target(art)\nkobaltrix_sprites(art art/lamp.aseprite art/moth DESTINATION art STEP_MS 20)\n' >>sprites/CMakeLists.txt
configure_game sprites made
make_sprites() { cmake --build made --target art my_game_sprites >log; }
make_sprites || fail "$(<log)"
"$PREFIX/bin/kxsprite" check made/art/{lamp,moth}.spr
"$PREFIX/bin/kxsprite" info made/assets/firefly.spr >before
sed -i 's/"cells": \[0, 1, 2, 1\], "duration": \[4, 3, 4, 3\]/"cells": [2], "duration": 9/' sprites/assets/firefly.json
make_sprites
"$PREFIX/bin/kxsprite" info made/assets/firefly.spr >after
if cmp -s before after; then fail "A source that has changed was not made anew."; fi
sed -i 's/"cells": \[2\]/"cells": [99]/' sprites/assets/firefly.json
if make_sprites; then fail "A frame beyond the sheet was built."; fi
grep -q 'outside the sheet' log || fail "$(<log)"

build_game game
saves=$SCRATCH/home/.local/share/my_game
unset XDG_DATA_HOME
HOME=$SCRATCH/home ctest --test-dir build --no-tests=error --output-on-failure
[[ ! -e $saves ]] || fail "The template's tests wrote into the player's folder."

cmake --install build --prefix "$SCRATCH/installed" >log
same_files installed template
rm -r build game
export HOME=$SCRATCH/home
installed/bin/my_game --frames 2 --screenshot last.bmp
[[ -s last.bmp ]]
"$SOURCE/tests/project/display_rates.sh" "$BUILD/tests/project/libsimulated_display.so" installed/bin/my_game
# By its name, by links, from another folder and after it has moved: always with its files, and with what it has saved.
left() { sed -n 's/^steps left: //p' "$saves/saved_game.txt"; }
mv installed "moved é"
ln -s "moved é/bin/my_game" link
ln -s link second
mkdir elsewhere
steps=$(left)
for start in 'PATH="$SCRATCH/moved é/bin:$PATH" my_game' './link' 'cd elsewhere && ../second' \
    'cd / && exec -a my_game "$SCRATCH/link"' 'cd "moved é/bin" && ./my_game'; do
    bash -c "$start --frames 5" || fail "It does not start by: $start"
    steps=$((steps - 5))
    [[ $(left) == "$steps" ]] || fail "It did not go on where it was, but at $(left), started by: $start"
done
