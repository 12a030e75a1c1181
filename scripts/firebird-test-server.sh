#!/usr/bin/env bash
# Starts or stops a private Firebird server for the tests: run by the current
# user on a free loopback port, with a root folder, a security database, a
# lock folder and a temporary folder of its own under the state folder. It
# never reads or changes the machine's own Firebird service, its security
# database or its users, and stops only the process it started.
#
#   firebird-test-server.sh start   prints the variables the tests read; eval its output
#   firebird-test-server.sh stop
#   firebird-test-server.sh resume  starts the stopped server again on the same port
#
# The state folder is build/firebird-test-server of this checkout, or
# Q3_TEST_SERVER_STATE.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
state=${Q3_TEST_SERVER_STATE:-$root/build/firebird-test-server}
install=/usr/lib/x86_64-linux-gnu/firebird/3.0
server=/usr/sbin/firebird
user=Q3TEST
# Separators and quotes on purpose: credentials must reach the server intact.
password='Q3;te"st'"'"'pw'

listening() {
  (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

# The process of the pid file, when it is still our server.
running_pid() {
  [ -f "$state/pid" ] || return 1
  local pid
  pid=$(cat "$state/pid")
  [ -n "$pid" ] && [ "$(readlink "/proc/$pid/exe" 2>/dev/null)" = "$server" ] || return 1
  echo "$pid"
}

private_env() {
  env FIREBIRD="$state/root" FIREBIRD_LOCK="$state/lock" FIREBIRD_TMP="$state/tmp" "$@"
}

free_port() {
  local port
  for _ in $(seq 1 50); do
    port=$((20000 + RANDOM % 40000))
    listening "$port" || { echo "$port"; return 0; }
  done
  echo "No free loopback port found" >&2
  return 1
}

# A root folder made of the installed one, with its own configuration and an
# empty security database holding only the test user.
prepare() {
  local port=$1
  rm -rf "$state"
  mkdir -p "$state/root" "$state/lock" "$state/tmp"
  for entry in "$install"/*; do
    case $(basename "$entry") in
    firebird.conf | databases.conf) ;;
    *) ln -s "$entry" "$state/root/$(basename "$entry")" ;;
    esac
  done
  cat >"$state/root/firebird.conf" <<EOF
RemoteServicePort = $port
RemoteBindAddress = 127.0.0.1
SecurityDatabase = $state/root/security3.fdb
AuthServer = Srp
AuthClient = Srp
UserManager = Srp
ServerMode = Super
EOF
  echo "security.db = $state/root/security3.fdb" >"$state/root/databases.conf"
  local quoted=${password//\'/\'\'}
  echo "CREATE DATABASE '$state/root/security3.fdb' USER SYSDBA;" | private_env isql-fb -q >&2
  echo "CREATE USER $user PASSWORD '$quoted' USING PLUGIN Srp; GRANT CREATE DATABASE TO USER $user; COMMIT;" \
    | private_env isql-fb -q -user SYSDBA "$state/root/security3.fdb" >&2
}

# Starts the server of the state folder on the port and waits until it
# listens; answers false when it did not start.
launch() {
  local port=$1 child
  FIREBIRD="$state/root" FIREBIRD_LOCK="$state/lock" FIREBIRD_TMP="$state/tmp" \
    setsid "$server" -p "$port" >"$state/server.log" 2>&1 </dev/null &
  child=$!
  echo "$child" >"$state/pid"
  # Until setsid has become the server the pid names setsid: wait on the
  # process itself, not on its name.
  for _ in $(seq 1 50); do
    listening "$port" && return 0
    kill -0 "$child" 2>/dev/null || break
    sleep 0.2
  done
  kill "$child" 2>/dev/null || true
  wait "$child" 2>/dev/null || true
  rm -f "$state/pid"
  return 1
}

write_env() {
  printf 'export Q3_TEST_SERVER=%q Q3_TEST_SERVER_USER=%q Q3_TEST_SERVER_PASSWORD=%q\n' \
    "127.0.0.1/$1" "$user" "$password" >"$state/env"
}

start() {
  if ! running_pid >/dev/null; then
    [ -x "$server" ] || { echo "$server is missing: run scripts/install-deps.sh --with-server" >&2; exit 1; }
    local port started=false
    for _ in 1 2 3; do
      port=$(free_port)
      prepare "$port"
      launch "$port" && { started=true; break; }
    done
    $started || { echo "The Firebird test server did not start; see $state/server.log" >&2; exit 1; }
    write_env "$port"
  fi
  cat "$state/env"
}

# The stopped server again, on its port, with its root folder and users: the
# connections of a test find it where they left it.
resume() {
  if ! running_pid >/dev/null; then
    local port
    port=$(sed -n 's/^RemoteServicePort = //p' "$state/root/firebird.conf" 2>/dev/null || true)
    [ -n "$port" ] || { echo "No test server to resume in $state" >&2; exit 1; }
    launch "$port" || { echo "The Firebird test server did not start again on port $port; see $state/server.log" >&2; exit 1; }
    write_env "$port"
  fi
  cat "$state/env"
}

stop() {
  local pid
  if pid=$(running_pid); then
    kill "$pid" 2>/dev/null || true
    for _ in $(seq 1 100); do
      kill -0 "$pid" 2>/dev/null || break
      sleep 0.2
    done
    if kill -0 "$pid" 2>/dev/null; then
      kill -KILL "$pid" 2>/dev/null || true
      for _ in $(seq 1 50); do
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.1
      done
    fi
  fi
  rm -f "$state/pid" "$state/env"
}

case "${1:-}" in
start) start ;;
stop) stop ;;
resume) resume ;;
*)
  echo "usage: $0 start|stop|resume" >&2
  exit 2
  ;;
esac
