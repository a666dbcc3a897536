#!/bin/bash
# A minute of a person's at a long site: open it, zoom to a spike, read it, go back, the next property; how long the
# window takes to show each step, and a picture of it. See a_minute.py.
#
# usage: a_minute.sh PROGRAM SITE [FOLDER]     pictures are kept in FOLDER (default: a temporary one, removed)
# SITE is copied; bench_decade makes one (benchmarks/decade). With PLOTIX_STEP_LIMIT=0.3 a step above 0.3 s is a failure.
# Needs Xvfb, openbox, xdotool, ImageMagick, D-Bus, the accessibility bus and Python's bindings to it. Exit status 77 when
# one of them is missing.
set -u
program=$1
site=$2
. "$(dirname "$0")/desktop.sh"
demand Xvfb openbox xdotool import dbus-run-session
here=$(cd "$(dirname "$0")" && pwd)
python=
for each in /usr/bin/python3 python3; do
    "$each" -c 'import pyatspi' 2>/dev/null && python=$each && break
done
[ -n "$python" ] || { echo "the accessibility bindings of Python are not installed"; exit 77; }
server_keeps_picture=yes
open_desktop "${3:-}" 1400x900x24 --config-file "$here/openbox_leaves_alt.xml"
cp --reflink=auto "$site" "$home/site.plotix" || fail "no copy of $site"
QT_QPA_PLATFORM=offscreen "$program" render "$home/site.plotix" --output "$home/figure.png" || fail "nothing to show"
place=$(QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 dbus-run-session -- "$python" "$here/a_minute.py" place "$program" \
    "$home/site.plotix" "$home/figure.png" 2>"$home/errors") || { cat "$home/errors"; fail "no graph"; }
place=$(tail -n 1 <<< "$place")  # the bus's own lines are before it
# shellcheck disable=SC2086
"$python" "$here/a_minute.py" steps "$program" "$home/site.plotix" "$pictures" "$home/Xvfb_screen0" $place || fail "see above"
