#!/usr/bin/env bash
# follow.sh PROJECT BUILD FOLDER QUITTER: does what docs/tutorial.md says, word by word, with FOLDER for a home, and has the
# last step's program in main.cpp at the end. The library is installed from BUILD. QUITTER closes the game's window.
set -euo pipefail
project=$1 build=$2 folder=$3 quitter=$4

rm -rf -- "$folder"
mkdir -p -- "$folder/src"
unset XDG_DATA_HOME
export HOME=$folder SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy
ln -s "$project" "$HOME/src/kobaltrix"
cmake --install "$build" --prefix "$HOME/kobaltrix" >/dev/null

awk -f "$project/tests/project/page_as_script.awk" "$project/docs/tutorial.md" >"$folder/page.sh"
for command in 'cmake -B' 'cmake --build' './build/deep_breath'; do
    count=$(grep -c "^$command" "$folder/page.sh")
    ((count == 2)) || { printf '%s: %d times\n' "$command" "$count" && exit 1; }
done
sed "s|^cmake -B build\$|cp '$project/docs/tutorial/10_saving.cpp' main.cpp\n&|; s|^\./build/|LD_PRELOAD='$quitter' &|" \
    "$folder/page.sh" | bash -eux

# What is installed nowhere is found from anywhere, and what is missing is named.
cd /
LD_PRELOAD=$quitter "$folder/deep_breath/build/deep_breath"
rm "$folder/deep_breath/build/assets/font.ttf"
if message=$("$folder/deep_breath/build/deep_breath" 2>&1) || [[ $message != *"font.ttf is missing."* ]]; then
    printf 'Without its font the game says: %s\n' "$message"
    exit 1
fi
