#!/usr/bin/env bash
# getting_started.sh PROJECT BUILD FOLDER QUITTER DISPLAY: does what docs/getting-started.md says, word by word, with FOLDER for
# a home. Only the library is not built again: it is installed from BUILD. QUITTER closes the game's window,
# and on DISPLAY's displays it keeps its speed.
set -euo pipefail
project=$1 build=$2 folder=$3 quitter=$4 display=$5

rm -rf -- "$folder"
mkdir -p -- "$folder/src"
export HOME=$folder SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy
ln -s "$project" "$HOME/src/kobaltrix"
cmake --install "$build" --prefix "$HOME/kobaltrix" >/dev/null

awk -f "$project/tests/project/page_as_script.awk" "$project/docs/getting-started.md" >"$folder/page.sh"
# Each command of the page, and the game started twice.
for command in 'cmake --build' './build/my_game'; do
    count=$(grep -c "^[^ ]*$command" "$folder/page.sh")
    ((count == 2)) || { printf '%s: %d times\n' "$command" "$count" && exit 1; }
done
sed "s|^\./build/|LD_PRELOAD='$quitter' &|" "$folder/page.sh" | bash -eux

(cd "$folder/my_game" && "$project/tests/project/display_rates.sh" "$display" build/my_game)

# The game that comes out finds its sprite from anywhere, and says what is wrong without it.
cd "$folder"
LD_PRELOAD=$quitter my_game/build/my_game
rm my_game/build/assets/hero.spr
if message=$(LD_PRELOAD=$quitter my_game/build/my_game 2>&1) || [[ $message != *"hero.spr is not in the folder assets"* ]]; then
    printf 'Without its sprite the game says: %s\n' "$message"
    exit 1
fi
