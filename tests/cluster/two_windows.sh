#!/usr/bin/env bash
# two_windows.sh PROGRAMS [FOLDER]: two windows and a recorder at one site on three replicas; one replica is killed and
# started again between. Records go on being stored, both windows show each within two seconds, and nobody is alarmed.
#
# Pictures before, during and after are kept in FOLDER (default: a temporary one, removed). Needs Xvfb, openbox, xdotool and
# ImageMagick beside what a cluster needs. Exit status 77 when one of them is missing.
set -uo pipefail
programs=$(realpath "$1")
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/../e2e/desktop.sh"
. "$here/cluster.sh"
demand Xvfb openbox xdotool import clickhouse-server java curl python3
server_keeps_picture=yes
open_desktop "${2:-}" 2600x860x24
trap 'end_cluster; close_desktop' EXIT
start_cluster "$home/cluster" 3 || fail "no cluster"
hosts=$(for port in "${http[@]}"; do printf '127.0.0.1:%s,' "$port"; done)
address=clickhouse://${hosts%,}/plotix/hall
interval=4  # seconds: more than a record may take to be shown
phase=${PLOTIX_PHASE:-32}
late=

PLOTIX_DATA_HOME=$home/recorder "$programs/plotix" store create "$address" || fail "no site"
tables=7
PLOTIX_DATA_HOME=$home/recorder QT_QPA_PLATFORM=offscreen "$programs/plotix" record "$address" --interval $interval \
  --print-times >"$home/recorded" 2>"$home/recorder_said" &
recorder=$!
started+=($recorder)
stored() { grep -c '^stored' "$home/recorded"; }
for _ in $(seq 300); do [ "$(stored)" -ge 3 ] && break; sleep 0.2; done
[ "$(stored)" -ge 3 ] || fail "nothing is recorded: $(tail -1 "$home/recorder_said")"

windows=()
programs_of_windows=()
open_window() { # NUMBER LEFT
  local process window _
  PLOTIX_DATA_HOME=$home/desk$1 XDG_CONFIG_HOME=$home/config$1 "$programs/plotix" open "$address" 2>"$home/said$1" &
  process=$!
  started+=($process)
  programs_of_windows+=($process)
  for _ in $(seq 300); do
    window=$(xdotool search --all --onlyvisible --pid $process --name 'Plotix' 2>/dev/null | head -1)
    [ -n "$window" ] && break
    kill -0 $process 2>/dev/null || fail "window $1 ended: $(tail -1 "$home/said$1")"
    sleep 0.2
  done
  [ -n "$window" ] || fail "window $1 does not open"
  sleep 2
  for _ in 1 2 3; do  # one alone is lost where the window is still being placed
    xdotool windowsize "$window" 1280 800 windowmove "$window" "$2" 30
    sleep 0.5
  done
  # A trend of everything, which follows all records: its table changes with a new one and with nothing else.
  xdotool windowfocus --sync "$window" mousemove --window "$window" 690 421 click 1
  sleep 3
  xdotool key --clearmodifiers alt+v
  sleep 1
  xdotool key s
  sleep 1
  xdotool key a
  windows+=("$window")
}
open_window 1 10
open_window 2 1310
sleep 3
picture() { import -window root "$pictures/$1.png"; }
picture 0-opened

# Pictures of both tables ten times a second, and when each record was stored.
python3 "$here/watch_graphs.py" "$home/Xvfb_screen0" "$home/recorded" "$home/seen" \
  "800 690 460 120" "2100 690 460 120" &
started+=($!)
touch "$home/seen"

go_on() { # PHASE: a while; then the facts
  local before first window process
  before=$(stored)
  first=$(wc -l <"$home/seen" 2>/dev/null || echo 0)
  sleep "$phase"
  picture "$1"
  [ $(($(stored) - before)) -ge 3 ] || fail "$1: $(($(stored) - before)) records in $phase s: $(tail -1 "$home/recorder_said")"
  for process in "${programs_of_windows[@]}"; do
    [ "$(xdotool search --onlyvisible --pid "$process" 2>/dev/null | wc -l)" = 1 ] || fail "$1: there is an alert"
  done
  python3 "$here/watch_graphs.py" --judge "$home/seen" "$first" "$1" || late=yes
}
go_on 1-before
kill_replica 1
go_on 2-a-replica-killed
start_replica 1 || fail "the replica does not start again"
go_on 3-after
kill -0 $recorder || fail "the recorder ended"
[ -z "$late" ] || fail "records were shown late, see above"
echo "passed: $(stored) records"
