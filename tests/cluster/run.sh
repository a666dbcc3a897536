#!/usr/bin/env bash
# run.sh PROGRAMS [FAULTS]: every test of the store on a server again, on three replicas with a keeper, on two
# shards of two replicas, and then faults.
set -uo pipefail
programs=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/cluster.sh"
demand clickhouse-server java curl python3
folder=$(mktemp -d)
trap 'end_cluster; rm -rf "$folder"' EXIT
start_cluster "$folder" 3 || exit 1
export PLOTIX_TEST_CLICKHOUSE_PORT=$ports QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC
failed=0
for test in test_records_contract test_records_clickhouse test_hostapp_cli; do
  said=$("$programs/$test" --gtest_filter='*Server*:*ClickHouse*' --gtest_brief=1 2>&1) || failed=1
  grep -q 'PASSED.* [1-9][0-9]* test' <<<"$said" || failed=1
  echo "$test: $(tail -3 <<<"$said")"
done
unset PLOTIX_TEST_CLICKHOUSE_PORT
end_cluster
"$here/shards.sh" "$programs" || failed=1
"$here/faults.sh" "$programs" "${2:-60}" || failed=1
"$here/forward.sh" "$programs" || failed=1
exit $failed
