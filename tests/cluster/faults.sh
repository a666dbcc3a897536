#!/usr/bin/env bash
# faults.sh PROGRAMS [FAULTS]: three replicas and a keeper, three collectors that write to them through a network of ours,
# and so many faults (default 60), in turns of all kinds. Collectors store in order, late and corrected records, remove
# spans and compact, all at one site. After every tenth fault all is well again, and what each replica answers is compared
# with what was acknowledged: nothing lost, nothing twice, every value as it was written. Prints a table with counts.
# A full disk needs leave to mount a small file system; without it that fault is left out, and this is said.
set -uo pipefail
programs=$1
faults=${2:-60}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/cluster.sh"
demand clickhouse-server java curl python3
folder=${PLOTIX_FAULTS_FOLDER:-$(mktemp -d)}
mkdir -p "$folder"
declare -A done_of=() collectors=() collector_clock=()
end_all() {
  local each
  for each in "${collectors[@]}" ${network:-} ${filling:-}; do kill -9 "$each" 2>/dev/null; done
  end_cluster
  [ -z "${small_disk:-}" ] || umount "$small_disk"
  [ -n "${PLOTIX_FAULTS_FOLDER:-}" ] || rm -rf "$folder"
}
trap end_all EXIT

wrong_clock=$(realpath "$programs/wrong_clock.so")
full_replica=1  # which every connection tries first
prepare_replica() { # N
  [ "$1" = $full_replica ] || return 0
  mount -t tmpfs -o size=400m none "$cluster/$1/data" 2>/dev/null && small_disk=$cluster/$1/data
  return 0
}
start_cluster "$folder/cluster" 3 || exit 1
hosts=$(for port in "${http[@]}"; do printf '127.0.0.1:%s,' "$port"; done)
PLOTIX_DATA_HOME=$folder "$programs/plotix" store create "clickhouse://${hosts%,}/plotix/faults" || exit 1
tables=7

# Of each collector to each replica: link 3 * (COLLECTOR - 1) + REPLICA.
declare -a listens=() pairs=()
for link in $(seq 9); do
  listens[$link]=$(free_port)
  pairs+=("${listens[$link]}:${http[$(((link - 1) % 3 + 1))]}")
done
control=$(free_port)
python3 "$here/proxy.py" "$control" "${pairs[@]}" >"$folder/network" 2>&1 &
network=$!
for _ in $(seq 100); do grep -q ready "$folder/network" && break; sleep 0.1; done
net() { # LINK|all WORD [VALUE]
  local answer
  exec 3<>"/dev/tcp/127.0.0.1/$control"
  echo "$*" >&3
  read -r answer <&3
  exec 3>&-
  [ "$answer" = ok ] || { echo "the network says: $answer"; exit 1; }
}
net_of_replica() { # REPLICA WORD [VALUE]
  local number
  for number in 1 2 3; do net $((3 * (number - 1) + $1)) "${@:2}"; done
}
net_of_collector() { # COLLECTOR WORD [VALUE]
  local number
  for number in 1 2 3; do net $((3 * ($1 - 1) + number)) "${@:2}"; done
}
address_of() { # COLLECTOR
  echo "clickhouse://127.0.0.1:${listens[3 * $1 - 2]},127.0.0.1:${listens[3 * $1 - 1]},127.0.0.1:${listens[3 * $1]}/plotix/faults"
}

start_collector() { # N
  (set_clock "${collector_clock[$1]:-}" && exec "$programs/cluster_writer" "$(address_of "$1")" write "$1" \
    "$folder/journal$1" 2>>"$folder/said$1" >/dev/null) &
  collectors[$1]=$!
}
stop_collector() { # N
  kill -9 "${collectors[$1]}" 2>/dev/null
  wait "${collectors[$1]}" 2>/dev/null
}
operations() { # N: that were acknowledged
  grep -c '^done' "$folder/journal$1" 2>/dev/null
}
pause() { sleep "$(python3 -c 'import random; print(random.uniform(0.1, 1.5))')"; }
failed() { # WHY
  echo "FAILED after $fault faults, the last: ${what:-none}: $1"
  exit 1
}

# All collectors live, and something more is acknowledged to each.
expect_progress() { # [SECONDS]
  local number before _
  for number in 1 2 3; do
    before=$(operations "$number")
    for _ in $(seq $((2 * ${1:-180}))); do
      kill -0 "${collectors[$number]}" 2>/dev/null || failed "collector $number ended: $(tail -1 "$folder/said$number")"
      [ "$(operations "$number")" != "$before" ] && continue 2
      sleep 0.5
    done
    failed "collector $number stores nothing any more: $(tail -1 "$folder/said$number")"
  done
}

