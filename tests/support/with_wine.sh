#!/usr/bin/env bash
# with_wine.sh COMMAND...: runs the command on an X desktop of its own, and ends what Wine has left running there. There is
# no window manager.
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/display.sh"
(($#)) || die "usage: $tool COMMAND..."

need wine wineserver
wine=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../../scripts/wine
trap '"$wine" --end 2>/dev/null || true; clean_up' EXIT
start_xvfb
unset SDL_VIDEODRIVER
export LC_ALL=C.UTF-8 # or Wine finds no files with accents in their names

# register KEY NAME VALUE [TYPE]: in Wine's registry.
register() {
    "$wine" reg add "HKCU\\$1" /v "$2" /t "${4:-REG_SZ}" /d "$3" /f >"$scratch/wine.log" 2>&1 || die "Wine does not start:" "$scratch/wine.log"
}
# Temporary files lie on the drive that paths of this system are read on, whatever folder a test works in.
temporary=$scratch/temporary
mkdir "$temporary"
for name in TEMP TMP; do register Environment $name "Z:${temporary//\//\\}"; done
# Wine waits two seconds for a window manager whenever a window closes, unless it is told that there is none.
register 'Software\Wine\X11 Driver' Managed N
# A point is a pixel, whatever the prefix was set to.
register 'Control Panel\Desktop' LogPixels 96 REG_DWORD
# Wine brings few fonts; it has those of this system. Not in folders of their own: fontconfig mixes those up on Windows.
fonts=$("$wine" winepath -u 'C:\windows\Fonts' 2>"$scratch/wine.log") || die "Wine has no folder of fonts:" "$scratch/wine.log"
ln -sf /usr/share/fonts/truetype/*/*.ttf "$fonts"
run_command "$@"
