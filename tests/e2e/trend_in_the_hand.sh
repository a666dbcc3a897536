#!/bin/bash
# The demonstration site's first trend in the hand: zoom, pan with and without Alt and Shift, drop, delete, unit, panel.
#
# usage: trend_in_the_hand.sh PROGRAM [FOLDER]     pictures are kept in FOLDER (default: a temporary one, removed)
# Facts come from what the site document stores within two seconds, and from comparing parts of pictures. Needs Xvfb,
# openbox, xdotool, ImageMagick, sqlite3 and Python. Exit status 77 when one of them is missing.
set -u
program=$1
. "$(dirname "$0")/desktop.sh"
demand Xvfb openbox xdotool import compare convert sqlite3 python3
here=$(cd "$(dirname "$0")" && pwd)
# A window manager that leaves Alt + drag to the program.
open_desktop "${2:-}" 1400x900x24 --config-file "$here/openbox_leaves_alt.xml"
site=$home/data/Demonstration.plotix

# Places in the window at its first size, 1280 by 800. What stands below the graph keeps its place from the bottom;
# bars may come above it, so its upper part is left out.
graph="700 300"
middle_of_graph="800 320"
row_of_dew_point="426 692"
disclosure="272 615"
nowhere="900 783"  # no value line stands over the labels then
values_strip=38x290+281+150   # the labels of the value axis
times_strip=980x34+290+472    # those of the time axis, above the overview
menu_strip=640x24+0+0
graph_strip=940x385+325+150

point_at() { xdotool mousemove --window "$window" "$@"; }
drag() {  # from the place pointed at, by so many places
    xdotool mousedown 1
    for _ in 1 2 3 4 5 6 7 8 9 10; do
        xdotool mousemove_relative -- $(($1 / 10)) $(($2 / 10))
        sleep 0.03
    done
    xdotool mouseup 1
}
fact() { python3 "$here/stored_trend.py" "$site" "$1" 2>/dev/null; }
stored() {  # FACT VALUE: the document holds it, or will within ten seconds
    for _ in $(seq 50); do
        [ "$(fact "$1")" = "$2" ] && return 0
        sleep 0.2
    done
    echo "stored: $1 is '$(fact "$1")', not '$2'"
    return 1
}
span_holds() { python3 -c "a, b, c, d = map(float, '$1 $2 $3 $4'.split()); exit(not ($5))"; }
moved_range() {  # waits until the stored range differs from $range, and is not stored anew; sets new_range
    local before
    for _ in $(seq 50); do
        new_range=$(fact range)
        if [ -n "$new_range" ] && [ "$new_range" != "$range" ]; then
            # What is stored may be half of a movement: storing comes every two seconds.
            before=$new_range
            sleep 2.3
            new_range=$(fact range)
            [ "$new_range" = "$before" ] && return 0
        fi
        sleep 0.2
    done
    return 1
}
point_at_property() {  # KEY: its name in the list, found by its colour
    local colour row
    colour=$(printf '#%06X' $(($(sqlite3 "$site" "SELECT color FROM property WHERE key = '$1'") & 0xFFFFFF)))
    import -window root -crop "1x760+$((X + 37))+$((Y + 30))" +repage "$home/swatches.png"
    row=$(convert "$home/swatches.png" -depth 8 txt: 2>/dev/null | grep -m1 "$colour" | sed 's/^0,\([0-9]*\):.*/\1/')
    [ -n "$row" ] || fail "no $1 in the list"
    point_at 75 $((row + 35))
}
picture() {  # from the screen, as menus are windows of their own
    sleep 0.6
    import -window root -crop "1280x800+$X+$Y" +repage "$pictures/$1.png"
}
differ() {  # STRIP ONE OTHER
    convert "$pictures/$2.png" -crop "$1" +repage "$home/one.png"
    convert "$pictures/$3.png" -crop "$1" +repage "$home/other.png"
    [ "$(compare -metric AE "$home/one.png" "$home/other.png" null: 2>&1)" != 0 ]
}
is_drawn() { [ "$(import -window "$window" -crop 900x420+300+110 -format %k info: 2>/dev/null || echo 0)" -gt 250 ]; }

