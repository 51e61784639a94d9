#!/usr/bin/env bash
# Does what docs/shipping.md says until the game is packed, and looks at what has come of it. The bare root plays it.
source "${BASH_SOURCE[0]%/*}/common.sh"
if ! command -v dpkg-shlibdeps >/dev/null; then
    printf 'This is not Debian.\n'
    exit 77
fi
export HOME=$SCRATCH CMAKE_CXX_COMPILER_LAUNCHER=$LAUNCHER CXX
unset CMAKE_PREFIX_PATH XDG_DATA_HOME
mkdir src
ln -s "$SOURCE" src/kobaltrix
ln -s "$PREFIX" kobaltrix
awk -f "$SOURCE/tests/project/page_as_script.awk" <(sed '/^## 4/,$d' "$SOURCE/docs/shipping.md") >page.sh
for command in 'cmake --build build$' ctest 'cmake --build build --target my_game_package'; do
    [[ $(grep -c "^$command" page.sh) == 1 ]] || fail "$command: not once in the page."
done
call=$(sed -n '/^kobaltrix_add_game(/,/)$/p' "$SOURCE/docs/shipping.md")
[[ $call == "$(sed -n '/^kobaltrix_add_game(/,/)$/p' "$SOURCE/template/CMakeLists.txt")" ]] || fail "The page's game is another one: $call"
bash -eux page.sh >log 2>&1 || fail "$(<log)"
arch=$(dpkg --print-architecture)
name=my_game-0.1-linux-$(uname -m)
mv my_game/build/packages packages
[[ $(cd packages && echo *) == "my-game_0.1_$arch.deb $name.tar.gz" ]] || fail "Packed are: $(ls packages)"

# What a player sees at the recording's last step.
replay() {
    env -i PATH="$PATH" SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy HOME="$SCRATCH/player" KOBALTRIX_REPLAY="$SOURCE/template/tests/round.txt" \
        KOBALTRIX_REPLAY_STOP=430 KOBALTRIX_REPLAY_PICTURE="$SCRATCH/$1.bmp" "${@:2}"
}
replay expected my_game/build/my_game
mv my_game build_folder_is_gone # with the assets in it

dpkg-deb -x "packages/my-game_0.1_$arch.deb" deb
same_files deb/usr template
links_static deb/usr/bin/my_game
if readelf --dynamic deb/usr/bin/my_game | grep -E 'R(UN)?PATH'; then fail "The program looks elsewhere for libraries."; fi
for package in libgl1 libegl1 libsdl2-2.0-0 libsdl2-image-2.0-0 libsdl2-mixer-2.0-0 libftgl2; do
    dpkg-deb -f packages/*.deb Depends | grep -q "\b$package\b" || fail "The package does not depend on $package."
done
grep -qx 'Exec=my_game' deb/usr/share/applications/my_game.desktop
appstreamcli validate --no-net deb/usr/share/metainfo/*.xml
desktop-file-validate deb/usr/share/applications/my_game.desktop

# Unpacked, moved, and started through PATH and by a link: with its own libraries and assets, and the machine's.
tar -xf "packages/$name.tar.gz"
(cd "$name" && ls) | diff - <(printf '%s\n' assets lib licenses my_game)
mkdir 'moved é'
mv "$name" 'moved é/game'
ln -s 'moved é/game/my_game' link
replay link ./link
replay path env PATH="$SCRATCH/moved é/game:$PATH" my_game
for picture in link path; do cmp "$picture.bmp" expected.bmp; done
env -i "$(command -v ldd)" "moved é/game/my_game" >libraries
[[ -f moved\ é/game/lib/libSDL2-2.0.so.0 ]]
if grep -E 'not found|/kobaltrix/' libraries; then fail "It needs what its folder lacks."; fi
for own in 'moved é/game/lib'/*; do
    case ${own##*/} in
    libc.so* | libm.so* | libstdc++* | libgcc_s* | ld-* | libGL.* | libGLX.* | libGLdispatch* | libEGL* | libX11.* | libxcb* | libdrm* | libgbm* | libz.*)
        fail "$own has to be the machine's."
        ;;
    esac
    grep -qF "/moved é/game/lib/${own##*/} (" libraries || fail "$own is not the one that is used: $(<libraries)"
    grep -qF "lib/${own##*/}" 'moved é/game/licenses/libraries.txt' || fail "It is not said where $own is from."
done
grep -q 'GNU LESSER GENERAL PUBLIC LICENSE' 'moved é/game/licenses/common-licenses/LGPL-2.1'
grep -q 'has chosen no licence' 'moved é/game/licenses/my_game.txt'
