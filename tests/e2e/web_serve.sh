#!/bin/bash
# An imported site on the web: the advertised links give PNG and PDF, unknown ones nothing; many clients at once cost no
# memory; a token keeps others out; Ctrl-C ends it.
#
# usage: web_serve.sh PROGRAM [SECONDS]     how long 64 clients ask (default 3)
# Needs curl and python3. Exit status 77 when one of them is missing. All traffic stays on this machine.
set -u
program=$1
seconds=${2:-3}
here=$(cd "$(dirname "$0")" && pwd)
for tool in curl python3 pdftotext identify; do
    command -v $tool >/dev/null || { echo "$tool is not installed"; exit 77; }
done
home=$(mktemp -d)
export PLOTIX_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config
unset http_proxy HTTP_PROXY
server=
cleanup() {
    [ -n "$server" ] && kill "$server" 2>/dev/null
    rm -rf "$home"
}
trap cleanup EXIT
# What the server said for itself tells more than its status.
fail() {
    echo "FAILED: $*"
    [ -s "$home/errors" ] && { echo "the server's errors:"; cat "$home/errors"; }
    exit 1
}
expect() { [ "$2" = "$3" ] || fail "$1: $2 instead of $3"; }

# start ARGUMENTS…: serves on a free port; sets `server` and `address`.
start() {
    "$program" serve "$@" --port 0 >"$home/lines" 2>"$home/errors" &
    server=$!
    for _ in $(seq 300); do
        grep -q '/sites/' "$home/lines" && break
        kill -0 "$server" 2>/dev/null || fail "the server ended"
        sleep 0.1
    done
    address=$(head -1 "$home/lines")
    address=${address%/}
}
stop() {
    kill -"$1" "$server"
    wait "$server" || fail "SIG$1 ended it with status $?"
    server=
}
status() { curl -s -o /dev/null -w '%{http_code}' "$@"; }
type() { curl -s -o /dev/null -w '%{content_type}' "$@"; }
memory() { awk '/VmRSS/ { print $2 }' "/proc/$server/status"; }  # kilobytes

python3 - "$home/plant.csv" <<'END'
import math, sys
with open(sys.argv[1], "w") as file:
    file.write("Time,Temperature (°C),Pressure (hPa)\n")
    for minute in range(2000):
        file.write(f"2024-03-{1 + minute // 1440:02d}T{minute // 60 % 24:02d}:{minute % 60:02d}:00Z,"
                   f"{20 + 5 * math.sin(minute / 200):.3f},{1000 + minute % 37}\n")
END
"$program" import "$home/plant.csv" --site "$home/plant.plotix" --agent Boiler >/dev/null || fail "no import"

start "$home/plant.plotix"
cat "$home/lines"
expect "the first page" "$(status "$address/")" 200
curl -s "$address/" | grep -q 'href="/sites/plant/"' || fail "the first page does not list the site"
link=$(curl -s "$address/sites/plant/" | grep -o '<h2><a href="[^"]*"' | head -1 | cut -d'"' -f2)
[ -n "$link" ] || fail "no view is advertised"
echo "advertised: $link"
expect "the link's type" "$(type "$link")" image/png
expect "the other type" "$(type "${link%.png}.pdf")" application/pdf
curl -s "$link" -o "$home/view.png"
expect "the picture's size" "$(identify -format '%wx%h' "$home/view.png")" 1200x600
[ "$(identify -format '%k' "$home/view.png")" -gt 250 ] || fail "the picture shows no lines"
curl -s "${link%.png}.pdf" -o "$home/view.pdf"
pdftotext "$home/view.pdf" - | grep -q 'Temperature' || fail "the PDF does not name the property"
expect "a capital extension" "$(status "${link%.png}.PNG")" 404
expect "no extension" "$(status "${link%.png}")" 404
expect "an unknown view" "$(status "$address/sites/plant/unknown.png")" 404
expect "an unknown site" "$(status "$address/sites/other/")" 404
expect "HEAD" "$(status -I "$link")" 200
expect "POST" "$(status -X POST "$link")" 405

# The caches of fonts, of the drawing and of the allocator fill at first. What is lost with every request grows as fast
# later on; so two spans that follow each other are compared, and the allocator's own ups and downs are left out by
# taking the least of several looks at each.
views=("/sites/plant/" "/${link#*//*/}" "/")
clients() { python3 "$here/web_clients.py" 127.0.0.1 "${address##*:}" 64 "$1" "${views[@]}"; }
least() {
    local least=
    for _ in 1 2 3; do
        result=$(clients "$seconds")
        answers=$((answers + ${result% *})) failures=$((failures + ${result#* })) now=$(memory)
        [ -z "$least" ] || [ "$now" -lt "$least" ] && least=$now
    done
    kilobytes=$least
}
answers=0 failures=0
clients "$seconds" >/dev/null
least; before=$kilobytes first=$answers
least; after=$kilobytes
echo "64 clients, 6 times $seconds s: $answers answers, $failures failures; memory $before kB, then $after kB"
expect "failures" "$failures" 0
[ "$answers" -gt 64 ] || fail "hardly an answer"
[ $((after - before)) -lt "${PLOTIX_WEB_GROWTH:-4096}" ] ||
    fail "the memory grew by $((after - before)) kB in $((answers - first)) answers"
stop INT

"$program" serve "$home/plant.plotix" --bind 0.0.0.0 --port 0 >"$home/lines" 2>"$home/errors"
expect "serving others without a token" $? 1
grep -q -- '--token-file' "$home/errors" || fail "it does not say what is needed: $(cat "$home/errors")"
expect "the lines of it" "$(wc -l <"$home/errors")" 1
echo "open sesame now" >"$home/token"
start "$home/plant.plotix" --token-file "$home/token"
expect "without the token" "$(status "$address/")" 401
expect "as bearer" "$(status -H 'Authorization: Bearer open sesame now' "$address/")" 200
expect "by address" "$(status -L -c "$home/jar" -b "$home/jar" "$address/?token=open%20sesame%20now")" 200
expect "by cookie" "$(status -b "$home/jar" "$address/sites/plant/")" 200
stop TERM
echo "passed"
