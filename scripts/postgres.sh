# A PostgreSQL server of one's own, in a temporary folder; source it from bash. Root runs it as the
# user postgres, anybody else as himself.
#   start_postgres [SETTING...]   "fsync=off" for what need not survive; sets TESSALINE_POSTGRES, a
#                                 connection string of ODBC, and TESSALINE_POSTGRES_FOLDER, with its
#                                 certificates (certificates.sh) in tls/
#   stop_postgres                 ends it, with all that it held

. "$(dirname "${BASH_SOURCE[0]}")/certificates.sh"
postgres_pid=
postgres_folder=
postgres_bin=/usr/lib/postgresql/15/bin

# In place of the shell that calls it, so that the shell's process is the program's.
exec_as_postgres() {
  cd /
  export LC_ALL=C
  if [ "$(id -u)" -ne 0 ]; then exec "$@"; fi
  exec setpriv --reuid=postgres --regid=postgres --clear-groups "$@"
}

free_port() {
  python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

# Who may enter the folder reaches the socket. By the port a session is encrypted, with a password.
write_access() {
  printf "%s\n" 'ssl = on' "ssl_cert_file = '$postgres_folder/tls/good.crt'" \
    "ssl_key_file = '$postgres_folder/tls/good.key'" >>"$postgres_folder/data/postgresql.conf"
  printf '%s\n' 'local all all trust' 'hostssl all all 127.0.0.1/32 scram-sha-256' \
    >"$postgres_folder/data/pg_hba.conf"
}

start_postgres() {
  local setting tries port
  local settings=()
  for setting in "$@"; do settings+=(-c "$setting"); done
  # Near the root: a socket's path is short, and the user postgres has to get there.
  postgres_folder=$(mktemp -d /tmp/tessaline-postgres.XXXXXX)
  mkdir "$postgres_folder/tls"
  make_certificates "$postgres_folder/tls" >"$postgres_folder/log" 2>&1 || { cat "$postgres_folder/log" >&2; return 1; }
  [ "$(id -u)" -ne 0 ] || chown -R postgres: "$postgres_folder"
  (exec_as_postgres "$postgres_bin/initdb" -D "$postgres_folder/data" -U tessaline -A trust -E UTF8 \
    --locale=C.UTF-8 --no-sync) >"$postgres_folder/log" 2>&1 || { cat "$postgres_folder/log" >&2; return 1; }
  write_access
  port=$(free_port)
  (exec_as_postgres "$postgres_bin/postgres" -D "$postgres_folder/data" -c port="$port" \
    -c listen_addresses=127.0.0.1 -c unix_socket_directories="$postgres_folder" "${settings[@]}") >>"$postgres_folder/log" 2>&1 &
  postgres_pid=$!
  export TESSALINE_POSTGRES="Driver=PostgreSQL Unicode;Servername=$postgres_folder;Port=$port;Database=postgres;UID=tessaline"
  export TESSALINE_POSTGRES_FOLDER=$postgres_folder
  for tries in $(seq 100); do
    "$postgres_bin/pg_isready" -q -h "$postgres_folder" -p "$port" && return 0
    sleep 0.1
  done
  cat "$postgres_folder/log" >&2
  return 1
}

# SIGINT: it does not wait for its clients.
stop_postgres() {
  if [ -n "$postgres_pid" ]; then
    kill -INT "$postgres_pid" 2>/dev/null || true
    wait "$postgres_pid" 2>/dev/null || true
  fi
  [ -z "$postgres_folder" ] || rm -rf "$postgres_folder"
  postgres_pid=
  postgres_folder=
  unset TESSALINE_POSTGRES TESSALINE_POSTGRES_FOLDER
}
