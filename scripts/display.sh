# shellcheck shell=bash disable=SC2154
# display.sh: an X server of our own, without a screen.  Sourced.

display_pid=

# Starts it once and exports DISPLAY.  The server itself picks a number that is free.  It ends with
# us even when we are killed (--pdeathsig).
start_display() {
    [ -z "$display_pid" ] || return 0
    local number_file number='' i
    number_file=$(mktemp)
    # -noreset: the screen must outlive the moments when no program runs.
    setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 1280x1024x24 -dpi 96 -noreset \
        -nolisten tcp 3>"$number_file" >"$logs/display.log" 2>&1 8>&- 9>&- &
    display_pid=$!
    at_exit+=(stop_display)
    for ((i = 0; i < 300; i++)); do
        read -r number <"$number_file" && break
        kill -0 "$display_pid" 2>/dev/null || break
        sleep 0.05
    done
    rm -f "$number_file"
    [ -n "$number" ] || explain "starting the X server Xvfb" "$logs/display.log"
    export DISPLAY=:$number
    unset XAUTHORITY WAYLAND_DISPLAY
}

stop_display() {
    kill "$display_pid" 2>/dev/null
    wait "$display_pid" 2>/dev/null
}
