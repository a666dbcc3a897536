#!/usr/bin/env bash
# shards.sh PROGRAMS [KILLS]: two shards of two replicas each and a keeper. The tests of the store there; then a writer whose
# every transaction stores on both shards is killed so many times (default 10), and one of a shard's replicas now and then:
# what was acknowledged is there, and of every transaction all or nothing. At last a shard is lost, and the other goes on.
set -uo pipefail
programs=$1
kills=${2:-10}
. "$(dirname "${BASH_SOURCE[0]}")/cluster.sh"
demand clickhouse-server java curl python3
folder=$(mktemp -d)
writer=
trap '[ -n "$writer" ] && kill -9 "$writer" 2>/dev/null; end_cluster; rm -rf "$folder"' EXIT
start_cluster "$folder/cluster" 4 || exit 1
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC PLOTIX_DATA_HOME=$folder

if [ "${PLOTIX_SHARDS_ONLY_KILLS:-}" != 1 ]; then
  for test in test_records_contract test_records_clickhouse test_hostapp_cli; do
    said=$(PLOTIX_TEST_CLICKHOUSE_PORT="${http[1]},${http[2]}+${http[3]},${http[4]}" \
      "$programs/$test" --gtest_filter="${PLOTIX_SHARDS_TESTS:-*Server*:*ClickHouse*}" --gtest_brief=1 2>&1) || failed=1
    grep -q 'PASSED.* [1-9][0-9]* test' <<<"$said" || failed=1
    echo "$test: $(tail -3 <<<"$said")"
    [ "${failed:-0}" = 0 ] || exit 1
  done
fi

address="clickhouse://127.0.0.1:${http[1]},127.0.0.1:${http[2]}+127.0.0.1:${http[3]},127.0.0.1:${http[4]}/plotix/kills"
"$programs/plotix" store create "$address" || exit 1
tables=7

start_writer() {
  "$programs/shard_writer" "$address" both 1 "$(acknowledged)" >>"$folder/acknowledged" 2>>"$folder/said" &
  writer=$!
}
acknowledged() { # the last time; a line that was cut short does not count
  python3 - "$folder/acknowledged" <<'END'
import os, sys
lines = open(sys.argv[1]).read().split("\n")[:-1] if os.path.exists(sys.argv[1]) else []
print(lines[-1] if lines else -1)
END
}

# The turns of a writer that was killed are waited for before the next one stores.
wait_until_it_stores() { # LAST
  local _
  for _ in $(seq 600); do
    [ "$(acknowledged)" != "$1" ] && return
    kill -0 "$writer" 2>/dev/null || break
    sleep 0.2
  done
  echo "FAILED after $kill kills: nothing is stored any more: $(tail -1 "$folder/said")"
  exit 1
}

replicas=0
for kill in $(seq "$kills"); do
  before=$(acknowledged)
  start_writer
  wait_until_it_stores "$before"
  sleep "$(python3 -c 'import random; print(random.uniform(0.2, 1.2))')"
  if [ $((kill % 10)) = 0 ]; then
    replica=$((RANDOM / 16 % 4 + 1))
    kill_replica $replica
    sleep 1
    start_replica $replica || exit 1
    replicas=$((replicas + 1))
  fi
  kill -9 "$writer" 2>/dev/null
  wait "$writer" 2>/dev/null
  last=$(acknowledged)
  # Whoever writes next finishes what was decided, and sees to it that both have the same.
  if ! answer=$("$programs/shard_writer" "$address" alike 1 "$last" 2>&1); then
    echo "FAILED after $kill kills: $answer"
    exit 1
  fi
done
writer=
echo "$kills writers and $replicas replicas killed: ${answer##*$'\n'} records on each shard, all of a transaction or nothing of it"

kill_replica 3
kill_replica 4
"$programs/plotix" store info "$address" >"$folder/info" || exit 1
grep -q 'cannot be reached' "$folder/info" || { echo "FAILED: a lost shard is not told:"; cat "$folder/info"; exit 1; }
said=$("$programs/shard_writer" "$address" lost 1 "$last" 2>&1) || { echo "FAILED with a shard lost: $said"; exit 1; }
echo "$said"
