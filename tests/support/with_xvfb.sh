#!/usr/bin/env bash
# with_xvfb.sh COMMAND...: runs the command on an X desktop of its own, which nobody sees.
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/display.sh"
(($#)) || die "usage: $tool COMMAND..."

start_xvfb
start_window_manager
export SDL_VIDEODRIVER=x11
run_command "$@"
