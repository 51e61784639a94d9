#!/usr/bin/env bash
# display_rates.sh DISPLAY GAME...: each game runs 60 steps a second on displays of 60, 75 and 144 Hz, which DISPLAY
# simulates.
set -euo pipefail
display=$1
shift
for game; do
    for rate in 60 75 144; do
        steps=$(timeout 120 env DISPLAY_RATE="$rate" LD_PRELOAD="$display" "$game" 2>&1 | sed -n 's/ steps$//p')
        ((599 <= steps && steps <= 602)) || { printf '%s at %d Hz: %s steps\n' "$game" "$rate" "$steps" && exit 1; }
    done
done
