#!/bin/bash
# The demonstration site in a real window: it opens, its second start is quick, zoom and fit work, it quits.
#
# usage: window_opens.sh PROGRAM [FOLDER]     pictures are kept in FOLDER (default: a temporary one, removed)
# Needs Xvfb, openbox, xdotool and ImageMagick. Exit status 77 when one of them is missing.
set -u
program=$1
. "$(dirname "$0")/desktop.sh"
demand Xvfb openbox xdotool import compare identify
open_desktop "${2:-}" 1400x900x24

milliseconds() { echo $(($(date +%s%N) / 1000000)); }

# The plotted lines are what brings many colours into the picture; an empty graph is a gradient of greys.
is_drawn() { [ "$(import -window "$window" -crop 900x420+300+110 -format %k info: 2>/dev/null || echo 0)" -gt 250 ]; }

# start LIMIT: starts the program and waits until its trend is drawn; sets `process`, `window` and `elapsed`.
start() {
    local begin
    begin=$(milliseconds)
    "$program" &
    process=$!
    started+=("$process")
    while :; do
        window=$(xdotool search --onlyvisible --name 'Demonstration.* Plotix' 2>/dev/null | head -1)
        [ -n "$window" ] && is_drawn && break
        kill -0 "$process" 2>/dev/null || fail "the program ended by itself"
        [ $(($(milliseconds) - begin)) -lt "$1" ] || fail "no trend was drawn within $1 ms"
        sleep 0.05
    done
    elapsed=$(($(milliseconds) - begin))
}

quit() {
    xdotool windowfocus --sync "$window" key --clearmodifiers ctrl+q
    for _ in $(seq 100); do kill -0 "$process" 2>/dev/null || break; sleep 0.1; done
    kill -0 "$process" 2>/dev/null && fail "Ctrl+Q did not end the program"
    wait "$process" || fail "the program ended with status $?"
}

take() { sleep 0.6; import -window "$window" "$pictures/$1.png"; }
# picture NAME: taken once three in a row show the same graph; a busy machine draws late.
picture() {
    local alike=0
    take "$1"
    for _ in $(seq 30); do
        cp "$pictures/$1.png" "$pictures/$1-before.png"
        take "$1"
        if graph_differs "$1-before" "$1"; then alike=0; else alike=$((alike + 1)); fi
        [ "$alike" -lt 2 ] || break
    done
    rm -f "$pictures/$1-before.png"
}
graph_differs() {  # in the graph alone: the date panel's cursor blinks
    convert "$pictures/$1.png" -crop 900x380+300+110 +repage "$home/one.png"
    convert "$pictures/$2.png" -crop 900x380+300+110 +repage "$home/other.png"
    [ "$(compare -metric AE "$home/one.png" "$home/other.png" null: 2>&1)" != 0 ]
}
difference() {  # how many pixels of the graph, and where
    graph_differs "$1" "$2"
    echo "$(compare -metric AE "$home/one.png" "$home/other.png" null: 2>&1) pixels within" \
        "$(compare -compose src -lowlight-color black "$home/one.png" "$home/other.png" png:- | convert png:- -trim -format %@ info:)"
}

start 120000
echo "first start, the site being built: $elapsed ms"
quit
start 10000
echo "second start: $elapsed ms"
[ "$elapsed" -lt "${PLOTIX_START_LIMIT:-2000}" ] || fail "the second start took $elapsed ms"

xdotool mousemove --window "$window" 5 5
picture opened
xdotool mousemove --window "$window" 700 300 click 4 click 4 click 4
xdotool mousemove --window "$window" 5 5
picture zoomed
graph_differs opened zoomed || fail "the wheel did not zoom"
xdotool windowfocus --sync "$window" key --clearmodifiers ctrl+0
for _ in $(seq 10); do
    picture fitted
    graph_differs opened fitted || break
done
graph_differs zoomed fitted || fail "Fit changed nothing"
graph_differs opened fitted && fail "Fit did not bring the whole trend back: $(difference opened fitted) differ"
quit
echo "passed"
