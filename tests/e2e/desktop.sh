# A desktop of a test's own, for the scripts beside it to read in: a scratch home, an X server, a window manager.
#
# open_desktop FOLDER SCREEN [OPENBOX ARGUMENTS…]     pictures are kept in FOLDER (empty: a temporary one, removed)
# Sets `home` and `pictures`; what is added to `started` is ended with the script. `demand` is here too,
# see demand.sh. With `server_keeps_picture` set, the server keeps what it shows in the file `Xvfb_screen0` in `home`.

. "$(dirname "${BASH_SOURCE[0]}")/../support/demand.sh"

started=()

close_desktop() {
    for process in "${started[@]}"; do kill "$process" 2>/dev/null; done
    wait 2>/dev/null
    rm -rf "$home"
}

fail() {
    import -window root "$pictures/failed.png" 2>/dev/null
    echo "FAILED: $*"
    exit 1
}

# A server of this script's own at a number that no other script takes: numbers that servers choose for themselves may be
# those of one that is just ending. One that dies, or does not answer, is started again at another number. It is not to
# reset itself: a server does so when its last client leaves, here the one that asks whether it answers, and refuses
# whoever comes meanwhile, in one of sixty starts the window manager, or the program, which then found no display.
start_server() { # SCREEN
    local attempt number server
    for attempt in 1 2 3 4 5; do
        number=$((1000 + ($$ * 7 + attempt * 4001) % 50000))
        Xvfb ":$number" -screen 0 "$1" -nolisten tcp -noreset ${server_keeps_picture:+-fbdir "$home"} >/dev/null 2>&1 &
        server=$!
        for _ in $(seq 150); do
            kill -0 "$server" 2>/dev/null || break
            if DISPLAY=:$number timeout 5 xdotool getdisplaygeometry >/dev/null 2>&1 && kill -0 "$server" 2>/dev/null; then
                started+=("$server")
                export DISPLAY=:$number
                return
            fi
            sleep 0.1
        done
        kill "$server" 2>/dev/null
        wait "$server" 2>/dev/null
    done
    fail "no X server"
}

open_desktop() {
    home=$(mktemp -d)
    pictures=${1:-$home/pictures}
    mkdir -p "$pictures" "$home/run"
    chmod 700 "$home/run"
    export PLOTIX_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config XDG_RUNTIME_DIR=$home/run
    unset QT_QPA_PLATFORM WAYLAND_DISPLAY
    trap close_desktop EXIT
    trap 'exit 143' TERM INT HUP

    start_server "$2"
    openbox "${@:3}" >/dev/null 2>&1 &
    started+=($!)
    for _ in $(seq 150); do
        xdotool get_num_desktops >/dev/null 2>&1 && return
        sleep 0.1
    done
    fail "no window manager"
}
