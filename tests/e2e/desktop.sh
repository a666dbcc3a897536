# A desktop of a test's own, for the scripts beside it to read in: a scratch home, an X server, a window manager.
#
# open_desktop FOLDER SCREEN [OPENBOX ARGUMENTS…]     pictures are kept in FOLDER (empty: a temporary one, removed)
# Sets `home` and `pictures`; what is added to `started` is ended with the script. `demand TOOLS…` leaves with status 77
# when one is missing.

started=()

demand() {
    local tool
    for tool in "$@"; do
        command -v "$tool" >/dev/null || { echo "$tool is not installed"; exit 77; }
    done
}

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

open_desktop() {
    home=$(mktemp -d)
    pictures=${1:-$home/pictures}
    mkdir -p "$pictures" "$home/run"
    chmod 700 "$home/run"
    export PLOTIX_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config XDG_RUNTIME_DIR=$home/run
    unset QT_QPA_PLATFORM WAYLAND_DISPLAY
    trap close_desktop EXIT
    trap 'exit 143' TERM INT HUP

    Xvfb -displayfd 3 -screen 0 "$2" 3>"$home/display" 2>/dev/null &
    started+=($!)
    for _ in $(seq 100); do [ -s "$home/display" ] && break; sleep 0.1; done
    [ -s "$home/display" ] || fail "no X server"
    export DISPLAY=:$(cat "$home/display")
    openbox "${@:3}" >/dev/null 2>&1 &
    started+=($!)
}
