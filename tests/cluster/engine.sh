#!/usr/bin/env bash
# engine.sh PROGRAMS: every test of the store on a server again, on today's engine. It comes as a library, from a package of
# 170 MB (560 unpacked) that npm fetches into a temporary folder; PLOTIX_ENGINE names a folder that has libchdb.so already.
set -uo pipefail
programs=$1
. "$(dirname "${BASH_SOURCE[0]}")/cluster.sh"
demand npm curl python3
folder=$(mktemp -d)
front=
trap 'exec 4>&-; [ -z "$front" ] || wait "$front"; rm -rf "$folder"' EXIT
library=${PLOTIX_ENGINE:-$folder/package}/libchdb.so
if [ ! -e "$library" ]; then
  (cd "$folder" && npm pack --silent @chdb/lib-linux-x64-gnu >/dev/null 2>fetching && tar xzf ./*.tgz) || {
    echo "today's engine is left out: it cannot be fetched: $(tail -1 "$folder/fetching")"
    exit 77
  }
fi
port=$(free_port)
mkfifo "$folder/input"
mkdir "$folder/run"
"$programs/engine_front" "$library" "$folder/run" "$port" <"$folder/input" >"$folder/said" 2>&1 &
front=$!
exec 4>"$folder/input"  # the front ends when this does
for _ in $(seq 300); do
  grep -q ready "$folder/said" && break
  kill -0 "$front" 2>/dev/null || { echo "FAILED: today's engine does not start: $(tail -1 "$folder/said")"; exit 1; }
  sleep 0.2
done
echo "today's engine: $(curl -s "http://127.0.0.1:$port/" --data 'SELECT version()')"
export PLOTIX_TEST_CLICKHOUSE_PORT=$port
run_store_tests
