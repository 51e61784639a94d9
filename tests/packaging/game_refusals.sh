#!/usr/bin/env bash
# What kobaltrix_add_game does with assets of every kind, and what it says when a game cannot be made.
source "${BASH_SOURCE[0]%/*}/common.sh"
mkdir -p game/{sounds/deep,files} && cd game
cp "$SOURCE"/template/{assets/firefly.*,desktop/icon.png} .
cp "$SOURCE/docs/hero.png" wide.png
printf '<?xml version="1.0"?>\n<svg xmlns="http://www.w3.org/2000/svg"/>\n' >icon.svg
printf 'int main() { return 0; }\n' >main.cpp
touch sounds/deep/a.wav sounds/.hidden files/'b c.txt' files/b.txt~

# project CALL [PROJECT...]: the project of a game that makes this call.
project() {
    printf 'cmake_minimum_required(VERSION 3.25)\nproject(g %s)\nfind_package(Kobaltrix REQUIRED)\nkobaltrix_add_game(%s)\n' \
        "${2-VERSION 2.1 LANGUAGES CXX}" "$1" >CMakeLists.txt
}

# All kinds of assets, texts with everything that means something to XML, lists and desktops, and more files of its own.
project 'game SOURCES main.cpp ICON icon.png icon.svg ASSETS sounds files/ wide.png made.txt SPRITES firefly.json STEP_MS 20 TITLE
"Bats & \\"Moths\\"; <or> C:\\\\x" SUMMARY "It is 5 < 6; and \\${more}" DESCRIPTION "One.\n\nTwo & a half of a paragraph; so
it is." HOMEPAGE https://ada-lovelace.example.org/game?a=1&b=2 DEVELOPER "Ada & Ilse" CONTACT "Ada <ada@example.org>"
LICENSE "MIT AND CC-BY-4.0" COPYRIGHT wide.txt DATE 2024-07-03 DEPENDS fonts-dejavu-core CATEGORIES Game KidsGame'
printf 'Do what you like; but [so].\n' >wide.txt
sed -i 's/^kobaltrix_add_game/file(WRITE ${CMAKE_BINARY_DIR}\/assets\/made.txt made)\nadd_custom_command(OUTPUT made.txt COMMAND x)\n&/' CMakeLists.txt
sed -i 's/ made.txt SPRITES/ ${CMAKE_BINARY_DIR}\/assets\/made.txt SPRITES/; /add_custom_command/d' CMakeLists.txt
build_game . >log || fail "$(<log)"
cmake --build build --target game_package >log 2>&1 || fail "$(<log)"
dpkg-deb -x build/packages/game_2.1_*.deb deb