"$program" &
process=$!
started+=("$process")
for _ in $(seq 1200); do
    window=$(xdotool search --onlyvisible --name 'Demonstration.* Plotix' 2>/dev/null | head -1)
    [ -n "$window" ] && is_drawn && break
    kill -0 "$process" 2>/dev/null || fail "the program ended by itself"
    sleep 0.1
done
[ -n "$window" ] && is_drawn || fail "no trend was drawn"
xdotool windowfocus --sync "$window"
eval "$(xdotool getwindowgeometry --shell "$window")"  # sets WIDTH and HEIGHT
eval "$(xdotool mousemove --window "$window" 0 0 getmouselocation --shell)"  # sets X and Y, without the frame
[ "$WIDTH $HEIGHT" = "1280 800" ] || fail "the window opened at $WIDTH by $HEIGHT"
point_at $nowhere
picture 01-opened
range=$(fact range)
[ "$(fact keys)" = "airTemperature dewPoint" ] || fail "the first trend holds '$(fact keys)'"

# The wheel zooms both axes about the pointer.
point_at $middle_of_graph click 4 click 4
point_at $nowhere; picture 02-zoomed
moved_range || fail "the dates did not follow the zoom"
span_holds $range $new_range "c > a and d < b" || fail "the wheel did not zoom time in"
differ $values_strip 01-opened 02-zoomed || fail "the wheel did not zoom the values"

# A drag pans both axes, and keeps both spans.
range=$new_range
point_at $graph; drag 100 60
point_at $nowhere; picture 03-panned
moved_range || fail "the dates did not follow the drag"
span_holds $range $new_range "c < a and abs((d - c) - (b - a)) < 1" || fail "the drag did not pan time"
differ $values_strip 02-zoomed 03-panned || fail "the drag did not pan the values"

# With Alt the values stay, with Shift the time does; the wheel's swapped axes do not matter.
range=$new_range
point_at $graph; xdotool keydown alt; drag 100 60; xdotool keyup alt
point_at $nowhere; picture 04-panned-with-alt
differ $values_strip 03-panned 04-panned-with-alt && fail "Alt did not hold the values"
moved_range || fail "time did not move with Alt held"
point_at $graph; xdotool keydown shift; drag 100 60; xdotool keyup shift
point_at $nowhere; picture 05-panned-with-shift
differ $values_strip 04-panned-with-alt 05-panned-with-shift || fail "the values did not move with Shift held"
differ $times_strip 04-panned-with-alt 05-panned-with-shift && fail "Shift did not hold the time"
point_at $graph; xdotool keydown alt click 4 keyup alt
point_at $nowhere; picture 06-zoomed-with-alt
differ $values_strip 05-panned-with-shift 06-zoomed-with-alt && fail "Alt did not hold the values while zooming"
differ $times_strip 05-panned-with-shift 06-zoomed-with-alt || fail "the wheel did not zoom time with Alt held"

differ $menu_strip 05-panned-with-shift 06-zoomed-with-alt && fail "letting go of Alt took the focus to the menus"

# The menu's toggles act as the held keys do; Fit shows everything again.
xdotool key ctrl+t; point_at $graph click 5
point_at $nowhere; picture 07-time-only
differ $values_strip 06-zoomed-with-alt 07-time-only && fail "Zoom Time Only did not hold the values"
differ $times_strip 06-zoomed-with-alt 07-time-only || fail "Zoom Time Only did not zoom time"
xdotool key ctrl+t key ctrl+shift+t; point_at $graph click 5
point_at $nowhere; picture 08-values-only
differ $values_strip 07-time-only 08-values-only || fail "Zoom Values Only did not zoom the values"
differ $times_strip 07-time-only 08-values-only && fail "Zoom Values Only did not hold the time"
xdotool key ctrl+shift+t key ctrl+0; point_at $nowhere
picture 09-fitted
differ $graph_strip 01-opened 09-fitted && fail "Fit did not bring the whole trend back"

