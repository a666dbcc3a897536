#!/usr/bin/env bash
# forward.sh PROGRAMS [KILLS]: a recorder that is killed (-9) so many times (default 50), at any moment, while its server
# comes and goes. In the end what the server has is compared with what was reported as stored or kept: nothing lost,
# nothing twice, every value as it was recorded, nothing noted as late or corrected. Prints counts.
set -uo pipefail
programs=$1
kills=${2:-50}
. "$(dirname "${BASH_SOURCE[0]}")/cluster.sh"
demand clickhouse-server java curl python3
folder=$(mktemp -d)
recorder=
trap '[ -n "$recorder" ] && kill -9 "$recorder" 2>/dev/null; end_cluster; rm -rf "$folder"' EXIT
start_cluster "$folder/cluster" 1 || exit 1
export PLOTIX_DATA_HOME=$folder/data
address=clickhouse://127.0.0.1:${http[1]}/plotix/forwarded
"$programs/plotix" store create "$address" || exit 1
tables=7

pause() { sleep "$(python3 -c "import random; print(random.uniform(0.05, $1))")"; }
start_recorder() {
  "$programs/forwarding_recorder" "$address" record >>"$folder/reported" 2>>"$folder/said" &
  recorder=$!
}
server_is_there=1
begun_without_server=0
server_kills=0
"$programs/plotix" info "$address" >/dev/null || exit 1  # so that this desk knows the site
for kill in $(seq "$kills"); do
  [ $server_is_there = 0 ] && begun_without_server=$((begun_without_server + 1))
  start_recorder
  pause 1.5
  case $((RANDOM / 16 % 3)) in
    0) if [ $server_is_there = 1 ]; then kill_replica 1; server_is_there=0; server_kills=$((server_kills + 1))
       else start_replica 1 || exit 1; server_is_there=1; fi ;;
  esac
  pause 1.5
  if ! kill -0 "$recorder" 2>/dev/null; then
    echo "FAILED: the recorder ended by itself: $(tail -1 "$folder/said")"
    exit 1
  fi
  kill -9 "$recorder"
  wait "$recorder" 2>/dev/null
  # A line that was cut short says nothing.
  [ -n "$(tail -c 1 "$folder/reported" 2>/dev/null)" ] && sed -i '$ d' "$folder/reported"
done
recorder=
[ $server_is_there = 1 ] || start_replica 1 || exit 1
"$programs/plotix" store info "$address" | grep Waiting
"$programs/plotix" store forward "$address" || exit 1
if ! found=$("$programs/forwarding_recorder" "$address" check <"$folder/reported" 2>&1); then
  echo "FAILED after $kills kills: $found"
  exit 1
fi
if ls "$folder"/data/servers/*.waiting.plotix >/dev/null 2>&1; then
  echo "FAILED: a file of waiting records is left"
  exit 1
fi
printf '%-44s %6d\n' "recorder killed" "$kills" "of those begun without the server" "$begun_without_server" \
  "server killed" "$server_kills" "records reported" "$(wc -l <"$folder/reported")" "records on the server" "$found"
