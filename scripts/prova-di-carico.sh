#!/usr/bin/env bash
# The long run of the load test: twenty workstations (q3_postazione), each a
# process with its own connection, for two minutes on one database of a private
# Firebird server on the loopback (scripts/firebird-test-server.sh, its own
# state folder), then the database checked against what they recorded. The
# suite runs the same test for a few seconds.
#
#   scripts/prova-di-carico.sh [seconds] [workstations] [summary file]
#
# The figures are printed, and written to the summary file when one is given;
# the workstations' records are kept in build/prova-di-carico/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-120}
workstations=${2:-20}
summary=${3:-}
cmake --build "$root/build" --target tst_caricopostazioni_server q3_postazione >/dev/null
export Q3_TEST_SERVER_STATE="$root/build/prova-di-carico/server"
records="$root/build/prova-di-carico/postazioni"
rm -rf "$records"
mkdir -p "$records"
eval "$("$root/scripts/firebird-test-server.sh" start)"
trap '"$root/scripts/firebird-test-server.sh" stop' EXIT
Q3_TEST_SERVER_REQUIRED=1 Q3_CARICO_SECONDI=$seconds Q3_CARICO_POSTAZIONI=$workstations \
  Q3_CARICO_CARTELLA="$records" Q3_CARICO_RIEPILOGO="$summary" \
  "$root/build/bin/tst_caricopostazioni_server"
