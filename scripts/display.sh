# shellcheck shell=bash disable=SC2154
# display.sh: an X server of our own, without a screen.  Sourced.

display_pids=()
TANDREL_DISPLAYS=

# Starts screens until there are COUNT; their names are in TANDREL_DISPLAYS.
start_displays() { # COUNT
    [ "${#display_pids[@]}" != 0 ] || at_exit+=(stop_displays)
    while [ "${#display_pids[@]}" -lt "$1" ]; do start_display; done
}

# Makes them the ones that programs use from now on.
use_displays() {
    export TANDREL_DISPLAYS DISPLAY=${TANDREL_DISPLAYS%% *}
    unset XAUTHORITY WAYLAND_DISPLAY
}

# The server itself picks a number that is free.  It ends with us even when we are killed
# (--pdeathsig).
start_display() {
    local number_file number='' i
    number_file=$(mktemp)
    # -noreset: the screen must outlive the moments when no program runs.
    setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 1280x1024x24 -dpi 96 -noreset \
        -nolisten tcp 3>"$number_file" >"$logs/display.log" 2>&1 8>&- 9>&- &
    display_pids+=($!)
    for ((i = 0; i < 300; i++)); do
        read -r number <"$number_file" && break
        kill -0 $! 2>/dev/null || break
        sleep 0.05
    done
    rm -f "$number_file"
    [ -n "$number" ] || explain "starting the X server Xvfb" "$logs/display.log"
    TANDREL_DISPLAYS=${TANDREL_DISPLAYS:+$TANDREL_DISPLAYS }:$number
}

stop_displays() {
    kill "${display_pids[@]}" 2>/dev/null
    wait "${display_pids[@]}" 2>/dev/null
}
