#!/usr/bin/env bash
# Installs what is missing (the Firebird server included), builds, starts a
# Firebird server on 127.0.0.1 for the server tests, runs every test, stops
# the server. Exits non-zero when any test fails.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh" --with-server
"$root/scripts/build.sh"
eval "$("$root/scripts/firebird-test-server.sh" start)"
trap '"$root/scripts/firebird-test-server.sh" stop' EXIT
cd "$root/build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)"
