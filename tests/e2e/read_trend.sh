#!/bin/bash
# What readers of trends expect to find, each done by mouse and by keyboard alone, by the names that the program gives its
# menus and buttons; see read_trend.py.
#
# usage: read_trend.sh PROGRAM [FOLDER]     pictures are kept in FOLDER (default: a temporary one, removed)
# Needs Xvfb, openbox, xdotool, ImageMagick, D-Bus, the accessibility bus and Python's bindings to it. Exit status 77 when
# one of them is missing.
set -u
program=$1
. "$(dirname "$0")/desktop.sh"
demand Xvfb openbox xdotool import compare dbus-run-session
here=$(cd "$(dirname "$0")" && pwd)
python=
for each in /usr/bin/python3 python3; do
    "$each" -c 'import pyatspi' 2>/dev/null && python=$each && break
done
[ -n "$python" ] || { echo "the accessibility bindings of Python are not installed"; exit 77; }
open_desktop "${2:-}" 1400x900x24 --config-file "$here/openbox_leaves_alt.xml"
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
dbus-run-session -- "$python" "$here/read_trend.py" "$program" "$home/data/Demonstration.plotix" "$pictures" 2>"$home/errors"
status=$?
[ $status = 0 ] || { grep -v "dbus-daemon\|SpiRegistry" "$home/errors"; fail "see above"; }
echo "passed"
