#!/bin/bash
# A trend is made, renamed and put into a window of its own; the program is ended by SIGTERM and by Ctrl+Q, and opens
# again as it was left.
#
# usage: window_restored.sh PROGRAM [FOLDER]     pictures are kept in FOLDER (default: a temporary one, removed)
# Needs Xvfb, openbox, xdotool, ImageMagick and sqlite3. Exit status 77 when one of them is missing.
set -u
program=$1
. "$(dirname "$0")/desktop.sh"
demand Xvfb openbox xdotool import sqlite3
open_desktop "${2:-}" 1600x1000x24

site=$home/garden.plotix
printf 'time,Temperature (°C),Pressure (hPa)\n' >"$home/garden.csv"
for hour in $(seq 0 23); do
    printf '2024-05-01T%02d:00:00Z,%d,%d\n' "$hour" $((10 + hour % 12)) $((1000 + hour)) >>"$home/garden.csv"
done
"$program" import "$home/garden.csv" --site "$site" --agent Garden >/dev/null || fail "the import"

find_window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | head -1; }
await_window() {
    for _ in $(seq 200); do [ -n "$(find_window "$1")" ] && return; sleep 0.1; done
    fail "no window named $1"
}
start() {
    "$program" open "$site" &
    process=$!
    started+=("$process")
    await_window '^garden .* Plotix$'
    sleep 1
}
await_end() {
    for _ in $(seq 100); do kill -0 "$process" 2>/dev/null || { wait "$process"; return; }; sleep 0.1; done
    fail "the program did not end"
}
key() { xdotool key --clearmodifiers "$@"; sleep 0.4; }
focus_site() { xdotool windowactivate --sync "$(find_window '^garden .* Plotix$')"; sleep 0.3; }
geometry() { xdotool getwindowgeometry --shell "$1" | grep -E '^(X|Y|WIDTH|HEIGHT)=' | tr '\n' ' '; }

start
xdotool windowmove --sync "$(find_window '^garden .* Plotix$')" 60 70
xdotool windowsize --sync "$(find_window '^garden .* Plotix$')" 1100 700
focus_site
trends() { sqlite3 "$site" 'SELECT count(*) FROM plugin WHERE class_name LIKE "%PlotixPlugIn"'; }
[ "$(trends)" = 1 ] || fail "the import made no trend"
import -window root "$pictures/imported.png"
xdotool mousemove --window "$(find_window '^garden .* Plotix$')" 18 370 click 1  # the tick of the first property
sleep 0.4
key ctrl+n
sleep 0.6
[ "$(trends)" = 2 ] || fail "no trend was made of the ticked property"
key F2
xdotool type --delay 30 'Spring'
key Return
key ctrl+shift+o
await_window '^Spring .* garden'
xdotool windowmove --sync "$(find_window '^Spring .* garden')" 500 200
xdotool windowsize --sync "$(find_window '^Spring .* garden')" 800 560
sleep 0.6
wanted=$(geometry "$(find_window '^Spring .* garden')")
wanted_site=$(geometry "$(find_window '^garden .* Plotix$')")
import -window root "$pictures/left.png"
kill -TERM "$process"
await_end || fail "SIGTERM ended the program with status $?"

start
await_window '^Spring .* garden'
sleep 1
import -window root "$pictures/reopened.png"
found=$(geometry "$(find_window '^Spring .* garden')")
[ "$found" = "$wanted" ] || fail "the separate window came back at $found instead of $wanted"
found=$(geometry "$(find_window '^garden .* Plotix$')")
[ "$found" = "$wanted_site" ] || fail "the site window came back at $found instead of $wanted_site"

# Closed, the separate window gives its trend back; quitting then remembers that.
xdotool windowactivate --sync "$(find_window '^Spring .* garden')"
key ctrl+w
focus_site
import -window root "$pictures/brought_back.png"
key ctrl+q
await_end || fail "Ctrl+Q ended the program with status $?"
start
sleep 1
[ -z "$(find_window '^Spring .* garden')" ] || fail "the separate window was opened again after it was closed"
import -window root "$pictures/one_window.png"
kill -TERM "$process"
await_end || fail "SIGTERM ended the program with status $?"
echo "passed"
