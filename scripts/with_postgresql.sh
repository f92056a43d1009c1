#!/usr/bin/env bash
# Runs a command with a temporary PostgreSQL server: on a free port of the loopback address, in a temporary folder,
# stopped and removed afterwards. The command's environment has
#   ORLUNE_TEST_POSTGRESQL       the address of an empty database
#   ORLUNE_TEST_POSTGRESQL_DATA  the server's data folder
#   ORLUNE_TEST_POSTGRESQL_CTL   pg_ctl, as the server's user, for that folder: append "restart" or "stop"
# Usage: scripts/with_postgresql.sh COMMAND [ARGUMENT...]
set -euo pipefail

folder=$(mktemp -d --tmpdir orlune_postgresql.XXXXXX)
programs=$(pg_config --bindir 2>/dev/null || true)
[[ -x $programs/initdb ]] || programs=$(find /usr/lib/postgresql -name bin -maxdepth 2 | sort -V | tail -n 1)

# The server refuses to run as root.
as_server=()
if ((EUID == 0)); then
  as_server=(runuser -u postgres --)
  chown postgres "$folder"
fi
control=("${as_server[@]}" "$programs/pg_ctl" -D "$folder/data" -l "$folder/log" -w)

clean_up() {
  "${control[@]}" stop -m immediate >/dev/null 2>&1 || true
  rm -rf "$folder"
}
trap clean_up EXIT
trap 'exit 130' INT TERM

free_port() {
  local port
  for _ in {1..50}; do
    port=$((20000 + RANDOM % 12000))
    (: <"/dev/tcp/127.0.0.1/$port") 2>/dev/null || break
  done
  echo "$port"
}

cd "$folder"
"${as_server[@]}" "$programs/initdb" -D "$folder/data" -U orlune --auth=trust --encoding=UTF8 --locale=C.UTF-8 \
  --no-sync >"$folder/initdb.log" || { cat "$folder/initdb.log" >&2; exit 1; }
port=$(free_port)
# Without fsync the tests are faster; only a crash of the machine could lose data.
cat >>"$folder/data/postgresql.conf" <<EOF
listen_addresses = '127.0.0.1'
port = $port
unix_socket_directories = '$folder'
fsync = off
max_connections = 200
EOF
"${control[@]}" start >/dev/null || { cat "$folder/log" >&2; exit 1; }

address=postgresql://orlune@127.0.0.1:$port
"${as_server[@]}" "$programs/psql" -q "$address/postgres" -c 'CREATE DATABASE orlune'
export ORLUNE_TEST_POSTGRESQL=$address/orlune
export ORLUNE_TEST_POSTGRESQL_DATA=$folder/data
export ORLUNE_TEST_POSTGRESQL_CTL="${control[*]}"
cd "$OLDPWD"
"$@"
