#!/usr/bin/env bash
# faults.sh PROGRAMS [FAULTS]: three replicas and a keeper, three collectors that write to them, and so many faults
# (default 60): replicas, the keeper and collectors killed, replicas and collectors that stand still, replicas lost for long. After every tenth all are let come
# back, and what each replica answers is compared with what was acknowledged: nothing lost, nothing twice, every value as it
# was written. Prints a table with counts.
set -uo pipefail
programs=$1
faults=${2:-60}
. "$(dirname "${BASH_SOURCE[0]}")/cluster.sh"
demand clickhouse-server java curl python3
folder=${PLOTIX_FAULTS_FOLDER:-$(mktemp -d)}
declare -A done_of=() collectors=()
trap 'for each in "${collectors[@]}"; do kill -9 "$each" 2>/dev/null; done; end_cluster; [ -n "${PLOTIX_FAULTS_FOLDER:-}" ] || rm -rf "$folder"' EXIT

start_cluster "$folder/cluster" 3 || exit 1
hosts=$(for port in "${http[@]}"; do printf '127.0.0.1:%s,' "$port"; done)
address="clickhouse://${hosts%,}/plotix/faults"
PLOTIX_DATA_HOME=$folder "$programs/plotix" store create "$address" || exit 1
tables=7

start_collector() { # N
  "$programs/cluster_writer" "$address" write "$1" "$(acknowledged "$1")" >>"$folder/acknowledged$1" 2>>"$folder/said$1" &
  collectors[$1]=$!
}
stop_collector() { # N
  kill -9 "${collectors[$1]}" 2>/dev/null
  wait "${collectors[$1]}" 2>/dev/null
}
acknowledged() { # N: the last time; a line that was cut short does not count
  python3 - "$folder/acknowledged$1" 2>/dev/null <<'END'
import os, sys
lines = open(sys.argv[1]).read().split("\n")[:-1] if os.path.exists(sys.argv[1]) else []
print(lines[-1] if lines else -1)
END
}
pause() { sleep "$(python3 -c 'import random; print(random.uniform(0.1, 1.5))')"; }

# Collectors go on once everything is well again: all of them live, and store something.
expect_progress() {
  local number before _
  for number in 1 2 3; do
    before=$(acknowledged "$number")
    for _ in $(seq 120); do
      if ! kill -0 "${collectors[$number]}" 2>/dev/null; then
        echo "FAILED after $fault faults: collector $number ended: $(tail -1 "$folder/said$number")"
        exit 1
      fi
      [ "$(acknowledged "$number")" != "$before" ] && continue 2
      sleep 1
    done
    echo "FAILED after $fault faults: collector $number stores nothing any more: $(tail -1 "$folder/said$number")"
    exit 1
  done
}

expect_nothing_lost() {
  local number last port answer
  expect_progress
  for number in 1 2 3; do stop_collector "$number"; done
  for number in 1 2 3; do
    last=$(acknowledged "$number")
    for port in "${http[@]}"; do
      if ! answer=$("$programs/cluster_writer" "clickhouse://127.0.0.1:$port/plotix/faults" check "$number" "$last" 2>&1); then
        echo "FAILED after $fault faults: collector $number, the replica at $port: $answer"
        exit 1
      fi
    done
    total[$number]=$answer
    start_collector "$number"
  done
  checks=$((checks + 9))
}

declare -a total=()
checks=0
for number in 1 2 3; do start_collector "$number"; done
for fault in $(seq "$faults"); do
  pause
  replica=$((RANDOM / 16 % 3 + 1))
  case $((RANDOM / 16 % 8)) in
    0 | 1) what="replica killed"; kill_replica $replica; pause; start_replica $replica || exit 1 ;;
    2) what="keeper killed"; kill_keeper; pause; start_keeper ;;
    3 | 4) what="collector killed"; stop_collector $replica; pause; start_collector $replica ;;
    5) what="replica stood still"; kill -STOP "${servers[$replica]}"; pause; kill -CONT "${servers[$replica]}" ;;
    6) what="replica lost for long"; kill_replica $replica; sleep $((RANDOM % 10 + 5)); start_replica $replica || exit 1 ;;
    7) what="collector stood still"; kill -STOP "${collectors[$replica]}"; sleep $((RANDOM % 15)); kill -CONT "${collectors[$replica]}" ;;
  esac
  done_of[$what]=$((${done_of[$what]:-0} + 1))
  [ $((fault % 10)) = 0 ] && expect_nothing_lost
done
expect_nothing_lost
for what in "${!done_of[@]}"; do printf '%-24s %5d\n' "$what" "${done_of[$what]}"; done | sort
printf '%-24s %5d\n' "replicas compared" "$checks"
echo "records acknowledged and found on each replica: ${total[1]}, ${total[2]}, ${total[3]}; nothing lost, nothing twice"
