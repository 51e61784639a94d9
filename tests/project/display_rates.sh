#!/usr/bin/env bash
# display_rates.sh DISPLAY GAME...: each game runs 60 steps a second on displays of 60, 75 and 144 Hz, which DISPLAY
# simulates. They are counted in a recording of the game.
set -euo pipefail
display=$1
shift
recording=$(mktemp)
trap 'rm -f -- "$recording"*' EXIT
for game; do
    for rate in 60 75 144; do
        timeout 120 env DISPLAY_RATE="$rate" LD_PRELOAD="$display" KOBALTRIX_RECORD="$recording" KOBALTRIX_RECORD_PIXELS=0 "$game"
        steps=$(grep -c '^step ' "$recording" || true)
        ((599 <= steps && steps <= 602)) || { printf '%s at %d Hz: %s steps\n' "$game" "$rate" "$steps" && exit 1; }
    done
done
