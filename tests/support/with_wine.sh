#!/usr/bin/env bash
# with_wine.sh COMMAND...: runs the command on an X desktop of its own, and ends what Wine has left running there. Wine is
# its own window manager.
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/display.sh"
(($#)) || die "usage: $tool COMMAND..."

need wine wineserver
wine=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../../scripts/wine
trap '"$wine" --end 2>/dev/null || true; clean_up' EXIT
start_xvfb
unset SDL_VIDEODRIVER
# Temporary files lie on the drive that paths of this system are read on, whatever folder a test works in.
temporary=$scratch/temporary
mkdir "$temporary"
for name in TEMP TMP; do
    "$wine" reg add 'HKCU\Environment' /v $name /d "Z:${temporary//\//\\}" /f >"$scratch/wine.log" 2>&1 ||
        die "Wine does not start:" "$scratch/wine.log"
done
run_command "$@"
