#!/bin/bash
# A browser shows a served site: every preview is loaded, nothing on the console, and a script in a title stays text.
#
# usage: web_in_browser.sh PROGRAM [FOLDER]     pictures are kept in FOLDER (default: a temporary one, removed)
# Needs chromium, sqlite3 and ImageMagick. Exit status 77 when one of them is missing. All traffic stays on this machine.
set -u
program=$1
for tool in chromium convert identify; do
    command -v $tool >/dev/null || { echo "$tool is not installed"; exit 77; }
done
home=$(mktemp -d)
pictures=${2:-$home/pictures}
mkdir -p "$pictures" "$home/run"
chmod 700 "$home/run"
export PLOTIX_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config XDG_RUNTIME_DIR=$home/run
unset http_proxy HTTP_PROXY
server=
cleanup() {
    [ -n "$server" ] && kill "$server" 2>/dev/null
    wait
    rm -rf "$home"
}
trap cleanup EXIT
fail() { echo "FAILED: $*"; exit 1; }

# browse NAME WIDTHxHEIGHT ADDRESS: a picture of the page, what it logged, and its document.
browse() {
    local size=${2/x/,}
    timeout 60 chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
        --disable-background-networking --disable-component-update --disable-sync --no-proxy-server \
        --disable-dev-shm-usage --host-resolver-rules='MAP * ~NOTFOUND, EXCLUDE 127.0.0.1' \
        --user-data-dir="$home/browser-$1" --hide-scrollbars --enable-logging=stderr --v=0 --window-size="$size" \
        --screenshot="$pictures/$1.png" "$3" >/dev/null 2>"$home/$1.log" || fail "the browser failed: $(tail -3 "$home/$1.log")"
    [ -s "$pictures/$1.png" ] || fail "no picture of $1"
}
console_is_silent() { ! grep -E 'CONSOLE' "$home/$1.log"; }
colours() { convert "$pictures/$1.png" -format %k info:; }

python3 - "$home/plant.csv" <<'END'
import math, sys
with open(sys.argv[1], "w") as file:
    file.write("Time,Temperature (°C),Pressure (hPa)\n")
    for minute in range(2000):
        file.write(f"2024-03-{1 + minute // 1440:02d}T{minute // 60 % 24:02d}:{minute % 60:02d}:00Z,"
                   f"{20 + 5 * math.sin(minute / 200):.3f},{1000 + minute % 37}\n")
END
"$program" import "$home/plant.csv" --site "$home/plant.plotix" --agent Boiler >/dev/null || fail "no import"
"$program" import "$home/plant.csv" --site "$home/plant.plotix" --agent Chiller >/dev/null || fail "no second import"
title='<script>document.title="ran"; document.body.style.background="#ff0000"</script><b>Titled</b>'
"$program" import "$home/plant.csv" --site "$home/script.plotix" --agent "$title" >/dev/null || fail "no third import"

"$program" serve "$home/plant.plotix" "$home/script.plotix" --port 0 >"$home/lines" 2>"$home/errors" &
server=$!
for _ in $(seq 300); do
    grep -q '/sites/script/' "$home/lines" && break
    kill -0 "$server" 2>/dev/null || fail "the server ended: $(cat "$home/errors")"
    sleep 0.1
done
address=$(head -1 "$home/lines")

browse index 1000x500 "$address"
console_is_silent index || fail "the first page put something on the console"
browse site 1280x1000 "${address}sites/plant/"
console_is_silent site || fail "the site's page put something on the console"
# Without its previews the page is text on plain ground; a trend alone has hundreds of colours.
[ "$(colours site)" -gt 1000 ] || fail "the previews are not loaded: $(colours site) colours"
browse phone 412x900 "${address}sites/plant/"
[ "$(colours phone)" -gt 500 ] || fail "the previews are not loaded on a phone: $(colours phone) colours"
browse script 1000x900 "${address}sites/script/"
curl -s "${address}sites/script/" | grep -q '<script>document.title' || fail "the title is not as it was typed"
red=$(convert "$pictures/script.png" -crop 20x20+0+100 +repage -scale 1x1 -format '%[pixel:p{0,0}]' info:)
case $red in *255,0,0*|red) fail "the script ran" ;; esac
grep 'CONSOLE' "$home/script.log" | grep -q -i 'content security policy\|sandbox' || fail "nothing kept the script from running"
kill -TERM "$server"
wait "$server" || fail "SIGTERM ended the server with status $?"
server=
echo "passed"
