#!/usr/bin/env bash
# kobaltrix_add_game with assets and texts of every kind, and what it says when a game cannot be made.
source "${BASH_SOURCE[0]%/*}/common.sh"
mkdir -p game/{art,sounds/deep,files}
cd game
cp "$SOURCE"/template/assets/firefly.* art
cp "$SOURCE/template/desktop/icon.png" .
cp "$SOURCE/docs/hero.png" wide.png
printf '<?xml version="1.0"?>\n<svg xmlns="http://www.w3.org/2000/svg"/>\n' >icon.svg
printf 'int main() { return 0; }\n' >main.cpp
printf 'Do what you like; but [so].\n' >terms.txt
touch sounds/{.hidden,deep/a.wav} files/{'b c.txt',b.txt~}
# project TEXT: what the CMakeLists.txt of the game has behind its beginning.
project() { printf 'cmake_minimum_required(VERSION 3.25)\n%s\n' "$1" >CMakeLists.txt; }

project '
project(games LANGUAGES CXX)
find_package(Kobaltrix REQUIRED)
set(made ${CMAKE_BINARY_DIR}/assets/made.txt)
add_custom_command(OUTPUT ${made} COMMAND ${CMAKE_COMMAND} -E touch ${made})
kobaltrix_add_game(
  a_Game SOURCES main.cpp VERSION 2.1 ICON icon.png icon.svg
  ASSETS sounds files/ art/ wide.png ${made} SPRITES art/firefly.json STEP_MS 20
  TITLE [[Bats & "Moths"; <or> C:\x]] SUMMARY [[5 < 6; and ${more}]] DESCRIPTION "One.\n\nTwo & a half of a
paragraph; and so on, as long as it takes to be one that has something to say." DEVELOPER "Ada & Ilse"
  CONTACT "Ada <ada@example.org>" HOMEPAGE "https://ada-l.example.org/game?a=1&b=2" LICENSE "MIT AND CC-BY-4.0"
  COPYRIGHT terms.txt DATE 2024-07-03 DEPENDS fonts-dejavu-core CATEGORIES Game KidsGame)
install(FILES terms.txt DESTINATION share/a_Game COMPONENT a_Game)'
build_game . >log || fail "$(<log)"
assets=$(cd build/assets && find . -type f | LC_ALL=C sort | xargs -d '\n')
[[ $assets == './b c.txt ./firefly.png ./firefly.spr ./made.txt ./sounds/deep/a.wav ./wide.png' ]] || fail "$assets"
printf 'changed' >'files/b c.txt'
printf 'new' >sounds/deep/b.wav
cmake --build build >log || fail "$(<log)"
[[ $(<'build/assets/b c.txt')$(<build/assets/sounds/deep/b.wav) == changednew ]] || fail 'What has changed was not copied.'

if command -v dpkg-shlibdeps >/dev/null; then
    cmake --build build --target a_Game_package >log || fail "$(<log)"
    dpkg-deb -x build/packages/a-game_2.1_*.deb deb
    (cd deb/usr && find . -type f | LC_ALL=C sort | diff - <(printf '%s\n' ./bin/a_Game ./share/a_Game/{'b c.txt',firefly.png,firefly.spr,made.txt} \
        ./share/a_Game/sounds/deep/{a,b}.wav ./share/a_Game/{terms.txt,wide.png} ./share/applications/a_Game.desktop ./share/doc/a-game/copyright \
        ./share/icons/hicolor/{64x64/apps/a_Game.png,scalable/apps/a_Game.svg} ./share/metainfo/org.example.ada_l.a_Game.metainfo.xml))
    grep -qxF 'Name=Bats & "Moths"; <or> C:\\x' deb/usr/share/applications/a_Game.desktop
    grep -qF '<p>Two &amp; a half' deb/usr/share/metainfo/*.xml # appstreamcli has read all of it
    grep -qxF 'Do what you like; but [so].' deb/usr/share/doc/a-game/copyright
    dpkg-deb -I build/packages/*.deb >control
    for line in 'Maintainer: Ada <ada@example.org>' 'Homepage: https://ada-l.example.org/game?a=1&b=2' 'Description: 5 < 6; and ${more}'; do
        grep -qF "$line" control || fail "$(<control)"
    done
    grep -q 'Depends:.* fonts-dejavu-core' control || fail "$(<control)"
fi

# refused MESSAGE ARGUMENTS [LANGUAGE]: the call with these arguments stops CMake with this message.
refused() {
    local use="project(games LANGUAGES NONE)
include($PREFIX/$LIBDIR/cmake/Kobaltrix/KobaltrixGame.cmake)"
    if (($# == 3)); then use=$'project(games LANGUAGES CXX)\nfind_package(Kobaltrix REQUIRED)'; fi
    project "$use
kobaltrix_add_game($2)"
    if configure_game . refused >log 2>&1; then fail "Not refused: $2"; fi
    tr -s ' \n' ' ' <log | grep -qF -- "$1" || fail "$2" "$(<log)"
    rm -r refused
}
good='SOURCES main.cpp ICON icon.png VERSION 1'
refused "A game's name has at least two" "\"my game\" $good"
refused "A game's name has at least two" "x $good"
refused 'SOURCES are missing' 'game ICON icon.png VERSION 1'
refused 'ICON is missing' 'game SOURCES main.cpp VERSION 1'
refused 'VERSION is missing' 'game SOURCES main.cpp ICON icon.png'
refused '"v1" is no VERSION' "game $good VERSION v1"
refused '"colour red" belongs to no option' "game colour red $good"
refused 'There is nothing behind TITLE' "game $good TITLE"
refused 'SUMMARY has to be one line' "game $good SUMMARY \"a\nb\""
refused '"my_game" is no ID. It has to be such as org.example.my_game' "game $good ID my_game"
refused '"ada" is no CONTACT' "game $good CONTACT ada"
refused '"example.org" is no HOMEPAGE' "game $good HOMEPAGE example.org"
refused '"today" is no DATE' "game $good DATE today"
refused '"0" is no STEP_MS' "game $good STEP_MS 0"
refused '"Fun ny" is none of the CATEGORIES' "game $good CATEGORIES \"Fun ny\""
refused "no.png is not there" "game $good ASSETS wide.png no.png"
refused "no.json is not there" "game $good SPRITES no.json"
refused 'no.txt is not there' "game $good COPYRIGHT no.txt"
refused 'holds the build folder' "game $good ASSETS ./"
refused 'There are two assets "wide.png"' "game $good ASSETS wide.png art/../wide.png" CXX
refused 'wide.png has 80 by 32 pixels' 'game SOURCES main.cpp VERSION 1 ICON wide.png' CXX
refused 'main.cpp is neither a PNG nor an SVG' 'game SOURCES main.cpp VERSION 1 ICON main.cpp' CXX
refused 'The static library is not found here' "game $good"
