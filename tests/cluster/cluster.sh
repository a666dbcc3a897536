# A keeper and replicas of a database on loopback, for the scripts beside it to read in. All end with the script.
#
# start_cluster FOLDER COUNT    starts them; `ports` lists the replicas' HTTP ports, with commas between
# kill_replica N, start_replica N, kill_keeper, start_keeper    N counts from 1; killed as by a loss of power
# clock[N]=3600    seconds that the clock of replica N is wrong by from its next start on; `wrong_clock` is the library
# prepare_replica N    where a script has such a function, it is called once $cluster/N/data is there
# run_store_tests    of what is at PLOTIX_TEST_CLICKHOUSE_PORT, by the programs in `programs`
# `demand` is here too, see demand.sh.

. "$(dirname "${BASH_SOURCE[0]}")/../support/demand.sh"

free_port() {
  python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

set_clock() { # SECONDS, or nothing: of what this process starts
  [ -n "$1" ] || return 0
  export LD_PRELOAD=$wrong_clock PLOTIX_CLOCK_WRONG=$1
}

end_cluster() {
  local process
  for process in "${keeper:-}" "${servers[@]:-}"; do
    [ -n "$process" ] && kill -9 "$process" 2>/dev/null
  done
  wait 2>/dev/null
}

start_keeper() {
  java -Xmx256m -Dzookeeper.admin.enableServer=false -cp /usr/share/java/zookeeper.jar:/usr/share/java/slf4j-simple.jar \
    org.apache.zookeeper.server.quorum.QuorumPeerMain "$cluster/zoo.cfg" >"$cluster/keeper.log" 2>&1 &
  keeper=$!
}

kill_keeper() {
  kill -9 "$keeper" 2>/dev/null
  wait "$keeper" 2>/dev/null
}

# A server of 2018 sometimes ends while it starts, by a fault of its own, or goes without a table of `tables` when the
# keeper was away then: once more.
start_replica() { # N
  local attempt _
  for attempt in 1 2 3; do
    (cd "$cluster/$1" && set_clock "${clock[$1]:-}" && exec clickhouse-server --config-file="$cluster/$1/config.xml" >"$cluster/$1/stdout" 2>&1) &
    servers[$1]=$!
    for _ in $(seq 300); do
      [ "$(curl -s --max-time 2 "http://127.0.0.1:${http[$1]}/")" = "Ok." ] && break
      kill -0 "${servers[$1]}" 2>/dev/null || break
      sleep 0.1
    done
    local found
    found=$(curl -s --max-time 5 "http://127.0.0.1:${http[$1]}/" \
      --data "SELECT count() FROM system.tables WHERE database = 'plotix'")
    [ "${found:-0}" -ge "${tables:-0}" ] 2>/dev/null && [ -n "$found" ] && return 0
    kill_replica "$1"
    sleep 1
  done
  echo "replica $1 does not start:"
  tail -3 "$cluster/$1/errors"
  return 1
}

kill_replica() { # N
  kill -9 "${servers[$1]}" 2>/dev/null
  wait "${servers[$1]}" 2>/dev/null
}

start_cluster() { # FOLDER COUNT
  cluster=$1
  tables=0  # that a replica has at least
  declare -ga servers=() http=() clock=()
  local keeper_port number
  keeper_port=$(free_port)
  mkdir -p "$cluster/keeper"
  # A session that ends soon: a killed replica is known as lost after that.
  cat >"$cluster/zoo.cfg" <<END
dataDir=$cluster/keeper
clientPort=$keeper_port
clientPortAddress=127.0.0.1
tickTime=500
minSessionTimeout=1000
maxSessionTimeout=10000
maxClientCnxns=200
END
  start_keeper
  for number in $(seq "$2"); do
    mkdir -p "$cluster/$number"/{data,tmp,files,schemas}
    http[$number]=$(free_port)
    cat >"$cluster/$number/config.xml" <<END
<?xml version="1.0"?>
<yandex>
  <logger><level>warning</level><log>$cluster/$number/log</log><errorlog>$cluster/$number/errors</errorlog></logger>
  <http_port>${http[$number]}</http_port><tcp_port>$(free_port)</tcp_port>
  <interserver_http_port>$(free_port)</interserver_http_port><interserver_http_host>127.0.0.1</interserver_http_host>
  <listen_host>127.0.0.1</listen_host>
  <path>$cluster/$number/data/</path><tmp_path>$cluster/$number/tmp/</tmp_path>
  <user_files_path>$cluster/$number/files/</user_files_path>
  <format_schema_path>$cluster/$number/schemas/</format_schema_path>
  <users_config>$cluster/$number/users.xml</users_config>
  <default_profile>default</default_profile><default_database>default</default_database>
  <max_concurrent_queries>200</max_concurrent_queries><mark_cache_size>67108864</mark_cache_size>
  <timezone>UTC</timezone>
  <!-- A server that was killed in its first seconds has more rows that the keeper does not know of than others, and
       would leave their table out until somebody looked. -->
  <merge_tree><replicated_max_ratio_of_wrong_parts>1</replicated_max_ratio_of_wrong_parts></merge_tree>
  <zookeeper>
    <node><host>127.0.0.1</host><port>$keeper_port</port></node>
    <session_timeout_ms>3000</session_timeout_ms>
  </zookeeper>
</yandex>
END
    cat >"$cluster/$number/users.xml" <<END
<?xml version="1.0"?>
<yandex>
  <profiles><default><max_memory_usage>2000000000</max_memory_usage></default></profiles>
  <quotas><default/></quotas>
  <users><default><password></password><networks><ip>127.0.0.1</ip></networks><profile>default</profile>
    <quota>default</quota></default></users>
</yandex>
END
    ! declare -F prepare_replica >/dev/null || prepare_replica "$number"
    start_replica "$number" || return 1
  done
  ports=$(IFS=,; echo "${http[*]}")
}

run_store_tests() {
  local test said failed=0
  for test in test_records_contract test_records_clickhouse test_hostapp_cli; do
    said=$(QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC "$programs/$test" --gtest_filter='*Server*:*ClickHouse*' \
      --gtest_brief=1 2>&1) || failed=1
    grep -q 'PASSED.* [1-9][0-9]* test' <<<"$said" || failed=1
    echo "$test: $(tail -3 <<<"$said")"
  done
  return $failed
}