# Two properties dragged onto the trend.
point_at_property humidity; xdotool click 1
point_at_property pressure; xdotool keydown ctrl click 1 keyup ctrl; sleep 0.3
xdotool mousedown 1; sleep 0.1
for x in 85 100 140 220 340 500 700; do point_at "$x" 400; sleep 0.05; done
picture 10-dragging
xdotool mouseup 1
point_at $nowhere
stored keys "airTemperature dewPoint humidity pressure" || fail "the dropped properties were not added"
stored names "Air Temperature|Dew Point|Humidity|Pressure" || fail "the dropped properties have no rows"
picture 11-dropped
differ $graph_strip 09-fitted 11-dropped || fail "the dropped properties are not plotted"

# One row deleted: its property and its plot go, the others stay as they are.
points=$(fact points)
point_at $row_of_dew_point click 1; sleep 0.2
xdotool key Delete
stored names "Air Temperature|Humidity|Pressure" || fail "Delete did not remove the row"
stored keys "airTemperature humidity pressure" || fail "Delete did not remove the property"
[ "$(fact points)" = "$(echo "$points" | cut -d'|' -f1,3,4)" ] || fail "Delete fetched the records again"
point_at $nowhere
picture 12-deleted
differ $graph_strip 11-dropped 12-deleted || fail "the deleted property is still plotted"

# Degrees Celsius become degrees Fahrenheit, in the list, the table and the plot.
celsius=$(fact maxima | cut -d'|' -f1)
point_at_property airTemperature; xdotool click 3; sleep 0.4
xdotool key u; sleep 0.4
picture 13-unit-menu
xdotool key Down; sleep 0.2
xdotool key Return
stored units "°F|%|hPa" || fail "the unit did not change"
[ "$(sqlite3 "$site" "SELECT unit FROM property WHERE key = 'airTemperature'")" = "°F" ] || fail "the list kept °C"
fahrenheit=$(fact maxima | cut -d'|' -f1)
span_holds "$celsius" "$fahrenheit" 0 0 "abs(a * 1.8 + 32 - b) < 0.01" || fail "$celsius °C became $fahrenheit °F"
point_at $nowhere
picture 14-fahrenheit
differ $graph_strip 12-deleted 14-fahrenheit || fail "the plot kept °C"

# The panel folds away and leaves its place to the graph.
point_at $disclosure click 1; point_at $nowhere
stored panel hidden || fail "the panel is still shown"
picture 15-panel-hidden
point_at 272 777 click 1; point_at $nowhere
stored panel shown || fail "the panel did not come back"
picture 16-panel-shown
differ $graph_strip 14-fahrenheit 16-panel-shown && fail "the graph did not come back to its place"

# From the graph on by keyboard alone: button, what the statistics are about, table, first check box; Space hides its
# plot.
point_at $graph click 1; point_at $nowhere
xdotool key Tab
picture 17-focus-on-button
xdotool key Tab Tab Tab
picture 18-focus-on-check-box
xdotool key space
stored shown "False|True|True" || fail "Tab and Space did not reach the check box"
picture 19-plot-hidden
differ $graph_strip 18-focus-on-check-box 19-plot-hidden || fail "the hidden plot is still drawn"

xdotool key --clearmodifiers ctrl+q
for _ in $(seq 100); do kill -0 "$process" 2>/dev/null || break; sleep 0.1; done
kill -0 "$process" 2>/dev/null && fail "Ctrl+Q did not end the program"
wait "$process" || fail "the program ended with status $?"
echo "passed"
