#!/usr/bin/env bash
# The test server is private: its own port, folders and security database,
# its own process, and the machine's Firebird left as it was.
set -euo pipefail
script=$1
server=/usr/sbin/firebird
system_security=/var/lib/firebird/3.0/system/security3.fdb
if [ ! -x "$server" ]; then
  [ -n "${Q3_TEST_SERVER_REQUIRED:-}" ] && { echo "FAIL: $server is missing"; exit 1; }
  echo "SKIP: $server is missing"
  exit 77
fi
fail() { echo "FAIL: $*"; exit 1; }

export Q3_TEST_SERVER_STATE
Q3_TEST_SERVER_STATE=$(mktemp -d)
trap '"$script" stop; rm -rf "$Q3_TEST_SERVER_STATE"' EXIT
before=$(stat -c '%Y %s' "$system_security" 2>/dev/null || echo none)

vars=$("$script" start)
eval "$vars"
port=${Q3_TEST_SERVER#127.0.0.1/}
[ "$port" != 3050 ] || fail "the test server took the standard port"
pid=$(cat "$Q3_TEST_SERVER_STATE/pid")
[ "$(readlink "/proc/$pid/exe")" = "$server" ] || fail "the pid file names no Firebird server"
tr '\0' '\n' <"/proc/$pid/environ" | grep -qx "FIREBIRD=$Q3_TEST_SERVER_STATE/root" || fail "the server is not on its own root folder"
tr '\0' '\n' <"/proc/$pid/environ" | grep -qx "FIREBIRD_LOCK=$Q3_TEST_SERVER_STATE/lock" || fail "the server is not on its own lock folder"
grep -qx "SecurityDatabase = $Q3_TEST_SERVER_STATE/root/security3.fdb" "$Q3_TEST_SERVER_STATE/root/firebird.conf" \
  || fail "the server is not on its own security database"
[ -f "$Q3_TEST_SERVER_STATE/root/security3.fdb" ] || fail "no security database of its own"
[ "$("$script" start)" = "$vars" ] || fail "a second start answered another server"

"$script" stop
kill -0 "$pid" 2>/dev/null && fail "the server still runs after stop"

# Resumed, it is found where it was: the same port and credentials.
[ "$("$script" resume)" = "$vars" ] || fail "the resumed server answers elsewhere"
resumed=$(cat "$Q3_TEST_SERVER_STATE/pid")
[ "$resumed" != "$pid" ] && [ "$(readlink "/proc/$resumed/exe")" = "$server" ] || fail "resume started no new server"
(exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null || fail "the resumed server does not listen on its port"
"$script" stop
kill -0 "$resumed" 2>/dev/null && fail "the resumed server still runs after stop"
after=$(stat -c '%Y %s' "$system_security" 2>/dev/null || echo none)
[ "$before" = "$after" ] || fail "the machine's security database changed"
echo "PASS"
