#!/bin/bash
# Without a display: the program leaves the demonstration trend as PNG and PDF, says so in two lines, and exits 0; and a
# window asked for by name is one clear error.
#
# usage: window_without_display.sh PROGRAM
set -u
program=$(realpath "$1")
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
fail() { echo "FAILED: $*"; exit 1; }
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
export PLOTIX_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config XDG_RUNTIME_DIR=$home
mkdir "$home/here"
cd "$home/here" || exit 1

"$program" >../output 2>../error || fail "exit status $?: $(cat ../error)"
[ "$(wc -l <../output)" = 2 ] || fail "not two lines: $(cat ../output)"
[ "$(find . -name '*.png' | wc -l)" = 1 ] || fail "no PNG: $(ls)"
[ "$(find . -name '*.pdf' | wc -l)" = 1 ] || fail "no PDF: $(ls)"
head -c 8 ./*.png | grep -q PNG || fail "the PNG is none"
head -c 5 ./*.pdf | grep -q '%PDF-' || fail "the PDF is none"

site=$(find "$home/data" -name '*.plotix' | head -1)
"$program" open "$site" >../output 2>../error && fail "opened a window without a display"
[ "$(wc -l <../error)" = 1 ] || fail "not one line: $(cat ../error)"
"$program" open "$site" --screenshot window.png --size 900x600 >../output 2>../error || fail "$(cat ../error)"
head -c 8 window.png | grep -q PNG || fail "no picture of the window"
DISPLAY=:4711 "$program" open "$site" >../output 2>../error && fail "opened a window on a display that is not there"
[ "$(wc -l <../error)" = 1 ] || fail "not one line for an unreachable display: $(cat ../error)"
echo "passed"
