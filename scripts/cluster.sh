# Three PostgreSQL servers of one's own, of which Patroni keeps one leading and one that has all it
# has confirmed, on 127.0.0.1, .2 and .3; source it from bash. Root runs them as the user postgres.
#   start_cluster    sets TESSALINE_CLUSTER, a connection string of ODBC with the three servers, and
#                    TESSALINE_CLUSTER_FOLDER; returns once a leader leads and a stand-by follows
#   lose_leader HOW  kills the leader's server and its Patroni, so that nothing of them ends in
#                    order, waits until another one leads, starts Patroni there again and waits until
#                    three are whole; where TESSALINE_CLUSTER_FOLDER is a cluster. HOW: what was last
#                    to be confirmed had not left it (unsent), or had, without an answer (unanswered)
#   stop_cluster     ends them, with all that they held
. "$(dirname "${BASH_SOURCE[0]}")/postgres.sh"

cluster_ports() {
  python3 - <<'PYTHON'
import contextlib, socket
with contextlib.ExitStack() as kept:
    found = []
    while len(found) < 4:
        try:
            first = kept.enter_context(socket.socket())
            first.bind(("127.0.0.1", 0))
            port = first.getsockname()[1]
            for address in ("127.0.0.2", "127.0.0.3"):
                kept.enter_context(socket.socket()).bind((address, port))
            found.append(port)
        except OSError:
            pass
    print(*found)
PYTHON
}

# One port for the three servers: the driver takes no list of them.
write_node() { # FOLDER NUMBER
  local folder=$1 host=127.0.0.$2
  cat >"$folder/$2.yml" <<YAML
scope: tessaline
name: node$2
restapi: {listen: '$host:$cluster_rest_port', connect_address: '$host:$cluster_rest_port'}
etcd3: {host: '127.0.0.1:$cluster_etcd_port'}
bootstrap:
  dcs:
    ttl: 10
    loop_wait: 2
    retry_timeout: 4
    synchronous_mode: true
    postgresql:
      use_pg_rewind: true
      parameters: {max_connections: 100, wal_keep_size: 512MB}
  initdb: [{encoding: UTF8}, {locale: C}, data-checksums, no-sync]
postgresql:
  listen: $host:$cluster_port
  connect_address: $host:$cluster_port
  data_dir: $folder/$2
  bin_dir: $postgres_bin
  pgpass: $folder/$2.pgpass
  authentication:
    superuser: {username: tessaline}
    replication: {username: replication}
  parameters: {unix_socket_directories: ''}
  pg_hba: [host all all 127.0.0.0/8 trust, host replication all 127.0.0.0/8 trust]
YAML
}

start_node() { # NUMBER
  local folder=$TESSALINE_CLUSTER_FOLDER
  (exec_as_postgres setsid patroni "$folder/$1.yml") >>"$folder/$1.log" 2>&1 </dev/null &
  echo $! >"$folder/$1.pid"
  disown
}

# "LEADER MEMBERS-THAT-FOLLOW": the node that leads, and 2 once both others follow, one of which has
# all that is confirmed. Nothing where no node answers.
cluster_state() {
  python3 - "$(cat "$TESSALINE_CLUSTER_FOLDER/rest")" "$@" <<'PYTHON'
import json, sys, urllib.request
port, asked = sys.argv[1], sys.argv[2:] or ["1", "2", "3"]
for number in asked:
    try:
        with urllib.request.urlopen(f"http://127.0.0.{number}:{port}/cluster", timeout=2) as answer:
            members = json.load(answer)["members"]
    except OSError:
        continue
    running = {each["name"][-1]: each["role"] for each in members if each["state"] == "running"}
    leader = [number for number, role in running.items() if role == "leader"]
    whole = len(running) == 3 and "sync_standby" in running.values()
    print(leader[0] if leader else 0, 2 if whole else 0)
    break
PYTHON
}

