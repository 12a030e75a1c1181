#!/usr/bin/env bash
# Starts or stops a Firebird server on 127.0.0.1 for the tests, with a user of
# its own. "start" prints the variables the tests read; source its output.
set -euo pipefail
port=${Q3_TEST_SERVER_PORT:-3050}
state=${TMPDIR:-/tmp}/q3-firebird-test-server
security=/var/lib/firebird/3.0/system/security3.fdb
user=Q3TEST
password=q3test

as_firebird() {
  if [ "$(id -u)" -eq 0 ]; then runuser -u firebird -- "$@"; else sudo -u firebird "$@"; fi
}

listening() {
  (exec 3<>/dev/tcp/127.0.0.1/"$port") 2>/dev/null
}

case "${1:-}" in
start)
  if ! listening; then
    mkdir -p "$state/lock"
    chmod 777 "$state" "$state/lock"
    # The user lives in the server's security database, written while no server holds it.
    echo "CREATE OR ALTER USER $user PASSWORD '$password' USING PLUGIN Srp; COMMIT; GRANT CREATE DATABASE TO USER $user; COMMIT;" \
      | as_firebird env FIREBIRD_LOCK="$state/lock" isql-fb -q -user SYSDBA "$security" >&2
    as_firebird env FIREBIRD_LOCK="$state/lock" /usr/sbin/firebird >"$state/server.log" 2>&1 &
    echo $! >"$state/pid"
    for _ in $(seq 1 50); do listening && break; sleep 0.2; done
    listening || { echo "Firebird server did not start; see $state/server.log" >&2; exit 1; }
  fi
  echo "export Q3_TEST_SERVER=127.0.0.1/$port Q3_TEST_SERVER_USER=$user Q3_TEST_SERVER_PASSWORD=$password"
  ;;
stop)
  if [ -f "$state/pid" ]; then
    pkill -P "$(cat "$state/pid")" 2>/dev/null || true
    kill "$(cat "$state/pid")" 2>/dev/null || true
    rm -f "$state/pid"
  fi
  pkill -u firebird -x firebird 2>/dev/null || true
  ;;
*)
  echo "usage: $0 start|stop" >&2
  exit 2
  ;;
esac
