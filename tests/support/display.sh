# shellcheck shell=bash
# Display servers for tests that need a real window system. Sourced by the commands beside it.
set -euo pipefail

tool=${0##*/}
# Waits are counted in steps of a twentieth of a second; a loaded machine is slow, not broken.
patience=600
servers=()
child=

die() {
    printf '%s: %s\n' "$tool" "$1" >&2
    if [[ -s ${2-} ]]; then tail -n 20 -- "$2" >&2; fi
    exit 1
}

need() {
    local program
    for program in "$@"; do
        command -v "$program" >/dev/null || die "$program is not installed."
    done
}

# SDL turns a polite request to end into an event, which a program that hangs never reads.
end_command() {
    local i
    kill "$child" 2>/dev/null || return 0
    for ((i = 0; i < 40; i++)); do
        kill -0 "$child" 2>/dev/null || return 0
        sleep 0.05
    done
    kill -KILL "$child" 2>/dev/null || true
}

# The servers end in the opposite order of their start; nothing that others started is touched.
clean_up() {
    local i
    trap '' INT TERM HUP
    if [[ $child ]]; then end_command; fi
    for ((i = ${#servers[@]} - 1; i >= 0; i--)); do
        kill "${servers[i]}" 2>/dev/null || true
        wait "${servers[i]}" 2>/dev/null || true
    done
    rm -rf -- "$scratch"
}
scratch=$(mktemp -d "${TMPDIR:-/tmp}/display.XXXXXX") # readable by its owner alone
trap clean_up EXIT
trap 'exit 143' INT TERM HUP

# start_server NAME COMMAND...: in the background, its output in a log; it also ends when this shell is killed.
start_server() {
    setpriv --pdeathsig TERM "${@:2}" </dev/null >"$scratch/$1.log" 2>&1 &
    servers+=($!)
}

# wait_for NAME COMMAND...: until the command succeeds, which shows that the server started last is ready.
wait_for() {
    local name=$1 i
    shift
    for ((i = 0; i < patience; i++)); do
        "$@" >/dev/null 2>&1 && return
        kill -0 "${servers[-1]}" 2>/dev/null || die "$name ended before it was ready:" "$scratch/$name.log"
        sleep 0.05
    done
    die "$name did not come up in time:" "$scratch/$name.log"
}

# Starts Xvfb on a display that Xvfb itself finds free, and sets DISPLAY.
start_xvfb() {
    need Xvfb setpriv
    # The number is written once the display can be used.
    start_server Xvfb Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$scratch/number"
    wait_for Xvfb test -s "$scratch/number"
    DISPLAY=:$(<"$scratch/number")
    export DISPLAY
    unset WAYLAND_DISPLAY XAUTHORITY
}

# Starts a window manager: without one no window really becomes fullscreen.
start_window_manager() {
    need openbox xdotool xprop
    start_server openbox openbox --sm-disable
    wait_for openbox xdotool get_num_desktops
}

# Runs the command, which can be stopped like any other, and ends with its status.
run_command() {
    local status=0
    setpriv --pdeathsig KILL "$@" <&0 &
    child=$!
    wait "$child" || status=$?
    child=
    exit "$status"
}