# await_cluster SECONDS whole|NUMBER: until it is whole, or another node than that one leads.
await_cluster() {
  local leader members tries
  for tries in $(seq $(($1 * 2))); do
    [ -d "$TESSALINE_CLUSTER_FOLDER" ] || { echo "the cluster has been ended" >&2; return 1; }
    read -r leader members < <(cluster_state $([ "$2" = whole ] || printf '1\n2\n3\n' | grep -v "$2")) || true
    if [ "$2" = whole ]; then
      [ "${members:-0}" -ne 2 ] || return 0
    elif [ "${leader:-0}" -ne 0 ] && [ "$leader" -ne "$2" ]; then
      return 0
    fi
    sleep 0.5
  done
  echo "the cluster has not become as expected: $2" >&2
  tail -n 20 "$TESSALINE_CLUSTER_FOLDER"/*.log >&2
  return 1
}

start_cluster() {
  local folder number
  folder=$(mktemp -d /tmp/tessaline-cluster.XXXXXX)
  export TESSALINE_CLUSTER_FOLDER=$folder
  [ "$(id -u)" -ne 0 ] || chown postgres: "$folder"
  read -r cluster_port cluster_rest_port cluster_etcd_port cluster_peer_port < <(cluster_ports)
  echo "$cluster_rest_port" >"$folder/rest"
  (exec_as_postgres setsid etcd --data-dir "$folder/etcd" --logger zap \
    --listen-client-urls "http://127.0.0.1:$cluster_etcd_port" \
    --advertise-client-urls "http://127.0.0.1:$cluster_etcd_port" \
    --listen-peer-urls "http://127.0.0.1:$cluster_peer_port" \
    --initial-advertise-peer-urls "http://127.0.0.1:$cluster_peer_port" \
    --initial-cluster "default=http://127.0.0.1:$cluster_peer_port") >"$folder/etcd.log" 2>&1 </dev/null &
  echo $! >"$folder/etcd.pid"
  disown
  for number in 1 2 3; do
    write_node "$folder" "$number"
    start_node "$number"
  done
  export TESSALINE_CLUSTER="Driver=PostgreSQL Unicode;Servername=127.0.0.1,127.0.0.2,127.0.0.3;Port=$cluster_port;Database=postgres;UID=tessaline"
  await_cluster 90 whole
}

# A server's own process and all that it has started; SIGKILL to each.
kill_server() { # NUMBER
  local server
  server=$(head -1 "$TESSALINE_CLUSTER_FOLDER/$1/postmaster.pid" 2>/dev/null) || return 0
  kill -KILL "$server" $(pgrep -P "$server") 2>/dev/null || true
}

# The processes of that name among what the servers have started.
replicating() { # NAME NUMBER...
  local name=$1 number
  shift
  for number in "$@"; do
    pgrep -P "$(head -1 "$TESSALINE_CLUSTER_FOLDER/$number/postmaster.pid")" -f "$name" || true
  done
}

lose_leader() { # unsent|unanswered
  local leader rest stopped
  read -r leader rest < <(cluster_state)
  [ "${leader:-0}" -ne 0 ] || { echo "no node leads" >&2; return 1; }
  case $1 in
    unsent) stopped=$(replicating walsender "$leader") ;;
    unanswered) stopped=$(replicating walreceiver $(printf '1\n2\n3\n' | grep -v "$leader")) ;;
  esac
  [ -n "$stopped" ] || { echo "nothing is replicated" >&2; return 1; }
  kill -STOP $stopped
  sleep 0.5
  kill -KILL "$(cat "$TESSALINE_CLUSTER_FOLDER/$leader.pid")"
  kill_server "$leader"
  kill -CONT $stopped 2>/dev/null || true
  await_cluster 60 "$leader"
  start_node "$leader"
  await_cluster 90 whole
}

stop_cluster() {
  local folder=${TESSALINE_CLUSTER_FOLDER:-} number each
  [ -n "$folder" ] || return 0
  for each in 1 2 3 etcd; do
    [ ! -f "$folder/$each.pid" ] || kill -KILL "$(cat "$folder/$each.pid")" 2>/dev/null || true
  done
  for number in 1 2 3; do kill_server "$number"; done
  for each in $(seq 50); do
    rm -rf "$folder" 2>/dev/null && break
    sleep 0.1
  done
  unset TESSALINE_CLUSTER TESSALINE_CLUSTER_FOLDER
}
