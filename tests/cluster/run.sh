#!/usr/bin/env bash
# run.sh PROGRAMS [KILLS [FAULTS]]: every test of the store on a server again, on three replicas with a keeper, on two
# shards of two replicas, and on today's engine; so many times a collector killed between two of its steps (default 100);
# and faults of all kinds (default 64). ./test --cluster 1000 takes half an hour.
set -uo pipefail
programs=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/cluster.sh"
demand clickhouse-server java curl python3
folder=$(mktemp -d)
trap 'end_cluster; rm -rf "$folder"' EXIT
start_cluster "$folder" 3 || exit 1
failed=0
PLOTIX_TEST_CLICKHOUSE_PORT=$ports run_store_tests || failed=1
python3 "$here/kills.py" "$programs" "${2:-100}" "$folder" "${http[@]}" || failed=1
end_cluster
"$here/shards.sh" "$programs" || failed=1
"$here/faults.sh" "$programs" "${3:-64}" || failed=1
"$here/forward.sh" "$programs" || failed=1
"$here/engine.sh" "$programs"
case $? in 0 | 77) ;; *) failed=1 ;; esac
exit $failed
