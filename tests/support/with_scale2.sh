#!/usr/bin/env bash
# with_scale2.sh COMMAND...: runs the command on a Wayland display of its own with two pixels to a point.
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/display.sh"
(($#)) || die "usage: $tool COMMAND..."
need weston

start_xvfb
export XDG_RUNTIME_DIR=$scratch
# The X11 backend, since the headless one has no seat and clients expect a keyboard and a pointer.
start_server weston weston --no-config --backend=x11-backend.so --scale=2 --width=1000 --height=900 \
    --socket=wayland-test --idle-time=0
wait_for weston test -S "$XDG_RUNTIME_DIR/wayland-test"
export SDL_VIDEODRIVER=wayland WAYLAND_DISPLAY=wayland-test
run_command "$@"