expect_nothing_lost() {
  local number port answer
  net all well
  expect_progress
  for number in 1 2 3; do stop_collector "$number"; done
  for number in 1 2 3; do
    for port in "${http[@]}"; do
      answer=$("$programs/cluster_writer" "clickhouse://127.0.0.1:$port/plotix/faults" check "$number" \
        "$folder/journal$number" 2>&1) || failed "collector $number, the replica at $port: $answer"
    done
    total[$number]=${answer##* }
    start_collector "$number"
  done
  checks=$((checks + 9))
}

kinds=("replica killed" "keeper killed" "collector killed" "replica stood still" "replica lost for long"
  "collector stood still" "network to a replica cut" "network of a collector cut" "network slow" "answers of inserts lost"
  "answers torn" "statements late" "replica's clock an hour off" "collector's clock an hour off"
  "two more compactions at once")
[ -n "${small_disk:-}" ] && kinds+=("disk full on one") || echo "left out: disk full on one (no leave to mount)"

one_fault() { # KIND
  local replica=$((RANDOM / 16 % 3 + 1)) ways=(both requests answers off) each
  case $1 in
    "replica killed") kill_replica $replica; pause; clock[$replica]=; start_replica $replica || exit 1 ;;
    "keeper killed") kill_keeper; pause; start_keeper ;;
    "collector killed") stop_collector $replica; pause; collector_clock[$replica]=; start_collector $replica ;;
    "replica stood still") kill -STOP "${servers[$replica]}"; pause; kill -CONT "${servers[$replica]}" ;;
    "replica lost for long") kill_replica $replica; sleep $((RANDOM % 10 + 5)); start_replica $replica || exit 1 ;;
    "collector stood still")
      kill -STOP "${collectors[$replica]}"; sleep $((RANDOM % 15)); kill -CONT "${collectors[$replica]}" ;;
    "network to a replica cut") net_of_replica $replica cut "${ways[RANDOM % 4]}"; sleep $((RANDOM % 20)); net all well ;;
    "network of a collector cut")
      net_of_collector $replica cut "${ways[RANDOM % 4]}"; sleep $((RANDOM % 20)); net all well ;;
    "network slow") net all delay $((RANDOM % 480 + 20)); sleep 4; net all well ;;
    "answers of inserts lost") net_of_collector $replica lose 3; pause ;;
    "answers torn") net_of_collector $replica tear 2; pause ;;
    "statements late") net_of_collector $replica late $((RANDOM % 5 + 1)); pause; net all well; sleep 6 ;;
    "replica's clock an hour off")
      kill_replica $replica; clock[$replica]=$((RANDOM % 2 * 7200 - 3600)); start_replica $replica || exit 1; sleep 3 ;;
    "collector's clock an hour off")
      stop_collector $replica; collector_clock[$replica]=$((RANDOM % 2 * 7200 - 3600)); start_collector $replica; sleep 3 ;;
    "two more compactions at once")
      for each in 1 2; do
        timeout 60 "$programs/cluster_writer" "$(address_of "$each")" compact >/dev/null 2>>"$folder/compacting" &
        compacting[$each]=$!
      done
      for each in 1 2; do wait "${compacting[$each]}" && compacted=$((compacted + 1)); done ;;
    "disk full on one")
      # What the server frees is filled again.
      while :; do head -c 1G /dev/zero >>"$small_disk/ballast" 2>/dev/null; sleep 0.05; done &
      filling=$!
      sleep 1
      expect_progress 60  # two others have room
      kill $filling; wait $filling 2>/dev/null
      rm "$small_disk/ballast" ;;
  esac
}

declare -a total=() compacting=()
checks=0
compacted=0
fault=0
for number in 1 2 3; do start_collector "$number"; done
for fault in $(seq "$faults"); do
  pause
  # All kinds in turn, in another order each time.
  [ $(((fault - 1) % ${#kinds[@]})) = 0 ] && mapfile -t order < <(printf '%s\n' "${kinds[@]}" | shuf)
  what=${PLOTIX_FAULT:-${order[$(((fault - 1) % ${#kinds[@]}))]}}
  one_fault "$what"
  done_of[$what]=$((${done_of[$what]:-0} + 1))
  [ $((fault % 10)) = 0 ] && expect_nothing_lost
done
expect_nothing_lost
for what in "${!done_of[@]}"; do printf '%-30s %5d\n' "$what" "${done_of[$what]}"; done | sort
printf '%-30s %5d\n' "replicas compared" "$checks"
echo "compactions beside others that came to their end: $compacted"
echo "operations acknowledged: $(operations 1), $(operations 2), $(operations 3); records found on each replica at the end:" \
  "${total[1]}, ${total[2]}, ${total[3]}; nothing lost, nothing twice"
