# shellcheck shell=bash disable=SC2154
# An X display without a screen, with a window manager; sourced after common.sh.
#
# start_display exports DISPLAY; stop_display ends what start_display started.

display_processes=()

start_display() {
    local folder number='' i
    folder=$(mktemp -d)
    # The server itself takes the first free number and tells it once it answers. The file is there
    # before the server is: whoever looks first finds it empty.
    : >"$folder/number"
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$folder/number" 2>"$folder/log" &
    display_processes+=($!)
    for ((i = 0; i < 200; i++)); do
        read -r number <"$folder/number" && break # fails until the line is whole
        number=''
        kill -0 "${display_processes[0]}" 2>/dev/null || break
        sleep 0.05
    done
    if [ -z "$number" ]; then
        cat "$folder/log" >&2
        rm -r "$folder"
        fail "No X display could be started."
    fi
    rm -r "$folder"
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY
    openbox --sm-disable --config-file "$root/scripts/openbox.xml" >/dev/null 2>&1 &
    display_processes+=($!)
    # The window manager reports the number of desktops, as soon as there is one.
    for ((i = 0; i < 200; i++)); do
        xdotool get_num_desktops >/dev/null 2>&1 && return 0
        sleep 0.05
    done
    fail "The window manager did not start."
}

stop_display() {
    local i
    for ((i = ${#display_processes[@]} - 1; i >= 0; i--)); do
        kill "${display_processes[i]}" 2>/dev/null || true
        wait "${display_processes[i]}" 2>/dev/null || true
    done
    display_processes=()
}
